#!/usr/bin/env bash
# `nutrition sandbox` as a host developer runs it: it prints its base URL and serves a menu that
# curl can read; with --data-dir, members survive a restart; bad options fail with a message.
set -euo pipefail
nutrition="$1"
work="$(mktemp -d)"
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT

fail() { echo "FAIL: $*" >&2; exit 1; }

start() {  # start LOG [ARGS...]: runs the sandbox, waits for its base URL, sets $base
  local log="$1"; shift
  "$nutrition" sandbox "$@" >"$log" 2>&1 &
  pids+=($!)
  for _ in $(seq 1 100); do
    base="$(sed -n 's/^ *base URL: *//p' "$log")"
    [ -n "$base" ] && return 0
    sleep 0.05
  done
  cat "$log" >&2
  fail "the sandbox printed no base URL"
}

start "$work/first.log" --data-dir "$work/state"
grep -q "app id: *demo" "$work/first.log" || fail "the demo account is not printed"
case "$base" in http://127.0.0.1:*/) ;; *) fail "unexpected base URL '$base'" ;; esac

login="$(curl -sf -X POST -H 'Content-Type: application/json' \
  -d '{"ClientAlias":"demo","Password":"demo-password"}' "${base}api/auth/login")"
grep -q '"ClientAlias":"demo"' <<<"$login" || fail "login answered $login"

curl -sf -X POST -H 'Content-Type: application/json' \
  -d '{"UserId":"cli_demo","ClientId":1,"DailyKcal":2000,"RegenerateMenu":false}' \
  "${base}api/user?Language=en_EN" >/dev/null || fail "creating a member failed"
menu="$(curl -sf "${base}api/menu?Language=en_EN&UserId=cli_demo")"
grep -q '"Processed":true' <<<"$menu" || fail "menu not processed: ${menu:0:200}"
grep -q '"DayNum":7' <<<"$menu" || fail "menu has no seventh day"
grep -q '"DishName":' <<<"$menu" || fail "menu has no dishes"

kill "${pids[0]}"; wait "${pids[0]}" 2>/dev/null || true
grep -q "Stopping" "$work/first.log" || fail "the sandbox did not stop cleanly"

start "$work/second.log" --data-dir "$work/state"
user="$(curl -sf "${base}api/user?Language=en_EN&UserId=cli_demo")"
grep -q '"UserId":"cli_demo"' <<<"$user" || fail "the member did not survive a restart: $user"

if "$nutrition" sandbox --port 99999 >/dev/null 2>"$work/err.log"; then fail "--port 99999 accepted"; fi
grep -q "port" "$work/err.log" || fail "no message for a bad port"
echo "1 passed, 0 failed"
