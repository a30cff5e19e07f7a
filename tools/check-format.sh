#!/usr/bin/env bash
# Fails when a tracked C++ or Objective-C++ source differs from .clang-format; with --fix,
# rewrites them instead.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files --cached --others --exclude-standard '*.h' '*.cpp' '*.mm')
[ ${#files[@]} -gt 0 ] || exit 0
if [ "${1:-}" = "--fix" ]; then
  clang-format -i "${files[@]}"
else
  clang-format --dry-run --Werror "${files[@]}"
  echo "clang-format: ${#files[@]} files clean"
fi
