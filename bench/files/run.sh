#!/usr/bin/env bash
# Files benchmarks under Wine, each against Wine's own tool in the same run,
# on one generated tree of 5,000 files (three levels, mixed sizes):
#  1. dirCopyRec of the tree vs `xcopy /E /I /Y`;
#  2. fileFind with depth 3 over the tree vs `cmd /c dir /s /b`.
# Usage: bench/files/run.sh [build dir]   (default: build)
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(realpath "${1:-$root/build}")
cmake --build "$build" --target upkeep >/dev/null
prefix=$build/wineprefix
work=$(mktemp -d "$build/bench-files.XXXXXX")
trap 'cd "$root"; rm -rf "$work"; "$root/cmake/wine-server.sh" stop "$prefix"' EXIT
"$root/cmake/wine-server.sh" start "$prefix"
run() { "$root/cmake/wine-run.sh" "$prefix" "$@"; }
now() { date +%s%N; }
cd "$work"

python3 - <<'PY'
import os, random
random.seed(7)
sizes = [0, 100, 1000, 4000, 16000, 64000, 256000]
for a in range(10):
    for b in range(10):
        d = f"tree/d{a}/s{b}"
        os.makedirs(d, exist_ok=True)
        for c in range(50):
            size = random.choice(sizes)
            with open(f"{d}/f{c}.dat", "wb") as f:
                f.write(os.urandom(size))
PY
total_bytes=$(du -sb tree | cut -f1)
win=$(echo "Z:$work" | tr / '\\')
cat > copy.xml <<XML
<script version="1.1"><dirCopyRec src="$win\\tree" dest="$win\\%dest%"/></script>
XML
cat > find.xml <<XML
<script version="1.1"><fileFind dir="$win\\tree" pattern="*" var="v" delim=";" depth="3"/></script>
XML

# Runs each command three times, alternating, and keeps the best of each.
best_ours= best_ref=
bench() {  # bench <our command...> -- <reference command...>
  local ours=() ref=() seen=0
  for arg in "$@"; do
    if [ "$arg" = -- ]; then seen=1; elif [ $seen = 0 ]; then ours+=("$arg"); else ref+=("$arg"); fi
  done
  best_ours= best_ref=
  for i in 1 2 3; do
    rm -rf ours ref
    local t0 t1 ms
    t0=$(now); "${ours[@]}" >/dev/null; t1=$(now); ms=$(( (t1 - t0) / 1000000 ))
    if [ -z "$best_ours" ] || [ "$ms" -lt "$best_ours" ]; then best_ours=$ms; fi
    t0=$(now); "${ref[@]}" >/dev/null; t1=$(now); ms=$(( (t1 - t0) / 1000000 ))
    if [ -z "$best_ref" ] || [ "$ms" -lt "$best_ref" ]; then best_ref=$ms; fi
  done
}

bench run "$build/upkeep.exe" /file copy.xml /var dest ours -- run xcopy "$win\\tree" "$win\\ref" /E /I /Y
test "$(find ours -type f | wc -l)" = 5000 && test "$(find ref -type f | wc -l)" = 5000
printf 'dirCopyRec, 5,000 files (%d MB): upkeep %d ms, xcopy /E /I /Y %d ms, ratio %s\n' \
  $((total_bytes / 1000000)) "$best_ours" "$best_ref" "$(echo "scale=2; $best_ours / $best_ref" | bc)"

bench run "$build/upkeep.exe" /file find.xml -- run cmd /c dir /s /b "$win\\tree"
printf 'fileFind depth 3, 5,000 files: upkeep %d ms, cmd /c dir /s /b %d ms, ratio %s\n' \
  "$best_ours" "$best_ref" "$(echo "scale=2; $best_ours / $best_ref" | bc)"
