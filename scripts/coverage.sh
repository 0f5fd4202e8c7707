#!/usr/bin/env bash
# coverage.sh: builds the coverage variants, runs their tests, and prints line and
# branch coverage of the product code per directory (functions/ per family), then
# "coverage: lines N%, branches M%" for all of it.
#   build-mingw-coverage: the Windows build. Its programs run under Wine and write
#     their .gcda files beside the objects, where the MinGW gcov reads them: the
#     test preset's GCOV_PREFIX=Z: makes the Unix path the compiler wrote
#     (/work/...) a Windows path to the same file (Wine's Z: is /).
#   build-native-coverage: the pure code built natively with gcc.
# Both use the shipped optimisation, so a line means the same in each and files
# built both ways merge line by line; branches are the Windows build's
# (scripts/coverage_summary.py says why). platform/native/ is the native
# build's stand-in for Windows and never ships, so it does not count. Branches
# that only an exception takes, and branches the compiler proved unreachable,
# are left out of the branch figure.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"

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
  # The Wine prefix's dosdevices/z: leads to / : never search it.
  gcovr --root "$root" --filter "$root/(engine|functions|platform|xpath|app)/" \
    --exclude "$root/platform/native/" --object-directory "$root/$1" \
    --exclude-directories '.*/CMakeFiles/[0-9.]+$' --exclude-directories '.*/wineprefix$' \
    --gcov-executable "$2" --exclude-throw-branches --exclude-unreachable-branches -j 2 \
    --json "$root/$1/coverage.json" "$root/$1"
}
report build-mingw-coverage x86_64-w64-mingw32-gcov
report build-native-coverage gcov
python3 scripts/coverage_summary.py build-mingw-coverage/coverage.json build-native-coverage/coverage.json
exit $status
