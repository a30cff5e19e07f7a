#!/usr/bin/env bash
# Installs what the browser test of `nutrition preview` needs, when it is missing: Debian's
# Chromium and Node.js with npm, then puppeteer-core from tests/browser/package-lock.json
# (`npm ci`). Safe to run again: it does nothing when everything is there.
set -euo pipefail
cd "$(dirname "$0")/.."

# Fonts: DejaVu for text, Symbola for the symbols the screens use (ⓘ).
packages=(chromium nodejs npm fonts-dejavu-core fonts-symbola)

# A Node.js installed another way (nodesource, nvm) already brings npm.
if command -v node >/dev/null && command -v npm >/dev/null; then
  packages=(chromium fonts-dejavu-core fonts-symbola)
fi
tools/apt-install-missing.sh "${packages[@]}"

if [ ! -d tests/browser/node_modules/puppeteer-core ] ||
  [ tests/browser/package-lock.json -nt tests/browser/node_modules/.package-lock.json ]; then
  (cd tests/browser && npm ci --no-audit --no-fund --loglevel=error)
fi
