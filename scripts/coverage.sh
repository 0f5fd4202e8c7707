#!/usr/bin/env bash
# coverage.sh: builds the coverage variants, runs their tests, and prints line and
# branch coverage of the product code per directory (functions/ per family), then
# "coverage: lines N%, branches M%" for all of it.
#   build-mingw-coverage: the Windows build; its programs write their .gcda files
#     under Wine to the build's own paths, reached through Z: (GCOV_PREFIX in the
#     test preset), and the MinGW gcov reads them.
#   build-native-coverage: the pure code built natively with gcc.
# Files built both ways are merged. Branches that only an exception takes, and
# branches the compiler proved unreachable, are left out of the branch figure.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"

product='(engine|functions|platform|xpath|app)/'
status=0
for preset in mingw-coverage native-coverage; do
  dir=build-$preset
  cmake --preset $preset >/dev/null
  cmake --build --preset $preset
  # Counts from an earlier run would add to this one's.
  find $dir -name '*.gcda' -delete
  ctest --preset $preset || status=1
done

report() {  # report <build dir> <gcov program>
  gcovr --root "$root" --filter "$root/$product" --object-directory "$root/$1" \
    --exclude-directories '.*/CMakeFiles/[0-9.]+$' --gcov-executable "$2" \
    --exclude-throw-branches --exclude-unreachable-branches -j 2 --json "$root/$1/coverage.json" "$root/$1"
}
report build-mingw-coverage x86_64-w64-mingw32-gcov
report build-native-coverage gcov
gcovr --root "$root" --add-tracefile build-mingw-coverage/coverage.json \
  --add-tracefile build-native-coverage/coverage.json \
  --json-summary build-mingw-coverage/coverage-summary.json
python3 scripts/coverage_summary.py build-mingw-coverage/coverage-summary.json
exit $status
