#!/usr/bin/env bash
# The committed images are the generator's output, byte for byte: regenerate them into a
# temporary folder and compare.
set -euo pipefail
generator="$1"
resources="$2"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$generator" "$resources" "$work/images" >/dev/null
diff -r "$work/images" "$resources/images" ||
  { echo "FAIL: resources/images differ from the generator's output; run tools/make-images.sh" >&2; exit 1; }
