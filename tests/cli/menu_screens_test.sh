#!/usr/bin/env bash
# The menu screens in the terminal as a member drives them against the embedded sandbox: the
# weekly menu home (after the waiting screen of a new member's first menu), another day of its
# strip, an intake with its recipe pages and their photos, an alternative dish that replaces
# the one shown, a favourite toggled twice that ends where it began, and bad arguments that
# give one line and exit code 2.
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

"$nutrition" menu >"$work/home.txt" || fail "menu failed"
# 2026-11-21 is a Saturday: the strip starts there, selected.
expect "$work/home.txt" "CustomNavViewController" "left=back-image" \
  'Label weekDayLabel text="Sáb" font=13 color=#FFFFFF' 'Label monthDay text="27"' \
  'Label recipeTitle text="Desayuno"' 'Label recipeTitle text="Cena"' 'Label dishesLabel text="3 platos"' \
  "RoundButton profileButton image=food"
grep -q 'ImageView recipePhoto image=<[0-9]* bytes>' "$work/home.txt" || fail "no dish photo shown"

"$nutrition" menu --day 2 >"$work/sunday.txt" || fail "menu --day 2 failed"
expect "$work/sunday.txt" 'Label weekDayLabel text="Dom" font=13 color=#FFFFFF'

"$nutrition" menu intake 3 >"$work/intake.txt" || fail "menu intake failed"
expect "$work/intake.txt" "IntakeViewController" "--- page 2 of 3" "--- page 3 of 3" \
  'ingestaLabel text=["Primer plato" 28 #EA6E29' "composicionLabel text=" "Dificultad: "
[ "$(grep -c 'NutricionRecetaViewController' "$work/intake.txt")" -eq 2 ] || fail "not 3 pages"

first_name() { grep -m1 -o 'nameLabel text="[^"]*"' "$1"; }
before="$(first_name "$work/intake.txt")"
"$nutrition" menu alternative 3 1 >"$work/alternative.txt" || fail "menu alternative failed"
after="$(first_name "$work/alternative.txt")"
[ -n "$after" ] && [ "$after" != "$before" ] || fail "the dish did not change: $before / $after"
"$nutrition" menu intake 3 >"$work/intake-again.txt" || fail "menu intake (again) failed"
[ "$(first_name "$work/intake-again.txt")" = "$after" ] || fail "the held menu lost the alternative"

"$nutrition" menu favorite 3 2 >"$work/fav-on.txt" || fail "menu favorite failed"
expect "$work/fav-on.txt" "The dish is now among the favourites." "favoriteButton image=favorite-on"
"$nutrition" menu >"$work/home-fav.txt" || fail "menu (with a favourite) failed"
expect "$work/home-fav.txt" "NutritionFavoriteDishCell" 'Label titleLabel text="Mis platos favoritos"'
"$nutrition" menu favorite 3 2 >"$work/fav-off.txt" || fail "menu favorite (again) failed"
expect "$work/fav-off.txt" "The dish is no longer among the favourites." "favoriteButton image=favorite-off"
"$nutrition" menu >"$work/home-after.txt" || fail "menu (after) failed"
if grep -q NutritionFavoriteDishCell "$work/home-after.txt"; then fail "the favourite stayed"; fi

for bad in "--day 8" "intake" "intake x" "alternative 3" "favorite 3 0" "cook 1"; do
  # shellcheck disable=SC2086
  if "$nutrition" menu $bad >"$work/bad.txt" 2>&1; then fail "'menu $bad' passed"; fi
  [ "$(wc -l <"$work/bad.txt")" -eq 1 ] || { cat "$work/bad.txt" >&2; fail "'menu $bad': not one line"; }
  # shellcheck disable=SC2086
  "$nutrition" menu $bad >/dev/null 2>&1 || [ $? -eq 2 ] || fail "'menu $bad': exit code is not 2"
done
"$nutrition" menu intake 9 >"$work/missing.txt" 2>&1 && fail "a missing intake passed"
expect "$work/missing.txt" "there is no intake 9"
echo "menu screens: ok"
