#!/usr/bin/env bash
# fileDownload of 100 MB from an HTTP server on 127.0.0.1 vs curl (native) fetching the
# same file in the same run. Each round asks for a new URL (a query string), so neither
# side is served from a cache.
# Usage: bench/files/download.sh [build dir]   (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
bench_build upkeep
command -v curl >/dev/null || { echo "needs curl (apt-get install curl)" >&2; exit 1; }
work=$(mktemp -d "$build/bench-download.XXXXXX")
bench_on_exit 'rm -rf "$work"'
bench_wine
cd "$work"

mkdir served
head -c 100000000 /dev/urandom > served/big.bin
python3 -u -m http.server 0 --bind 127.0.0.1 --directory served > server.log 2>&1 &
server=$!
bench_on_exit 'kill "$server" 2>/dev/null || true'
for _ in $(seq 100); do grep -q 'port [0-9]*' server.log && break; sleep 0.1; done
url=http://127.0.0.1:$(grep -o 'port [0-9]*' server.log | head -1 | cut -d' ' -f2)/big.bin
cat > download.xml <<'XML'
<script version="1.1"><fileDownload url="%url%" file="%currentdir%\ours.bin"/></script>
XML

round=0
ours() { wine_run "$build/upkeep.exe" /file download.xml /var url "$url?upkeep=$round"; }
ref() { curl -s -o ref.bin "$url?curl=$round"; }
BENCH_PREPARE='round=$((round + 1)); rm -f ours.bin ref.bin'
times=$(bench_best 3 ours -- ref)
read -r best_ours best_ref <<< "$times"
cmp served/big.bin ours.bin && cmp served/big.bin ref.bin
printf 'fileDownload 100 MB from 127.0.0.1: upkeep %d ms (%d MB/s), curl %d ms (%d MB/s), ratio %s\n' \
  "$best_ours" $((100000 / best_ours)) "$best_ref" $((100000 / best_ref)) "$(bench_ratio "$best_ours" "$best_ref")"
