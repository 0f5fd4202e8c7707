#!/usr/bin/env bash
# wine-run.sh PREFIX program [args...]: runs a Windows program under Wine in the
# project's own prefix, creating the prefix on first use.
set -eu
prefix=$(realpath -m "$1"); shift
export WINEPREFIX=$prefix
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
export LC_ALL=C.UTF-8
unset DISPLAY
if [ ! -f "$prefix/system.reg" ]; then
  mkdir -p "$(dirname "$prefix")"
  (
    flock 9
    if [ ! -f "$prefix/system.reg" ]; then
      wine wineboot -i </dev/null >/dev/null 2>&1 || true
      wineserver -w
    fi
  ) 9>"$prefix.lock"
fi
exec wine "$@"
