#!/usr/bin/env bash
# How time and memory grow with the input: each workload at three sizes, ten
# times apart, run whole by upkeep.exe under Wine. Prints wall-clock time and
# peak memory (best of three runs) beyond those of a script that only exits
# (the reference, measured in the same run), and the growth from one size to
# the next: a step of about 10x means time and memory proportional to the
# input. At the smallest sizes the differences are within the noise.
#  - expansion of a 10 KB / 100 KB / 1 MB attribute: plain text, references to
#    a variable, unknown names (each looked up in the environment), as many
#    references to a variable whose value is that same text (then also
#    compared with the unknown names at 1 MB), nested
#    indexed references %a[%a[...1...]%]% (every level found), the same
#    nesting around x (every level misses: a[x] does not exist), and an
#    unterminated run of %[;
#  - a for loop over 1,000 / 10,000 / 100,000 items;
#  - preparation, run and release of handlers nested 1,000 / 10,000 / 100,000
#    levels deep;
#  - xmlOpen + xmlSave of a document nested 1,000 / 10,000 / 100,000 levels
#    deep (with the saved size against the document's).
# Usage: bench/scaling/run.sh [build dir]   (default: build)
set -euo pipefail
source "$(dirname "$0")/../lib.sh"
bench_init "${1:-}"
bench_build upkeep
work=$(mktemp -d)
bench_on_exit 'rm -rf "$work"'
bench_wine
cd "$work"

python3 - <<'PY'
def script(name, body):
    open(name, "w").write('<script version="1.1">' + body + "</script>")

script("reference.xml", '<exit code="0"/>')
for size, tag in ((10_000, "10k"), (100_000, "100k"), (1_000_000, "1m")):
    texts = {
        "plain": "abcdefghij" * (size // 10),
        "variables": "%v%" * (size // 3),
        "unknown": "%unknown%" * (size // 9),
        "known": "%known12%" * (size // 9),  # as many references, giving the same text
        "nested": "%a[" * (size // 5) + "1" + "]%" * (size // 5),
        "missing": "%a[" * (size // 5) + "x" + "]%" * (size // 5),
        "unterminated": "%[" * (size // 2),
    }
    for kind, text in texts.items():
        script(f"{kind}-{tag}.xml", '<assign var="v" value="x"/><assign var="a[1]" value="1"/>'
               '<assign var="known12" value="%%unknown%%"/>'
               f'<assign var="r" value="{text}"/>')
for count, tag in ((1_000, "10k"), (10_000, "100k"), (100_000, "1m")):
    items = ";".join("f%06d.dll" % i for i in range(count))
    script(f"for-{tag}.xml", f'<for var="f" value="{items}" delim=";"><nothing/></for>')
    pairs = count // 2 - 1  # the root and the innermost function take a level each
    script(f"handlers-{tag}.xml",
           '<test left="a" right="a" operator="==" type="string"><onTrue>' * pairs
           + '<nothing/>' + "</onTrue></test>" * pairs)
    open(f"deep-{tag}.xml", "w").write("<e>" * count + "</e>" * count)
    script(f"save-{tag}.xml", f'<xmlOpen path="deep-{tag}.xml" handle="d"/>'
           f'<xmlSave path="saved-{tag}.xml" handle="d"/><xmlClose handle="d"/>')
PY

# "<ms> <KB>" of one run: wall-clock time and peak resident memory.
measure() {
  local start ms kb
  start=$(date +%s%N)
  kb=$( { /usr/bin/time -f %M "$root/cmake/wine-run.sh" "$prefix" "$build/upkeep.exe" /file "$1" >/dev/null; } 2>&1 | tail -n 1)
  ms=$(( ($(date +%s%N) - start) / 1000000 ))
  echo "$ms $kb"
}

# The best of three runs: "<ms> <KB>".
best_of_three() {
  local best_ms= best_kb= ms kb
  for _ in 1 2 3; do
    read -r ms kb <<< "$(measure "$1")"
    if [ -z "$best_ms" ] || [ "$ms" -lt "$best_ms" ]; then best_ms=$ms; fi
    if [ -z "$best_kb" ] || [ "$kb" -lt "$best_kb" ]; then best_kb=$kb; fi
  done
  echo "$best_ms $best_kb"
}

read -r base_ms base_kb <<< "$(best_of_three reference.xml)"
echo "reference (a script that only exits): $base_ms ms, $((base_kb / 1024)) MB"

# Time and memory beyond the reference, at least 1 ms and 100 KB so that
# ratios stay defined (differences that small are noise).
report() {
  local label=$1; shift
  local line="$label:" previous_ms= previous_kb= file ms kb
  for file in "$@"; do
    read -r ms kb <<< "$(best_of_three "$file")"
    ms=$(( ms - base_ms )); [ "$ms" -ge 1 ] || ms=1
    kb=$(( kb - base_kb )); [ "$kb" -ge 100 ] || kb=100
    line+=" ${ms} ms $(awk -v k="$kb" 'BEGIN { printf "%.1f", k / 1024 }') MB"
    [ -z "$previous_ms" ] || line+=" (x$(bench_ratio "$ms" "$previous_ms") time, x$(bench_ratio "$kb" "$previous_kb") memory)"
    line+=";"
    previous_ms=$ms; previous_kb=$kb
  done
  echo "${line%;}"
}

echo "sizes 10 KB, 100 KB, 1 MB (for: 1,000, 10,000, 100,000 items; nesting: that many levels)"
for kind in plain variables unknown known nested missing unterminated; do
  report "expansion, $kind" "$kind-10k.xml" "$kind-100k.xml" "$kind-1m.xml"
done
# Unknown names against known ones: the same count of references, the same text.
read -r unknown_ms _ <<< "$(best_of_three unknown-1m.xml)"
read -r known_ms _ <<< "$(best_of_three known-1m.xml)"
echo "unknown / known references at 1 MB, whole runs: ${unknown_ms} ms / ${known_ms} ms = $(bench_ratio "$unknown_ms" "$known_ms")"
unknown_ms=$(( unknown_ms - base_ms )); [ "$unknown_ms" -ge 1 ] || unknown_ms=1
known_ms=$(( known_ms - base_ms )); [ "$known_ms" -ge 1 ] || known_ms=1
echo "  beyond the reference (at least 1 ms): ${unknown_ms} ms / ${known_ms} ms = $(bench_ratio "$unknown_ms" "$known_ms")"
report "for loop" for-10k.xml for-100k.xml for-1m.xml
report "nested handlers" handlers-10k.xml handlers-100k.xml handlers-1m.xml
report "xmlSave of a deep document" save-10k.xml save-100k.xml save-1m.xml
for tag in 10k 100k 1m; do
  echo "saved/document size at $tag: $(bench_ratio "$(stat -c %s "saved-$tag.xml")" "$(stat -c %s "deep-$tag.xml")")"
done
