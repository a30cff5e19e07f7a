#!/usr/bin/env bash
# Builds the libFuzzer programs (the fuzz preset: clang, AddressSanitizer and
# UndefinedBehaviorSanitizer) and runs each for FUZZ_SECONDS (default 20) from its committed
# corpus with the JSON dictionary. Fails on any finding; the input that found it is left in
# build/fuzz/findings: copy it to fuzz/regressions/<target>/ so the unit tests replay it.
#
#   tools/run-fuzzers.sh [TARGET...]   (default: every target)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${FUZZ_SECONDS:-20}"
cmake --preset fuzz >/dev/null
cmake --build build/fuzz --target fuzzers -j"$(nproc)"

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  mapfile -t targets < <(ls fuzz/corpus)
fi
mkdir -p build/fuzz/findings
status=0
for target in "${targets[@]}"; do
  corpus="$(mktemp -d)"  # new inputs go here; the committed corpus stays as it is
  echo "== fuzz $target for ${seconds}s"
  if ! build/fuzz/fuzz/fuzz_"$target" "$corpus" "fuzz/corpus/$target" -dict=fuzz/json.dict \
    -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$target-" \
    >"build/fuzz/$target.log" 2>&1; then
    tail -n 40 "build/fuzz/$target.log" >&2
    echo "fuzz: $target found a problem; see build/fuzz/findings" >&2
    status=1
  fi
  grep -E '^stat::number_of_executed_units' "build/fuzz/$target.log" || true
  rm -rf "$corpus"
done
exit $status
