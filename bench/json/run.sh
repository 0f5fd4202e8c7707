#!/usr/bin/env bash
# jsonOpen + jsonSave of a 50 MB document through upkeep.exe, against the same
# work done by picojson alone (picojson_reference.cpp), both built with the
# same MinGW compiler and flags and run under Wine in the same run.
#   bench/json/run.sh [build-dir]   (default: build-bench-json, configured from the mingw preset)
# Prints the best of RUNS timings of each and their ratio.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(realpath -m "${1:-$root/build-bench-json}")
runs=${RUNS:-5}
work=$build/bench-json
mkdir -p "$work"

[ -f "$build/build.ninja" ] || cmake --preset mingw -B "$build" >/dev/null
cmake --build "$build" --target upkeep -j2 >/dev/null
# Same compiler and optimisation as the Release preset; picojson through a
# directory holding just its header, as the project build does.
mkdir -p "$work/include" && ln -sf /usr/include/picojson.h "$work/include/picojson.h"
x86_64-w64-mingw32-g++-posix -std=c++20 -O3 -DNDEBUG -municode -static -I"$work/include" \
  "$root/bench/json/picojson_reference.cpp" -o "$work/picojson_reference.exe"

cd "$work"
if [ ! -f doc.json ]; then
  python3 - <<'PY'
import random
random.seed(42)
parts, size, i = [], 0, 0
while size < 50 * 1024 * 1024:
    s = ('{"active":%s,"id":%d,"name":"host-%d caf\u00e9","ports":[%d,%d],"ratio":%r,'
         '"settings":{"mode":"auto","retries":%d,"path":"C:\\\\Program Files\\\\App %d"},"tags":["a","b",null]}') % (
        'true' if i % 3 else 'false', i, i, random.randrange(65536), random.randrange(65536),
        random.random(), random.randrange(10), i)
    parts.append(s); size += len(s.encode()) + 1; i += 1
open('doc.json', 'w', encoding='utf-8').write('{"hosts":[' + ','.join(parts) + '],"version":"1.1"}')
PY
fi
cat > script.xml <<'XML'
<script version="1.1">
  <jsonOpen path="doc.json" handle="d"/>
  <jsonSave handle="d" path="upkeep_out.json"/>
  <jsonClose handle="d"/>
</script>
XML

prefix=$build/wineprefix
"$root/cmake/wine-server.sh" start "$prefix"
trap '"$root/cmake/wine-server.sh" stop "$prefix"' EXIT
run() { "$root/cmake/wine-run.sh" "$prefix" "$@" >/dev/null; }
seconds() { local start=$(date +%s.%N); "$@"; echo "$(date +%s.%N) - $start" | bc; }
best() { sort -g | head -1; }

# Warm the page cache and both programs once, then alternate the runs.
run "$build/upkeep.exe" /file script.xml
run ./picojson_reference.exe doc.json ref_out.json
cmp upkeep_out.json ref_out.json || { echo "outputs differ" >&2; exit 1; }
: > upkeep.t; : > buffer.t; : > stream.t
for ((i = 0; i < runs; i++)); do
  seconds run "$build/upkeep.exe" /file script.xml >> upkeep.t
  seconds run ./picojson_reference.exe doc.json ref_out.json buffer >> buffer.t
  seconds run ./picojson_reference.exe doc.json ref_stream.json stream >> stream.t
done
cmp upkeep_out.json ref_stream.json || { echo "stream output differs" >&2; exit 1; }

u=$(best < upkeep.t) b=$(best < buffer.t) s=$(best < stream.t)
printf 'document: %s bytes, best of %d runs under Wine (process start included)\n' "$(stat -c %s doc.json)" "$runs"
printf 'upkeep.exe jsonOpen + jsonSave         %6.2f s\n' "$u"
printf 'picojson alone, whole-buffer I/O       %6.2f s   ratio %.2fx\n' "$b" "$(echo "$u / $b" | bc -l)"
printf 'picojson alone, stream operators       %6.2f s   ratio %.2fx\n' "$s" "$(echo "$u / $s" | bc -l)"
