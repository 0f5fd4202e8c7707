#!/usr/bin/env bash
# jsonOpen + jsonSave of a 50 MB document through upkeep.exe, against the same
# work done by picojson alone (picojson_reference.cpp), both built with the
# same MinGW compiler and flags and run under Wine in the same run.
#   bench/json/run.sh [build-dir]   (default: build)
# Prints the best of RUNS timings of each and their ratio.
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
runs=${RUNS:-5}
bench_build upkeep bench_picojson_reference
reference=$build/bench/bench_picojson_reference.exe
work=$build/bench-json
mkdir -p "$work"
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

bench_wine

# Warm the page cache and both programs once, then alternate the runs.
wine_run "$build/upkeep.exe" /file script.xml >/dev/null
wine_run "$reference" doc.json ref_out.json >/dev/null
cmp upkeep_out.json ref_out.json || { echo "outputs differ" >&2; exit 1; }
times=$(bench_best "$runs" wine_run "$build/upkeep.exe" /file script.xml \
  -- wine_run "$reference" doc.json ref_out.json buffer -- wine_run "$reference" doc.json ref_stream.json stream)
read -r u b s <<< "$times"
cmp upkeep_out.json ref_stream.json || { echo "stream output differs" >&2; exit 1; }

seconds() { awk -v ms="$1" 'BEGIN { printf "%6.2f", ms / 1000 }'; }
printf 'document: %s bytes, best of %d runs under Wine (process start included)\n' "$(stat -c %s doc.json)" "$runs"
printf 'upkeep.exe jsonOpen + jsonSave         %s s\n' "$(seconds "$u")"
printf 'picojson alone, whole-buffer I/O       %s s   ratio %sx\n' "$(seconds "$b")" "$(bench_ratio "$u" "$b")"
printf 'picojson alone, stream operators       %s s   ratio %sx\n' "$(seconds "$s")" "$(bench_ratio "$u" "$s")"
