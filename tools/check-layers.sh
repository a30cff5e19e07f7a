#!/usr/bin/env bash
# Fails when the core's one-way layers are broken:
#  - a file under src/<folder>/ includes a folder to its right in the layer order below (or
#    anything outside the core: the Linux platform, the sandbox, the apps, the tests);
#  - a method reaches a service through the contract's singletons or the installed platform
#    instead of its constructor: `sharedInstance()`, `shared()` and `Platform::current()` are
#    called only in facade/Core.cpp, where the accessors and the Core live.
set -euo pipefail
cd "$(dirname "$0")/.."

layers=(base json platform model text config backend session logic fasting views ui screens
        router facade)

rank() {
  local i
  for i in "${!layers[@]}"; do
    if [ "${layers[$i]}" = "$1" ]; then echo "$i"; return; fi
  done
  echo -1
}

status=0
while IFS= read -r -d '' file; do
  folder="${file#src/}"
  folder="${folder%%/*}"
  own=$(rank "$folder")
  if [ "$own" -lt 0 ]; then
    echo "$file: src/$folder is not a layer" >&2
    status=1
    continue
  fi
  while IFS=: read -r line include; do
    target="${include%%/*}"
    if [[ "$include" == platform/linux/* || "$include" == platform/ios/* ]]; then
      echo "$file:$line: includes \"$include\": the core includes no platform implementation" >&2
      status=1
      continue
    fi
    other=$(rank "$target")
    if [ "$other" -lt 0 ]; then
      echo "$file:$line: includes \"$include\", which is not part of the core" >&2
      status=1
    elif [ "$other" -gt "$own" ]; then
      echo "$file:$line: $folder includes \"$include\": $target is above $folder" >&2
      status=1
    fi
  done < <(grep -noE '^#include "[^"]+"' "$file" | sed -E 's/^([0-9]+):#include "([^"]+)"/\1:\2/')
done < <(find src -name '*.h' -o -name '*.cpp' -o -name '*.mm' | sort | tr '\n' '\0')

# Service-locator calls: declarations in headers (`static X& sharedInstance();`) are fine.
if locators=$(grep -rnE '(sharedInstance|shared)\(\)|Platform::current\(\)' src \
    --include='*.cpp' --include='*.h' --include='*.mm' |
    grep -vE '^src/facade/Core\.cpp:|^src/platform/Platform\.cpp:' |
    grep -vE '^[^:]+:[0-9]+:\s*static [A-Za-z_:<>&]+ (sharedInstance|shared)\(\);' |
    grep -vE '^[^:]+:[0-9]+:\s*//'); then
  echo "$locators" | sed 's/$/  <- reach services through the constructor/' >&2
  status=1
fi

if [ $status -eq 0 ]; then echo "layers: src/ includes only downwards; no service locator calls"; fi
exit $status
