#!/usr/bin/env bash
# wine-server.sh start|stop PREFIX: keeps one persistent wineserver for a test run,
# so processes start fast and services live between runs.
set -eu
action=$1 prefix=$(realpath -m "$2")
here=$(cd "$(dirname "$0")" && pwd)
export WINEPREFIX=$prefix WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= LC_ALL=C.UTF-8
unset DISPLAY
case $action in
  start)
    "$here/wine-run.sh" "$prefix" cmd /c exit 0 </dev/null >/dev/null 2>&1 || true
    # A server left over from an interrupted run would never exit by itself.
    wineserver -k 2>/dev/null || true
    wineserver -w
    wineserver -p </dev/null >/dev/null 2>&1
    # Boot Wine's own services now, with handles that no test waits on.
    wine cmd /c exit 0 </dev/null >/dev/null 2>&1 || true
    ;;
  stop)
    wineserver -k 2>/dev/null || true
    wineserver -w 2>/dev/null || true
    # Downloads leave a copy in the Internet cache; drop it so the prefix does not grow.
    rm -rf "$prefix"/drive_c/users/*/AppData/Local/Microsoft/Windows/INetCache
    ;;
esac
