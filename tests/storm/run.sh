#!/usr/bin/env bash
# The storm on demand, longer than ctest's.
#   tests/storm/run.sh [STEPS]   every control for STEPS steps (100000) from KX_STORM_SEED, or else a seed of the day
#   tests/storm/run.sh --prove   builds subjects and host with a planted fault and fails unless storm and soak find it
# KX_STORM_PRESET chooses the build (mingw-release); mingw-debug traps undefined behaviour. KX_STORM_FILTER chooses the
# controls (*). With KX_STORM_TRACE=1 every step is named.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

# storm PRESET LOG : runs the program. Its exit code alone does not count: a stack overflow under Wine can end with 0.
storm() {
  "$root/scripts/wine-run" "$build_root/$1/bin/storm_test.exe" --gtest_filter="${KX_STORM_FILTER:-*}" >"$2" 2>&1 &&
    grep -q '\[  PASSED  \] [1-9][0-9]* test' "$2" && ! grep -q '\[  FAILED  \]\|CRASH' "$2"
}

run() {
  local preset=${KX_STORM_PRESET:-mingw-release}
  local log=$build_root/$preset/storm.log
  export KX_STORM_STEPS=$1 KX_STORM_SEED=${KX_STORM_SEED:-$(date +%Y%m%d)}
  build "$preset" storm_test
  use_wine
  say "Storm of $KX_STORM_STEPS steps for every control from seed $KX_STORM_SEED on"
  storm "$preset" "$log" || { tail -40 "$log" >&2; die "the storm has found something, seed $KX_STORM_SEED on"; }
  grep ' steps from seed ' "$log"
}

prove() {
  local preset=mingw-fault
  local log=$build_root/$preset/storm.log
  export KX_STORM_STEPS=1000 KX_STORM_SEED=1
  [ -f "$build_root/$preset/build.ninja" ] ||
    (cd "$root" && cmake --preset mingw-release -B "$build_root/$preset" -DKXDEVUI_PLANT_FAULT=ON) || die "configuring failed"
  build "$preset" storm_test kxdevhost
  use_wine
  if storm "$preset" "$log"; then die "the storm has not found the planted fault"; fi
  grep 'seed [0-9]*, step [0-9]* .* GDI objects' "$log" ||
    { cat "$log" >&2; die "the storm has failed, but without naming the fault, seed and step"; }
  log=$build_root/$preset/soak.log
  timeout 120 "$KX_WINE" "$build_root/$preset/bin/kxdevhost.exe" --soak 5 --seed 1 --log "Z:${log//\//\\}"
  grep -A3 '^Soak: FAILED' "$log" | grep 'brush or pen' || die "the soak has not found the planted fault, see $log"
  say "The planted faults were found"
}

case ${1:-} in
--prove) prove ;;
*[!0-9]*) die "how many steps? $1 is no number" ;;
*) run "${1:-100000}" ;;
esac
