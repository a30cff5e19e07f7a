#!/usr/bin/env bash
# Redraws the bundle's images (resources/images) with the project's generator, from the names
# the screens and the resource files use. Run after adding a phase, a waiting screen, an info
# item or a list question; tests/resources/ImagesTest.cpp fails until the images ship.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset default >/dev/null
cmake --build --preset default --target nutrition_imagegen
rm -rf resources/images
./build/default/tools/imagegen/nutrition_imagegen resources resources/images
