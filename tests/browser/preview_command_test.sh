#!/usr/bin/env bash
# `nutrition preview` without a browser: it prints its address and serves the page, the
# renderer's style sheet, bundle images and the screen (the unregistered member's invitation
# first); a second preview on the same port and a bad flag each end with one line on standard
# error and a non-zero exit; SIGTERM ends it cleanly.
set -euo pipefail
nutrition="$1"
work="$(mktemp -d)"
pid=""
cleanup() { [ -n "$pid" ] && kill "$pid" 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
export XDG_DATA_HOME="$work/data" NUTRITIONKIT_NOW=2026-11-21T12:00:00Z TZ=UTC LC_ALL=C

"$nutrition" preview >"$work/out.txt" 2>"$work/err.txt" &
pid=$!
for _ in $(seq 1 100); do
  grep -q '^http://127.0.0.1:[0-9]*/$' "$work/out.txt" && break
  sleep 0.1
done
url="$(grep -m1 '^http://127.0.0.1:[0-9]*/$' "$work/out.txt")" ||
  { cat "$work/out.txt" "$work/err.txt" >&2; fail "no address printed"; }
port="${url#http://127.0.0.1:}"; port="${port%/}"

# Each answer is read whole before it is searched: `grep -q` leaving a pipe early would make
# curl fail on its next write.
page="$(curl -sf "$url")" || fail "the page is not served"
grep -q 'id="screen"' <<<"$page" || fail "the page is not the preview's"
css="$(curl -sf "${url}renderer.css")" || fail "no style sheet"
grep -q '.layer' <<<"$css" || fail "the style sheet has no layers"
curl -sf -o /dev/null "${url}images/food" || fail "no bundle image"
code="$(curl -s -o /dev/null -w '%{http_code}' "${url}images/..%2Fstrings")"
[ "$code" = 404 ] || fail "a path out of the images folder gave $code"
frame=""
for _ in $(seq 1 50); do
  frame="$(curl -sf "${url}frame?gen=-1")"
  grep -q 'HealthAlertViewController' <<<"$frame" && break
  sleep 0.2
done
grep -q '"graph":"HostScreen > HealthAlertViewController"' <<<"$frame" ||
  fail "the invitation is not shown: ${frame:0:300}"
grep -q 'COMPLETAR EVALUACI' <<<"$frame" || fail "no button to the questionnaire"
# An id no render gave does nothing.
answer="$(curl -sf -X POST -d "" "${url}action?gen=999&id=e1&value=")" || fail "no answer to an action"
grep -q '"ok":false' <<<"$answer" || fail "an unknown render was acted on"

code=0
"$nutrition" preview --port "$port" >/dev/null 2>"$work/busy.txt" || code=$?
[ "$code" -ne 0 ] || fail "a busy port was taken"
[ "$(wc -l <"$work/busy.txt")" -eq 1 ] || { cat "$work/busy.txt" >&2; fail "not one line"; }
grep -q "port $port" "$work/busy.txt" || fail "the message does not name the port"

for flags in "--main-color red" "--language xx" "--port 0" "--fasting maybe" "--nope 1"; do
  code=0
  # shellcheck disable=SC2086
  "$nutrition" preview $flags >/dev/null 2>"$work/bad.txt" || code=$?
  [ "$code" -eq 2 ] || fail "'$flags' gave exit code $code"
  [ "$(wc -l <"$work/bad.txt")" -eq 1 ] || { cat "$work/bad.txt" >&2; fail "'$flags': not one line"; }
done

kill -TERM "$pid"
code=0
wait "$pid" || code=$?
pid=""
[ "$code" -eq 0 ] || fail "SIGTERM gave exit code $code"
grep -q '^Stopping.$' "$work/out.txt" || fail "no clean stop"
echo "ok"
