#!/usr/bin/env bash
# xmlOpen + 1,000 xmlGetValue + xmlSave on a generated 10 MB configuration file,
# through the interpreter and through a small program calling TinyXML and the
# XPath evaluator directly, both under Wine in the same run.
#   bench/xml/run.sh [build-dir]     (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
runs=${RUNS:-5}
bench_build upkeep bench_xml_reference
reference=$build/bench/bench_xml_reference.exe
work=$build/bench-xml
mkdir -p "$work"
cd "$work"

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

bench_wine

run_reference() { wine_run "$reference" config.xml queries.txt out-reference.xml; }
run_upkeep() { wine_run "$build/upkeep.exe" /file script.xml > last-output.txt; }
# The process start under Wine, paid by both.
start_only() { wine_run "$reference" || true; }
times=$(bench_best "$runs" run_reference -- run_upkeep -- start_only)
read -r ref_ms upkeep_ms empty_ms <<< "$times"
errors=$(grep -c "end with error" last-output.txt || true)
[ "$errors" = 0 ] || { echo "the script reported $errors errors"; exit 1; }
cmp out-upkeep.xml out-reference.xml || { echo "the saved files differ"; exit 1; }

printf 'reference (TinyXML + evaluator): %6d ms\n' "$ref_ms"
printf 'upkeep.exe script:               %6d ms\n' "$upkeep_ms"
printf 'process start under Wine:        %6d ms (included in both)\n' "$empty_ms"
printf 'ratio upkeep / reference:        %6.2fx\n' "$(bench_ratio "$upkeep_ms" "$ref_ms")"
