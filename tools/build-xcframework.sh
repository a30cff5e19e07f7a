#!/usr/bin/env bash
# Builds NutritionKit.xcframework (device arm64 and simulator arm64/x86_64) from Package.swift.
# macOS with Xcode only.
#
#   tools/build-xcframework.sh [OUTPUT_DIR]   (default build/xcframework)
set -euo pipefail
cd "$(dirname "$0")/.."

[ "$(uname)" = Darwin ] || { echo "build-xcframework: needs macOS with Xcode" >&2; exit 2; }
command -v xcodebuild >/dev/null || { echo "build-xcframework: xcodebuild not found" >&2; exit 2; }

out="${1:-build/xcframework}"
archives="$out/archives"
rm -rf "$out"
mkdir -p "$archives"

# A dynamic framework per platform: Swift packages build static libraries unless the library
# product asks otherwise, so the archive step sets the product type.
for destination in "generic/platform=iOS" "generic/platform=iOS Simulator"; do
  name="$(echo "$destination" | tr -c 'A-Za-z0-9' '-')"
  xcodebuild archive \
    -scheme NutritionKit \
    -destination "$destination" \
    -archivePath "$archives/$name" \
    -derivedDataPath "$out/derived" \
    SKIP_INSTALL=NO \
    BUILD_LIBRARY_FOR_DISTRIBUTION=YES \
    MACH_O_TYPE=mh_dylib \
    CLANG_ENABLE_OBJC_ARC=YES \
    | tail -n 3
done

args=()
for archive in "$archives"/*.xcarchive; do
  framework="$(find "$archive/Products" -name 'NutritionKit.framework' -type d | head -n 1)"
  [ -n "$framework" ] || { echo "build-xcframework: no framework in $archive" >&2; exit 1; }
  # The package's resource bundle travels inside the framework, where the module looks first.
  bundle="$(find "$archive/Products" "$out/derived" -name 'NutritionKit_NutritionKit.bundle' -type d | head -n 1)"
  [ -n "$bundle" ] && cp -R "$bundle" "$framework/"
  # The public headers, for Objective-C and Swift hosts alike.
  mkdir -p "$framework/Headers" "$framework/Modules"
  cp platform/ios/include/NutritionKit/*.h "$framework/Headers/"
  cat >"$framework/Modules/module.modulemap" <<'MAP'
framework module NutritionKit {
  umbrella header "NutritionKit.h"
  export *
  module * { export * }
}
MAP
  args+=(-framework "$framework")
done

xcodebuild -create-xcframework "${args[@]}" -output "$out/NutritionKit.xcframework"
echo "$out/NutritionKit.xcframework"
