#!/usr/bin/env bash
# describe.sh PREFIX CHECK_EXE OUTDIR: writes the schema (OUTDIR/upkeep.xsd) and
# the function reference (OUTDIR/docs/reference.md) that upkeep-check.exe makes
# from the description of every tag.
set -euo pipefail
prefix=$1 check=$2 out=$3
run="$(dirname "$0")/wine-run.sh"
mkdir -p "$out/docs"
"$run" "$prefix" "$check" /schema > "$out/upkeep.xsd.new"
"$run" "$prefix" "$check" /reference > "$out/docs/reference.md.new"
mv "$out/upkeep.xsd.new" "$out/upkeep.xsd"
mv "$out/docs/reference.md.new" "$out/docs/reference.md"
