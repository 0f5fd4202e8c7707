#!/usr/bin/env bash
# Prints the tests' share of test plus product lines, counted over the files git tracks:
#   tests: every line under tests/ but the XPath corpus data (tests/xpath/corpus/*.expr,
#          *.expected, *.xml; its scripts and README count)
#   product: engine/ functions/ platform/ xpath/ app/ and the build and tooling code
#          (CMakeLists.txt CMakePresets.json cmake/ scripts/ run-tests upkeep .ci/)
# that is:
#   git ls-files tests | grep -Ev '^tests/xpath/corpus/.*\.(expr|expected|xml)$' | xargs cat | wc -l
#   git ls-files engine functions platform xpath app CMakeLists.txt CMakePresets.json \
#     cmake scripts run-tests upkeep .ci | xargs cat | wc -l
set -euo pipefail
cd "$(dirname "$0")/.."
lines() { xargs -d '\n' cat | wc -l; }
tests=$(git ls-files tests | grep -Ev '^tests/xpath/corpus/.*\.(expr|expected|xml)$' | lines)
product=$(git ls-files engine functions platform xpath app CMakeLists.txt CMakePresets.json \
  cmake scripts run-tests upkeep .ci | lines)
awk -v t="$tests" -v p="$product" \
  'BEGIN { printf "tests %d, product %d: tests are %.2f%% of test plus product lines\n", t, p, 100 * t / (t + p) }'
