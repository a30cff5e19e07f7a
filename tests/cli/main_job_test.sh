#!/usr/bin/env bash
# The main job as a new user runs it: against the embedded sandbox it prints the profile and
# today's menu; a backend that cannot be reached or refuses the login ends with one line on
# standard error and exit code 1.
set -euo pipefail
nutrition="$1"
work="$(mktemp -d)"
sandbox_pid=""
cleanup() {
  [ -n "$sandbox_pid" ] && kill "$sandbox_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
export XDG_DATA_HOME="$work/data"
export LC_ALL=C  # Spanish texts, whatever the machine says
export NUTRITIONKIT_NOW=2026-11-21T12:00:00Z TZ=UTC  # a Saturday noon, every run

"$nutrition" >"$work/out.log" 2>"$work/err.log" || { cat "$work/out.log" "$work/err.log" >&2; fail "main job failed"; }
for expected in "the backend does not know member demo-member_demo" "Public profile:" \
    "height 165 cm, weight 62 kg, gender Female" "ideal weight" "Today's menu: Saturday (day 6)" "Desayuno" \
    "POST   http://127.0.0.1:" "api/user?Language=" "(withheld: it holds the password)"; do
  grep -qF "$expected" "$work/out.log" || { cat "$work/out.log" >&2; fail "missing '$expected'"; }
done

status=0
timeout 30 "$nutrition" --base-url http://127.0.0.1:9 --app-id demo --password x \
  >"$work/out.log" 2>"$work/err.log" || status=$?
[ "$status" -eq 1 ] || fail "unreachable backend exited with $status"
grep -q "^nutrition: cannot reach the backend" "$work/err.log" || fail "no message for an unreachable backend"

"$nutrition" sandbox >"$work/sandbox.log" 2>&1 &
sandbox_pid=$!
for _ in $(seq 1 100); do
  base="$(sed -n 's/^ *base URL: *//p' "$work/sandbox.log")"
  [ -n "$base" ] && break
  sleep 0.05
done
status=0
timeout 30 "$nutrition" --base-url "$base" --app-id demo --password wrong \
  >"$work/out.log" 2>"$work/err.log" || status=$?
[ "$status" -eq 1 ] || fail "wrong password exited with $status"
grep -q "^nutrition: login refused" "$work/err.log" || fail "no message for a wrong password"
echo "1 passed, 0 failed"
