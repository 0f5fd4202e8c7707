#!/usr/bin/env bash
# Files benchmarks under Wine, each against Wine's own tool in the same run,
# on one generated tree of 5,000 files (three levels, mixed sizes):
#  1. dirCopyRec of the tree vs `xcopy /E /I /Y`;
#  2. fileFind with depth 3 over the tree vs `cmd /c dir /s /b`.
# Usage: bench/files/run.sh [build dir]   (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
bench_build upkeep
work=$(mktemp -d "$build/bench-files.XXXXXX")
bench_on_exit 'rm -rf "$work"'
bench_wine
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

# Three rounds, alternating, the copies' targets removed before each round.
times=$(BENCH_PREPARE='rm -rf ours ref' bench_best 3 \
  wine_run "$build/upkeep.exe" /file copy.xml /var dest ours -- wine_run xcopy "$win\\tree" "$win\\ref" /E /I /Y)
read -r best_ours best_ref <<< "$times"
test "$(find ours -type f | wc -l)" = 5000 && test "$(find ref -type f | wc -l)" = 5000
printf 'dirCopyRec, 5,000 files (%d MB): upkeep %d ms, xcopy /E /I /Y %d ms, ratio %s\n' \
  $((total_bytes / 1000000)) "$best_ours" "$best_ref" "$(bench_ratio "$best_ours" "$best_ref")"

times=$(bench_best 3 wine_run "$build/upkeep.exe" /file find.xml -- wine_run cmd /c dir /s /b "$win\\tree")
read -r best_ours best_ref <<< "$times"
printf 'fileFind depth 3, 5,000 files: upkeep %d ms, cmd /c dir /s /b %d ms, ratio %s\n' \
  "$best_ours" "$best_ref" "$(bench_ratio "$best_ours" "$best_ref")"
