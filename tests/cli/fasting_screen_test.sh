#!/usr/bin/env bash
# The fasting screens in the terminal as a user runs them: `fasting` opens the screen (which
# starts the fast) and prints it, `--watch 3` prints it again at each tick of the screen's own
# one-second timer, `fasting phase` prints the current phase's pop-up, and a bad option gives
# one line and exit code 2.
set -euo pipefail
nutrition="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
export XDG_DATA_HOME="$work/data" LC_ALL=C
export NUTRITIONKIT_NOW=2026-11-21T12:00:00Z TZ=UTC
expect() {  # expect FILE TEXT...
  local file="$1"; shift
  for text in "$@"; do
    grep -qF -- "$text" "$file" || { cat "$file" >&2; fail "missing '$text'"; }
  done
}

"$nutrition" fasting --scheme 1 --watch 3 >"$work/screen.txt" || fail "fasting --watch failed"
expect "$work/screen.txt" "AyunoViewController" 'Label ayunoTitle text="12/12"' \
  'Label timerLabel text="00:00:00"' 'Label startTime text="Hoy, 12:00"' \
  'Label finishTime text="Mañana, 00:00"' 'CustomButton finishButton title="Terminar ayuno"'
# The clock runs from the pinned instant while watching: each tick shows a later time.
mapfile -t shown < <(grep -o 'timerLabel text="[0-9:]*"' "$work/screen.txt")
[ "${#shown[@]}" -ge 3 ] || { cat "$work/screen.txt" >&2; fail "fewer than 3 renders"; }
for ((i = 1; i < ${#shown[@]}; i++)); do
  [[ "${shown[$i]}" > "${shown[$((i - 1))]}" ]] || fail "the timer did not move: ${shown[*]}"
done
[ "$(grep -c -- '--- tick' "$work/screen.txt")" -ge 2 ] || fail "no ticks printed"

"$nutrition" fasting phase >"$work/phase.txt" || fail "fasting phase failed"
expect "$work/phase.txt" "PhaseAlertViewController" 'text="Subida de azúcar en sangre"' \
  "image=fase-ayuno-1"

if "$nutrition" fasting --watch soon >"$work/bad.txt" 2>&1; then fail "a bad --watch passed"; fi
[ "$(wc -l <"$work/bad.txt")" -eq 1 ] || { cat "$work/bad.txt" >&2; fail "not one line"; }
"$nutrition" fasting --watch soon >/dev/null 2>&1 || [ $? -eq 2 ] || fail "exit code is not 2"
