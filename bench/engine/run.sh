#!/usr/bin/env bash
# Engine benchmarks under Wine, each against a reference in the same run:
#  1. preparing a script of 150,000 elements vs TinyXML alone parsing it, as
#     whole processes less their start-up, and inside the process;
#  2. upkeep-check.exe checking that script vs the interpreter preparing it;
#  3. 1,000,000 iterations of addInt/test/goto with standard output to a file
#     vs the C runtime alone writing the same lines.
# Usage: bench/engine/run.sh [build dir]   (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
bench_build upkeep upkeep-check bench_tinyxml_parse bench_crt_log
work=$(mktemp -d)
bench_on_exit 'rm -rf "$work"'
bench_wine
cd "$work"

# 1. Preparation: the script exits at once, so its run time is load + preparation.
python3 - <<'PY'
import random
random.seed(1)
kinds = ['<assign var="v{0}" value="x{0}"/>', '<trace value="line %v{0}%"/>',
         '<test left="{0}" right="5" operator="&lt;" type="number"><onTrue><nothing/></onTrue></test>',
         '<addInt var="n" value="{0}"/>']
body = [kinds[i % 4].format(i) for i in range(99999)]
open("big.xml", "w").write('<script version="1.1"><exit code="0"/>' + "".join(body) + "</script>")
PY
elements=$(grep -o '<[a-zA-Z]' big.xml | wc -l)
echo '<script version="1.1"><exit code="0"/></script>' > small.xml
times=$(bench_best 3 wine_run "$build/upkeep.exe" /file small.xml -- wine_run "$build/upkeep.exe" /file big.xml)
read -r startup whole <<< "$times"
# The parse's own time, best of three as the runs above are.
parse=$(for run in 1 2 3; do wine_run "$build/bench/bench_tinyxml_parse.exe" big.xml | tr -d '\r'; done | sort -n | head -1)
prepare=$(( whole - startup ))
echo "preparation: $elements elements, upkeep load+prepare ${prepare} ms, TinyXML parse alone ${parse} ms"
echo "preparation ratio (load+prepare / parse): $(bench_ratio "$prepare" "$parse")"
# The same inside the process, as the reference times its parse: from the run's
# start to its first function's end in the run's own JSON log, best of three.
# The figure above also holds the end of a process with a larger heap.
inside=$(for run in 1 2 3; do
  rm -f run.json
  wine_run "$build/upkeep.exe" /file big.xml /jsonlog run.json > /dev/null
  python3 -c '
import datetime, json, sys
events = [json.loads(line) for line in open(sys.argv[1])]
at = lambda event: datetime.datetime.fromisoformat(event["time"].replace("Z", "+00:00"))
print(round((at(events[1]) - at(events[0])).total_seconds() * 1000))' run.json
done | sort -n | head -1)
echo "preparation inside the process: load+prepare ${inside} ms, ratio $(bench_ratio "$inside" "$parse")"

# 2. The checker prepares as the interpreter does, then also walks the script
# for variables and handles; it exits 1 here, for the warnings it prints.
check_big() { wine_run "$build/upkeep-check.exe" big.xml > check.out || [ $? = 1 ]; }
times=$(bench_best 3 check_big -- wine_run "$build/upkeep.exe" /file big.xml)
read -r check interpret <<< "$times"
echo "checker: $(tail -1 check.out | tr -d '\r'), ${check} ms; interpreter load+prepare+exit ${interpret} ms"
echo "checker ratio (check / interpreter): $(bench_ratio "$check" "$interpret")"

# 3. The loop, standard output to a file.
cat > loop.xml <<'XML'
<script version="1.1">
  <addInt id="top" var="n" value="1"/>
  <test left="%n%" operator="&lt;" right="1000000" type="number"><onTrue><goto target="top"/></onTrue></test>
</script>
XML
loop_upkeep() { wine_run "$build/upkeep.exe" /file loop.xml > loop.out; }
loop_crt() { wine_run "$build/bench/bench_crt_log.exe" 1000000 > crt.out; }
times=$(bench_best 1 loop_upkeep -- loop_crt)
read -r loop crt <<< "$times"
echo "loop: 1,000,000 iterations, upkeep ${loop} ms ($(wc -l < loop.out) lines), C runtime alone ${crt} ms ($(wc -l < crt.out) lines)"
echo "loop ratio: $(bench_ratio "$loop" "$crt")"
