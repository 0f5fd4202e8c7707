# Helpers for the registry cases, read back and seeded with Wine's own reg.exe.
# The cases of one file work below HKCU\Software\UpkeepTest-<file> (or the
# same key in HKLM), which the shared teardown removes after each case; files
# run in parallel, so each has its own key.
TESTKEY="Software\\UpkeepTest-$(basename "$(dirname "$PWD")")"

# seed KEY-BELOW-THE-TEST-KEY reg-add-arguments...: `reg add` into HKCU.
seed() { win reg add "HKCU\\$TESTKEY$1" "${@:2}" /f >/dev/null; }

# regval KEY NAME: "TYPE DATA" of one value as `reg query` prints it (an empty
# NAME is the default value); fails when the value is missing.
regval() {
  local which=(/v "$2")
  [ -n "$2" ] || which=(/ve)
  win reg query "$1" "${which[@]}" | perl -ne 'print "$1 $2\n" if /^    .*?    (REG_\w+)    (.*?)\r?$/' | grep .
}

# regexport KEY: the key as `reg export` writes it, in UTF-8 without CRs (it
# is the only client that prints QWORD data).
regexport() {
  win reg export "$1" "Z:$(pwd | tr / '\\')\\export.reg" /y >/dev/null
  iconv -f UTF-16 -t UTF-8 export.reg | tr -d '\r'
  rm export.reg
}

# nokey KEY: succeeds when the key does not exist.
nokey() { ! win reg query "$1" >/dev/null 2>&1; }

# The teardown: the test keys go, whatever the case did.
removetestkeys() {
  win cmd /c "reg delete HKCU\\$TESTKEY /f & reg delete HKLM\\$TESTKEY /f" >/dev/null 2>&1 || true
}
