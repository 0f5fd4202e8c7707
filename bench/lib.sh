# Shared by the benchmarks' run.sh scripts (sourced, not run):
#   bench_init [build-dir]     sets $root, $build (default build/) and $prefix
#   bench_build <target>...    builds those targets in $build
#   bench_wine                 one persistent wineserver until the script exits
#   bench_on_exit <command>    also run <command> when the script exits
#   wine_run <program> [args]  runs a Windows program under Wine in $prefix
#   bench_best <runs> <command...> [-- <command...>]...
#                              runs the commands in turn, <runs> times, and
#                              prints the best wall-clock milliseconds of each,
#                              space-separated (output goes to /dev/null);
#                              $BENCH_PREPARE, if set, runs untimed before
#                              each round
#   bench_ratio <a> <b>        prints a / b with two decimals
# A failing command ends the script, also inside $(...).

shopt -s inherit_errexit

bench_init() {
  root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
  build=$(realpath -m "${1:-$root/build}")
  prefix=$build/wineprefix
  [ -f "$build/build.ninja" ] || cmake --preset mingw -B "$build" >/dev/null
}

bench_build() { cmake --build "$build" --target "$@" >/dev/null; }

_bench_exit_commands=()
bench_on_exit() { _bench_exit_commands+=("$1"); }
_bench_exit() {
  cd "$root"
  local command
  for command in "${_bench_exit_commands[@]}"; do eval "$command" || true; done
}
trap _bench_exit EXIT

bench_wine() {
  "$root/cmake/wine-server.sh" start "$prefix"
  bench_on_exit '"$root/cmake/wine-server.sh" stop "$prefix"'
}

wine_run() { "$root/cmake/wine-run.sh" "$prefix" "$@"; }

bench_best() {
  local runs=$1; shift
  local commands=() current=() arg
  for arg in "$@"; do  # one string per command, its words quoted for eval
    if [ "$arg" = -- ]; then commands+=("${current[*]}"); current=(); else current+=("$(printf '%q' "$arg")"); fi
  done
  commands+=("${current[*]}")
  local best=() i c start ms
  for ((i = 0; i < runs; i++)); do
    if [ -n "${BENCH_PREPARE:-}" ]; then eval "$BENCH_PREPARE"; fi
    for c in "${!commands[@]}"; do
      start=$(date +%s%N)
      eval "${commands[c]}" >/dev/null
      ms=$(( ($(date +%s%N) - start) / 1000000 ))
      if [ -z "${best[c]:-}" ] || [ "$ms" -lt "${best[c]}" ]; then best[c]=$ms; fi
    done
  done
  echo "${best[*]}"
}

bench_ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f\n", a / b }'; }
