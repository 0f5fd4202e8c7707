#!/usr/bin/env bash
# Registry benchmark under Wine, against two references in the same run:
# 10,000 regWrite + regRead pairs from a `for` loop in one script, vs
#  - a C program making the same registry calls 10,000 times (the floor; the
#    ratio is upkeep's time over the program's, each a whole process);
#  - a batch file running `reg add` and `reg query` for the same write and read
#    ($REFERENCE_PAIRS times, default 1,000: each is two process starts),
#    scaled to one pair; the ratio is upkeep's time per pair over reg.exe's.
# Usage: bench/registry/run.sh [build dir]   (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
bench_build upkeep bench_reg_pairs
pairs=10000
reference_pairs=${REFERENCE_PAIRS:-1000}
work=$(mktemp -d "$build/bench-registry.XXXXXX")
bench_on_exit 'rm -rf "$work"'
bench_wine
bench_on_exit 'wine_run reg delete "HKCU\\Software\\UpkeepBench" /f >/dev/null 2>&1'
cd "$work"
wine_run reg add 'HKCU\Software\UpkeepBench' /f >/dev/null

python3 - "$pairs" "$reference_pairs" <<'PY'
import sys
pairs, reference = int(sys.argv[1]), int(sys.argv[2])
numbers = ";".join(str(i) for i in range(pairs))
with open("pairs.xml", "w") as f:
    f.write(f'''<script version="1.1">
  <for var="i" value="{numbers}" delim=";">
    <regWrite root="HKEY_CURRENT_USER" key="Software\\UpkeepBench" value="v" data="%i%" type="REG_SZ"/>
    <regRead root="HKEY_CURRENT_USER" key="Software\\UpkeepBench" value="v" var="back"/>
  </for>
  <trace value="last %back%"/>
</script>
''')
with open("pairs.bat", "w", newline="\r\n") as f:
    f.write("@echo off\n")
    for i in range(reference):
        f.write(f"reg add HKCU\\Software\\UpkeepBench /v v /t REG_SZ /d {i} /f >nul\n")
        f.write("reg query HKCU\\Software\\UpkeepBench /v v >nul\n")
PY
win=$(echo "Z:$work" | tr / '\\')

# The script's own output is checked once, untimed: every pair ran and read back.
wine_run "$build/upkeep.exe" /file "$win\\pairs.xml" | grep -q "^Trace: last $((pairs - 1))"
wine_run "$build/bench/bench_reg_pairs.exe" "$pairs" | grep -q "^last $((pairs - 1))"
times=$(bench_best 3 wine_run "$build/upkeep.exe" /file "$win\\pairs.xml" -- wine_run "$build/bench/bench_reg_pairs.exe" "$pairs")
read -r ours floor <<< "$times"
printf 'regWrite+regRead: %d pairs in %d ms; the same registry calls from a C program: %d ms; ratio %s\n' \
  "$pairs" "$ours" "$floor" "$(bench_ratio "$ours" "$floor")"
times=$(bench_best 1 wine_run cmd /c "$win\\pairs.bat")
read -r reference <<< "$times"
test "$(wine_run reg query 'HKCU\Software\UpkeepBench' /v v | tr -d '\r' | awk '$1 == "v" { print $3 }')" = $((reference_pairs - 1))
per_ours=$(awk -v t="$ours" -v n="$pairs" 'BEGIN { printf "%.3f", t / n }')
per_reference=$(awk -v t="$reference" -v n="$reference_pairs" 'BEGIN { printf "%.3f", t / n }')
printf 'regWrite+regRead: %d pairs in %d ms (%s ms a pair); reg add+reg query: %d pairs in %d ms (%s ms a pair); ratio %s\n' \
  "$pairs" "$ours" "$per_ours" "$reference_pairs" "$reference" "$per_reference" \
  "$(awk -v a="$per_ours" -v b="$per_reference" 'BEGIN { printf "%.4f", a / b }')"
