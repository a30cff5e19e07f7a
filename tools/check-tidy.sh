#!/usr/bin/env bash
# Runs clang-tidy (.clang-tidy: bug-prone patterns, needless copies, missing [[nodiscard]]) over
# the core's sources with the default build's compile commands; fails on any finding.
#
#   tools/check-tidy.sh [BUILD_DIR]   (default build/default, configured already)
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/default}"
[ -f "$build/compile_commands.json" ] || { echo "no $build/compile_commands.json: configure first" >&2; exit 2; }
command -v clang-tidy >/dev/null || { echo "clang-tidy is not installed" >&2; exit 2; }

mapfile -t files < <(find src -name '*.cpp' | sort)
log="$(mktemp)"
trap 'rm -f "$log"' EXIT
status=0
printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet \
  >"$log" 2>&1 || status=1
if [ $status -ne 0 ] || grep -qE '(warning|error):' "$log"; then
  grep -E '(warning|error):' "$log" | sort -u >&2
  echo "clang-tidy: findings in src/" >&2
  exit 1
fi
echo "clang-tidy: ${#files[@]} files clean"
