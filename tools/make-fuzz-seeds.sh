#!/usr/bin/env bash
# Writes the fuzzers' seed corpora under fuzz/corpus from real answers: the sandbox backend's
# (a member made by the main job, its menu, favourites and every catalogue), the shipped
# resources, and the stores the CLI writes. Each seed of a selecting target starts with the
# byte that picks its record (fuzz/FuzzTargets.cpp).
#
#   tools/make-fuzz-seeds.sh [path/to/nutrition]   (default build/default/apps/nutrition/nutrition)
set -euo pipefail
cd "$(dirname "$0")/.."
nutrition="${1:-build/default/apps/nutrition/nutrition}"
work="$(mktemp -d)"
port=$((20000 + RANDOM % 20000))
"$nutrition" sandbox --port "$port" --data-dir "$work/sandbox" >"$work/sandbox.log" 2>&1 &
server=$!
trap 'kill $server 2>/dev/null || true; rm -rf "$work"' EXIT
base="http://127.0.0.1:$port/"
for _ in $(seq 50); do curl -s "${base}api/preference" >/dev/null && break; sleep 0.1; done

export XDG_DATA_HOME="$work/data" NUTRITIONKIT_NOW=2026-11-21T12:00:00Z TZ=UTC LC_ALL=C
member=(--base-url "$base" --app-id demo --password demo-password --member seed)
"$nutrition" "${member[@]}" >/dev/null
"$nutrition" menu favorite 3 1 "${member[@]}" >/dev/null
"$nutrition" fasting start "${member[@]}" >/dev/null

rm -rf fuzz/corpus
mkdir -p fuzz/corpus/{backend_records,resource_records,dates,key_value_file,notification_file,string_tables}
seed() {  # seed TARGET NAME SELECTOR < bytes
  local file="fuzz/corpus/$1/$2"
  if [ -n "$3" ]; then printf "\\x$(printf %02x "$3")" >"$file"; else : >"$file"; fi
  cat >>"$file"
}
get() { curl -sf "${base}$1"; }
q="Language=es_ES&UserId=seed_demo"
get "api/menu?$q" | seed backend_records menu 0
get "api/menu?$q" | python3 -c 'import json,sys; m=json.load(sys.stdin)[0]; print(json.dumps(m["Days"][0]))' | seed backend_records day 1
get "api/intake?Language=es_ES" | seed backend_records intakes 2
get "api/menu?$q" | python3 -c 'import json,sys; m=json.load(sys.stdin)[0]; print(json.dumps(m["Days"][0]["Intakes"][2]["Dishes"]))' | seed backend_records dishes 3
get "api/user?$q" | seed backend_records member 4
get "api/user?$q" | python3 -c 'import json,sys; print(json.dumps(json.load(sys.stdin)[0]))' | seed backend_records user 5
curl -sf -X POST "${base}api/auth/login" -H 'Content-Type: application/json' \
  -d '{"ClientAlias":"demo","Password":"demo-password"}' | seed backend_records login 6
get "api/preference?Language=es_ES" | seed backend_records preferences 8
get "api/excluded-aliment?Language=es_ES" | seed backend_records excluded 9
get "api/physical-intensity?Language=es_ES" | seed backend_records intensity 10
get "api/desired-balance?Language=es_ES" | seed backend_records balances 11
get "api/distribution-by-intake?Language=es_ES" | seed backend_records distributions 13
get "api/intermittent-fasting?Language=es_ES" | seed backend_records fastings 15
get "api/dish-order?Language=es_ES" | seed backend_records dish_orders 16
get "api/favorite-dish?$q" | seed backend_records favourites 3

seed resource_records questionnaire 0 <resources/profileWithExcluded.json
seed resource_records questionnaire_short 0 <resources/profileWithoutExcluded.json
seed resource_records phases 3 <resources/fasesAyuno.json
seed resource_records info 4 <resources/info_ayuno.json
seed resource_records wait_screens 5 <resources/wait_screens.json
printf '1985-04-12T00:00:00Z' | seed dates birth ""
printf '2026-11-21T12:00:00.000Z' | seed dates fraction ""
printf '2026-11-21T12:00:00+01:00' | seed dates offset ""
for store in "$XDG_DATA_HOME"/nutritionkit/defaults/*.json; do
  seed key_value_file "$(basename "$store" .json)" "" <"$store"
done
seed notification_file notifications "" <"$XDG_DATA_HOME/nutritionkit/notifications.json"
seed string_tables en "" <resources/strings/NutritionStrings.en.json

# The dictionary: every JSON key the records read, and the stores' keys.
{
  grep -rhoE '(field|required)\("[^"]+"' src/model src/platform platform/linux |
    sed -E 's/.*\("([^"]+)"/"\1"/'
  printf '"ayuno_timer"\n"hold_menu_timer"\n"true"\n"false"\n"null"\n'
} | sort -u >fuzz/json.dict
echo "seeds: $(find fuzz/corpus -type f | wc -l) files; dictionary: $(wc -l <fuzz/json.dict) keys"
