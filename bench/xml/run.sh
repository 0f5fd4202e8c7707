#!/bin/bash
# xmlOpen + 1,000 xmlGetValue + xmlSave on a generated 10 MB configuration file,
# through the interpreter and through a small program calling TinyXML and the
# XPath evaluator directly, both under Wine in the same run.
#   bench/xml/run.sh [build-dir]     (default: build)
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
runs=${RUNS:-5}
work=$build/bench-xml
mkdir -p "$work"
cd "$work"

# The reference program, built against the build directory's libraries.
x86_64-w64-mingw32-g++-posix -std=c++20 -O2 -DTIXML_USE_STL -municode -static \
  -I"$root" -isystem "$root/third_party/tinyxml" "$root/bench/xml/reference.cpp" \
  "$build/xpath/libupkeep_xpath.a" "$build/libtinyxml.a" -o reference.exe

# 1,350 sections of 120 settings: about 10 MB.
python3 - <<'PY'
import random
random.seed(7)
with open("config.xml", "w", newline="\n") as f:
    f.write('<?xml version="1.0" encoding="utf-8"?>\n<configuration version="1.1">\n')
    for s in range(1350):
        f.write('  <section name="s%d" enabled="%s">\n' % (s, "true" if s % 3 else "false"))
        for k in range(120):
            f.write('    <add key="k%d" value="value-%d-%d" type="string" />\n' % (k, s, k))
        f.write('  </section>\n')
    f.write('</configuration>\n')
queries = []
for i in range(1000):
    s, k = random.randrange(1350), random.randrange(120)
    kind = i % 4
    if kind == 0:
        q = "section[@name='s%d']/add[@key='k%d']/@value" % (s, k)
    elif kind == 1:
        q = "/configuration/section[@name='s%d']/add[%d]/@key" % (s, k + 1)
    elif kind == 2:
        q = "count(section[@name='s%d']/add[@key='k%d'])" % (s, k)
    else:
        q = "concat(section[@name='s%d']/@enabled, '-', section[@name='s%d']/add[1]/@type)" % (s, s)
    queries.append(q)
with open("queries.txt", "w", newline="\n") as f:
    f.write("\n".join(queries) + "\n")
with open("script.xml", "w", newline="\n") as f:
    f.write('<script version="1.1">\n  <xmlOpen path="config.xml" handle="doc"/>\n')
    for q in queries:
        q = q.replace("&", "&amp;").replace('"', "&quot;").replace("<", "&lt;")
        f.write('  <xmlGetValue handle="doc" xpath="%s" var="v"/>\n' % q)
    f.write('  <xmlSave path="out-upkeep.xml" handle="doc"/>\n  <xmlClose handle="doc"/>\n</script>\n')
PY
printf 'document: %s bytes, %s queries\n' "$(stat -c %s config.xml)" "$(wc -l < queries.txt)"

wine_run() { "$root/cmake/wine-run.sh" "$build/wineprefix" "$@"; }
server() { timeout 60 "$root/cmake/wine-server.sh" "$1" "$build/wineprefix" >/dev/null 2>&1 || true; }
server stop
server start
trap 'server stop' EXIT

# Best of $runs wall-clock seconds for one command.
best() {
  local best_ms=""
  for _ in $(seq "$runs"); do
    local start=$(date +%s%N)
    "$@" > last-output.txt
    local ms=$(( ($(date +%s%N) - start) / 1000000 ))
    if [ -z "$best_ms" ] || [ "$ms" -lt "$best_ms" ]; then best_ms=$ms; fi
  done
  echo "$best_ms"
}

ref_ms=$(best wine_run ./reference.exe config.xml queries.txt out-reference.xml)
upkeep_ms=$(best wine_run "$build/upkeep.exe" /file script.xml)
errors=$(grep -c "end with error" last-output.txt || true)
[ "$errors" = 0 ] || { echo "the script reported $errors errors"; exit 1; }
cmp out-upkeep.xml out-reference.xml || { echo "the saved files differ"; exit 1; }
# The process start under Wine, paid by both.
start_only() { wine_run ./reference.exe || true; }
empty_ms=$(best start_only)

printf 'reference (TinyXML + evaluator): %6d ms\n' "$ref_ms"
printf 'upkeep.exe script:               %6d ms\n' "$upkeep_ms"
printf 'process start under Wine:        %6d ms (included in both)\n' "$empty_ms"
awk -v u="$upkeep_ms" -v r="$ref_ms" 'BEGIN { printf "ratio upkeep / reference:        %6.2fx\n", u / r }'
