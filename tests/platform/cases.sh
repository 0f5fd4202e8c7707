# Helpers for the fault seam's cases, run by upkeep-faults.exe.

# The handlers the rows give their failing elements (attributes in single
# quotes, so rows can be written in double quotes).
E="<onerror><trace value='handled %error%'/></onerror>"
F="<onFalse><trace value='handled False'/></onFalse>"

# fails KIND:NTH SCRIPT LINE...: runs SCRIPT (a file of the case, or elements
# that become row.xml, followed by a trace "went on") with that kind of call
# failing with 1117 from its nth call on, and checks that the run ends
# normally and that its output holds every LINE in this order (a LINE
# starting with "~ " is a regular expression), then "Trace: went on".
fails() {
  local fault=$1:1117 script=$2 from=0 at line code
  shift 2
  if [ ! -f "$script" ]; then
    printf '<script version="1.1">%s<trace value="went on"/></script>\n' "$script" > row.xml
    script=row.xml
  fi
  set +e
  win "$UPKEEP" --fail "$fault" /file "$script" | tr -d '\r' > out.txt
  code=${PIPESTATUS[0]}
  set -e
  [ "$code" = 0 ] || { echo "--fail $fault $script: exit code $code" >&2; cat out.txt >&2; return 1; }
  for line in "$@" "Trace: went on"; do
    if [ "${line:0:2}" = "~ " ]; then
      at=$(tail -n +$((from + 1)) out.txt | grep -n -E -x -m1 -- "${line:2}" | cut -d: -f1)
    else
      at=$(tail -n +$((from + 1)) out.txt | grep -n -F -x -m1 -- "$line" | cut -d: -f1)
    fi
    [ -n "$at" ] || { echo "--fail $fault $script: not found in order: $line" >&2; cat out.txt >&2; return 1; }
    from=$((from + at))
  done
}

# errs KIND:NTH TAG ATTRIBUTES [LOGGED]: the element TAG with those attributes
# and the error handler fails with 1117, which its end line (logged as LOGGED,
# by default TAG) and the handler report.
errs() {
  fails "$1" "<$2 $3>$E</$2>" "${4:-$2} function end with error. err:'1117'" "Trace: handled 1117"
}
