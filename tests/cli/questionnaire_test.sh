#!/usr/bin/env bash
# The profile editor in the terminal: `questionnaire` prints each page as the editor shows it
# with the answers it offers; `questionnaire --answers FILE` answers the pages as a member
# would tap them and sends the profile; answers the editor refuses end with its own notice and
# exit code 1, and a file that is not a list of answers with exit code 2.
set -euo pipefail
nutrition="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
export XDG_DATA_HOME="$work/data"
export NUTRITIONKIT_NOW=2026-11-21T12:00:00Z TZ=UTC
expect() {  # expect FILE TEXT...
  local file="$1"; shift
  for text in "$@"; do
    grep -qF -- "$text" "$file" || { cat "$file" >&2; fail "missing '$text'"; }
  done
}

LC_ALL=en_GB.UTF-8 "$nutrition" questionnaire >"$work/pages.txt" || fail "questionnaire failed"
expect "$work/pages.txt" "--- page 1 of 3" "--- page 3 of 3" "ProfilePageViewController" \
  'Label questiontTitle text="What is your sex?"' 'HealthRoundButton title="Woman"' \
  'CustomButton nextButton title="Next"' 'CustomButton nextButton title="Send"' \
  "[1] Woman" "[1] Vegan" "[0] I don't want to fast"

answers() {  # answers FILE [IDENTIFIER JSON-VALUE]...: the complete answers, some replaced
  local file="$1"; shift
  declare -A given=(
    [height]='"answer": "172"' [dateOfBirth]='"answer": "12/04/1985"'
    [gender]='"answer": "Mujer"' [physicalIntensityID]='"answer": "Ligera"'
    [desiredBalanceID]='"answer": "Perder peso"' [countries]='"answer": "España"'
    [preferences]='"answers": ["Vegano"]' [intollerance]='"answers": ["Sí", "Sin lactosa"]'
    [excludedAliment]='"answers": ["Cerdo"]' [distributionByIntakeID]='"answer": "Cinco comidas"'
    [lunchDishes]='"answers": ["Primer plato", "Segundo plato"]'
    [dinnerDishes]='"answers": ["Segundo plato"]' [difficulty]='"answer": "Fácil"'
    [intermittentFastingID]='"answer": "16/8"')
  while [ $# -ge 2 ]; do given[$1]="$2"; shift 2; done
  local sep="[" id
  { for id in "${!given[@]}"; do
      printf '%s{"identifier": "%s", %s}\n' "$sep" "$id" "${given[$id]}"; sep=","
    done; echo "]"; } >"$file"
}

answers "$work/all.json"
LC_ALL=es_ES.UTF-8 "$nutrition" questionnaire --answers "$work/all.json" >"$work/sent.txt" ||
  { cat "$work/sent.txt" >&2; fail "a complete questionnaire was not sent"; }
expect "$work/sent.txt" "> height: 172" "> intollerance: Sí, Sin lactosa" "> Siguiente" \
  "> Enviar" "--- confirmation" 'Label titleLabel text="Aviso"' "> GENERAR NUEVO MENÚ" \
  "The profile was sent (PATCH api/user)" 'Label textLabel text="Sin lactosa" font=17 color=#FFFFFF'

# A country the editor does not offer cannot be tapped: the run stops on that page.
answers "$work/mars.json" countries '"answer": "Marte"'
code=0
LC_ALL=es_ES.UTF-8 "$nutrition" questionnaire --answers "$work/mars.json" >"$work/mars.txt" \
  2>"$work/mars.err" || code=$?
[ "$code" -eq 1 ] || fail "an answer the editor does not offer gave exit code $code"
expect "$work/mars.err" "countries: no answer 'Marte'"
expect "$work/mars.txt" "--- page 1 of 3"
if grep -qF -- "--- page 2 of 3" "$work/mars.txt"; then fail "the run went on after Marte"; fi

# No preference ticked leaves the question unanswered: the editor says so and stays.
answers "$work/none.json" preferences '"answers": []'
code=0
LC_ALL=es_ES.UTF-8 "$nutrition" questionnaire --answers "$work/none.json" >"$work/none.txt" || code=$?
[ "$code" -eq 1 ] || fail "an unanswered question gave exit code $code"
expect "$work/none.txt" "--- page 2 of 3" "--- notice" 'Label title text="Aviso"' \
  "Es obligatorio responder a todas las preguntas"
if grep -qF -- "--- page 3 of 3" "$work/none.txt"; then fail "the editor moved on"; fi

# Vegan and vegetarian together: the second page refuses them.
answers "$work/both.json" preferences '"answers": ["Vegano", "Vegetariano"]'
code=0
LC_ALL=es_ES.UTF-8 "$nutrition" questionnaire --answers "$work/both.json" >"$work/both.txt" || code=$?
[ "$code" -eq 1 ] || fail "vegan and vegetarian gave exit code $code"
expect "$work/both.txt" "--- page 2 of 3" "--- notice" \
  "No es posible seleccionar vegano y vegetariano simultanemente"

echo '{"height": 172}' >"$work/bad.json"
code=0
"$nutrition" questionnaire --answers "$work/bad.json" >/dev/null 2>"$work/bad.err" || code=$?
[ "$code" -eq 2 ] || fail "a malformed answers file gave exit code $code"
expect "$work/bad.err" "is not a list of answers"
echo "1 passed, 0 failed"
