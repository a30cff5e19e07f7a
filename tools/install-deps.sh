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

"$(dirname "$0")/apt-install-missing.sh" "${packages[@]}"
