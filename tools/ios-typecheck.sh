#!/usr/bin/env bash
# Type-checks the portable core and the iOS shell against a real iPhoneOS SDK with its libc++,
# so that every line meant for iOS compiles there.
#
#   tools/ios-typecheck.sh SDK_PATH
#
# On macOS: SDK_PATH=$(xcrun --sdk iphoneos --show-sdk-path). On Linux, unpack an SDK with the
# team's ios-sdk helper and pass the path it prints.
set -euo pipefail

sdk="${1:-}"
if [ -z "$sdk" ] || [ ! -d "$sdk/usr/include/c++/v1" ]; then
  echo "usage: $0 SDK_PATH   (an iPhoneOS SDK holding usr/include/c++/v1)" >&2
  exit 2
fi

root="$(cd "$(dirname "$0")/.." && pwd)"
clang="${CLANGXX:-}"
if [ -z "$clang" ]; then
  for candidate in clang++ clang++-16 clang++-15 clang++-14; do
    if command -v "$candidate" >/dev/null; then clang="$candidate"; break; fi
  done
fi
[ -n "$clang" ] || { echo "no clang++ found" >&2; exit 2; }

common=(
  -target arm64-apple-ios15.0 -isysroot "$sdk"
  -stdlib=libc++ -nostdinc++ -isystem "$sdk/usr/include/c++/v1"
  -I "$root/src" -I "$root" -I "$root/platform/ios" -I "$root/platform/ios/include"
  -Wall -Wextra -Wpedantic -Wno-missing-field-initializers -Werror
)
objects="$(mktemp -d)"
trap 'rm -rf "$objects"' EXIT

# One source: type-checked and compiled to an arm64 object (codegen checked too).
check() {
  local file="$1" language="$2" flags=()
  [ "$language" = objective-c++ ] && flags=(-fobjc-arc)
  local object
  object="$objects/$(echo "${file#"$root"/}" | tr '/' '_').o"
  if ! "$clang" -x "$language" -std=c++20 "${flags[@]}" "${common[@]}" -c "$file" -o "$object"; then
    echo "FAILED: ${file#"$root"/}" >&2
    return 1
  fi
}
# A public header alone, as Objective-C, the way Swift's importer reads it.
check_header() {
  local file="$1"
  if ! "$clang" -x objective-c -fobjc-arc -fmodules -fsyntax-only -target arm64-apple-ios15.0 \
    -isysroot "$sdk" -I "$root/platform/ios/include" -Wall -Wextra -Wpedantic -Werror \
    -Wnullability-completeness "$file"; then
    echo "FAILED: ${file#"$root"/}" >&2
    return 1
  fi
}

sources=()
while IFS= read -r -d '' file; do sources+=("c++ $file"); done \
  < <(find "$root/src" -name '*.cpp' -print0 | sort -z)
if [ -d "$root/platform/ios" ]; then
  while IFS= read -r -d '' file; do sources+=("objective-c++ $file"); done \
    < <(find "$root/platform/ios" -name '*.mm' -print0 | sort -z)
fi
headers=()
if [ -d "$root/platform/ios/include" ]; then
  while IFS= read -r -d '' file; do headers+=("$file"); done \
    < <(find "$root/platform/ios/include" -name '*.h' -print0 | sort -z)
fi

status=0
jobs="$(nproc 2>/dev/null || echo 2)"
running=0
for entry in "${sources[@]}"; do
  language="${entry%% *}"
  file="${entry#* }"
  check "$file" "$language" &
  running=$((running + 1))
  if [ "$running" -ge "$jobs" ]; then
    wait -n || status=1
    running=$((running - 1))
  fi
done
while [ "$running" -gt 0 ]; do
  wait -n || status=1
  running=$((running - 1))
done
for file in "${headers[@]}"; do check_header "$file" || status=1; done

count=$((${#sources[@]} + ${#headers[@]}))
if [ $status -eq 0 ]; then
  echo "iOS type-check clean: $count files against $(basename "$sdk"), compiled to arm64"
fi
exit $status
