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
  -fsyntax-only -target arm64-apple-ios15.0 -isysroot "$sdk"
  -stdlib=libc++ -nostdinc++ -isystem "$sdk/usr/include/c++/v1"
  -I "$root/src" -I "$root" -Wall -Wextra -Wpedantic -Wno-missing-field-initializers -Werror
)

status=0
count=0
while IFS= read -r -d '' file; do
  count=$((count + 1))
  if ! "$clang" -x c++ -std=c++20 "${common[@]}" "$file"; then
    echo "FAILED: ${file#"$root"/}" >&2
    status=1
  fi
done < <(find "$root/src" -name '*.cpp' -print0 | sort -z)

if [ -d "$root/platform/ios" ]; then
  while IFS= read -r -d '' file; do
    count=$((count + 1))
    if ! "$clang" -x objective-c++ -std=c++20 -fobjc-arc "${common[@]}" -I "$root/platform/ios" "$file"; then
      echo "FAILED: ${file#"$root"/}" >&2
      status=1
    fi
  done < <(find "$root/platform/ios" -name '*.mm' -print0 | sort -z)
fi

if [ $status -eq 0 ]; then
  echo "iOS type-check clean: $count files against $(basename "$sdk")"
fi
exit $status
