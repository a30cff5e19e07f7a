#!/usr/bin/env bash
# Installs the Debian packages NutritionKit builds with, when they are missing. Safe to run
# again: it does nothing when everything is there.
set -euo pipefail

packages=(
  build-essential cmake pkg-config clang clang-format clang-tidy
  libcurl4-openssl-dev libhowardhinnant-date-dev libcpp-httplib-dev zlib1g-dev tzdata
  libgtest-dev libgmock-dev libbenchmark-dev curl
  # libFuzzer and clang's sanitizer runtimes, for the fuzzers (tools/run-fuzzers.sh).
  libclang-rt-14-dev
  # Benchmark-only: the reference parsers and writer the codec benchmarks compare against.
  libsimdjson-dev nlohmann-json3-dev rapidjson-dev
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
