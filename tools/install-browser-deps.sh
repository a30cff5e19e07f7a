#!/usr/bin/env bash
# Installs what the browser test of `nutrition preview` needs, when it is missing: Debian's
# Chromium and Node.js with npm, then puppeteer-core from tests/browser/package-lock.json
# (`npm ci`). Safe to run again: it does nothing when everything is there.
set -euo pipefail
cd "$(dirname "$0")/.."

# Fonts: DejaVu for text, Symbola for the symbols the screens use (ⓘ).
packages=(chromium nodejs npm fonts-dejavu-core fonts-symbola)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done
# A Node.js installed another way (nodesource, nvm) already brings npm.
if command -v node >/dev/null && command -v npm >/dev/null; then
  kept=()
  for package in "${missing[@]}"; do
    [ "$package" = nodejs ] || [ "$package" = npm ] || kept+=("$package")
  done
  missing=("${kept[@]+"${kept[@]}"}")
fi

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo=""
  if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
  fi
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

if [ ! -d tests/browser/node_modules/puppeteer-core ] ||
  [ tests/browser/package-lock.json -nt tests/browser/node_modules/.package-lock.json ]; then
  (cd tests/browser && npm ci --no-audit --no-fund --loglevel=error)
fi
