#!/usr/bin/env bash
# The member commands as a user runs them, one process after another: the help lists them,
# the week reads Monday to Sunday, a fast started in one run is running in the next with its
# notification pending, and the questionnaire follows the device language.
set -euo pipefail
nutrition="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
export XDG_DATA_HOME="$work/data"
# The module's clock stands still at noon UTC on a Saturday, so every run prints the same.
export NUTRITIONKIT_NOW=2026-11-21T12:00:00Z TZ=UTC
expect() {  # expect FILE TEXT...
  local file="$1"; shift
  for text in "$@"; do
    grep -qF -- "$text" "$file" || { cat "$file" >&2; fail "missing '$text'"; }
  done
}

"$nutrition" --help >"$work/help.txt"
expect "$work/help.txt" "today" "week" "fasting start" "fasting status" "fasting end" "questionnaire"

LC_ALL=C "$nutrition" week >"$work/week.txt" || fail "week failed"
expect "$work/week.txt" "Monday (day 1)" "Sunday (day 7)" "Desayuno" "Mean per day"
LC_ALL=C "$nutrition" today >"$work/today.txt" || fail "today failed"
expect "$work/today.txt" "Today's menu: Saturday (day 6)"

LC_ALL=C "$nutrition" fasting start --scheme 2 >"$work/start.txt" || fail "fasting start failed"
expect "$work/start.txt" "Fast started." "Scheme: 14/10"
LC_ALL=C "$nutrition" fasting status >"$work/status.txt" || fail "fasting status failed"
expect "$work/status.txt" "¡Estás ayunando ahora!" "Tiempo transcurrido: 00:00:00 (0%)" \
  "Fase actual del ayuno: Subida de azúcar en sangre" "Empieza: Hoy, 12:00" \
  "Termina: Mañana, 02:00" \
  'Notification "ayuno" pending for 2026-11-22 02:00:00: Tu periodo de ayuno intermitente ha finalizado'
# Four hours later the fast has moved on to its second phase.
NUTRITIONKIT_NOW=2026-11-21T16:00:00Z LC_ALL=C "$nutrition" fasting status >"$work/later.txt" ||
  fail "fasting status failed"
expect "$work/later.txt" "Tiempo transcurrido: 04:00:00 (28%)"
LC_ALL=en_GB.UTF-8 "$nutrition" fasting end >"$work/end.txt" || fail "fasting end failed"
expect "$work/end.txt" "Fast ended." "No fast running."

LC_ALL=en_GB.UTF-8 "$nutrition" questionnaire >"$work/en.txt" || fail "questionnaire failed"
expect "$work/en.txt" "What is your sex?" "[1] Woman" "Do you follow a diet or have any allergy?" \
  "[1] Vegan" "Do you want to do intermittent fasting?" "[0] I don't want to fast" "[3] 16/8"
LC_ALL=es_ES.UTF-8 "$nutrition" questionnaire >"$work/es.txt" || fail "questionnaire failed"
expect "$work/es.txt" "¿Cuál es tu sexo?" "[1] Mujer" "[1] Vegano" "[0] No quiero ayuno"

if "$nutrition" fasting sideways >/dev/null 2>"$work/err.txt"; then fail "bad action accepted"; fi
expect "$work/err.txt" "unknown fasting action"
echo "1 passed, 0 failed"
