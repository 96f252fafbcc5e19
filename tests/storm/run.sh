#!/usr/bin/env bash
# tests/storm/run.sh [STEPS] [SEED] : a long storm (100,000 steps in all by default) from one seed.
# tests/storm/run.sh --prove        : builds it with a planted fault and requires that it is found.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
need_packages "${build_packages[@]}" "${runtime_packages[@]}"

if [ "${1:-}" = --prove ]; then
  dir=$build_root/mingw-fault
  say "Building the storm with a planted fault"
  (cd "$root" && cmake --preset mingw-release -B "$dir" -DKXDEVUI_PLANT_FAULT=ON &&
    cmake --build "$dir" --target storm_test) >"$build_root/fault.log" 2>&1 || { tail "$build_root/fault.log" >&2; die "that failed"; }
  use_wine
  if KX_STORM_STEPS=5000 timeout 120 "$root/scripts/wine-run" "$dir/bin/storm_test.exe" >"$dir/storm.log" 2>&1; then
    die "the storm has not seen the planted fault"
  fi
  grep -m 1 'seed [0-9]*, step .*more GDI objects' "$dir/storm.log" || die "the storm failed without naming seed and step"
  say "The planted fault was found"
  exit 0
fi

# Three forms, three storms each.
steps=$(( (${1:-100000} + 8) / 9 ))
seed=${2:-$RANDOM$RANDOM}
build mingw-release storm_test
use_wine
say "Nine storms of $steps steps from seed $seed"
KX_STORM_SEED=$seed KX_STORM_STEPS=$steps "$root/scripts/wine-run" "$build_root/mingw-release/bin/storm_test.exe" \
  >"$build_root/storm.log" 2>&1 || { tail -n 20 "$build_root/storm.log" >&2; die "broken; seed $seed"; }
say "Nothing broken"
