#!/usr/bin/env bash
# Process benchmark under Wine: 100 runs of a trivial child, each waited for,
#  - by processRun with a waittime inside one script's `for` loop, vs
#  - by `cmd /c` running a batch file that starts the same child 100 times,
# once with a console child and once with a GUI-subsystem child.
# Usage: bench/processes/run.sh [build dir]   (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
bench_build upkeep bench_trivial_child bench_trivial_child_gui
work=$(mktemp -d "$build/bench-processes.XXXXXX")
bench_on_exit 'rm -rf "$work"'
bench_wine
cd "$work"
cp "$build/bench/bench_trivial_child.exe" console.exe
cp "$build/bench/bench_trivial_child_gui.exe" gui.exe
win=$(echo "Z:$work" | tr / '\\')
items=$(seq -s ';' 1 100)

for child in console gui; do
  cat > "$child.xml" <<XML
<script version="1.1">
  <for var="i" value="$items" delim=";"><processRun path="$win\\$child.exe" waittime="60000"/></for>
</script>
XML
  printf '@echo off\r\nfor /L %%%%i in (1,1,100) do %s.exe\r\n' "$child" > "$child.bat"
  times=$(bench_best 3 wine_run "$build/upkeep.exe" /file "$child.xml" -- wine_run cmd /c "$child.bat")
  read -r best_ours best_ref <<< "$times"
  printf '100 runs of a %s child: processRun %d ms, cmd /c batch %d ms, ratio %s\n' \
    "$child" "$best_ours" "$best_ref" "$(bench_ratio "$best_ours" "$best_ref")"
done
