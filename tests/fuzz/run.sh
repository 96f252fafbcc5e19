#!/usr/bin/env bash
# Fuzzes what reads texts from outside (numbers, catalogues, images, configuration files) natively, with the address and
# undefined-behaviour sanitizers.
#   tests/fuzz/run.sh [SECONDS]   each target for SECONDS (10), from its kept seeds; fails on a finding
#   tests/fuzz/run.sh --prove     plants a fault into a copy of each source and fails unless the fuzzer finds it
# A finding is written to build/fuzz/TARGET-...; once understood, it belongs into tests/fuzz/seeds/TARGET or a unit test.
# Needs the Debian packages clang and libclang-rt-14-dev (libFuzzer and the sanitizers).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/help.sh"
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
out=${KXDEVUI_BUILD_ROOT:-$root/build}/fuzz
modules=$root/modules
targets=(number catalogue svg config)

# What each target is built from besides itself.
sources() {
  case $1 in
  svg) echo modules/kxbaseui/kx_{path,raster,svg,svgsheet,svgstyle,svgvalues,xml}.cpp ;;
  config) echo host/config/config_{file,infer}.cpp modules/kxsystem/kx_number.cpp ;;
  catalogue) echo modules/kxsystem/kx_{catalogue,plural}.cpp ;;
  *) echo modules/kxsystem/kx_$1.cpp ;;
  esac
}

# compile TARGET PROGRAM FOLDER : with the sources of the target as they are in FOLDER
compile() {
  local source files=()
  for source in $(sources "$1"); do files+=("$3/$source"); done
  clang++ -std=c++20 -O1 -g -Wall -Wextra -Werror -DKXSYSTEM_STATIC -DKXBASEUI_STATIC \
    -I"$root" -I"$modules" -I"$root/host/config" \
    -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
    "$root/tests/fuzz/$1_fuzz.cpp" "${files[@]}" -o "$2"
}

# fuzz TARGET PROGRAM SECONDS : new inputs go into a throw-away corpus.
fuzz() {
  local target=$1 program=$2 seconds=$3 corpus=$out/corpus-$1
  local options=(-max_len=400) seeds=("$root/tests/fuzz/seeds/$target")
  rm -rf "$corpus"; mkdir -p "$corpus"
  [ "$target" = svg ] && options=(-max_len=4000) && seeds+=("$modules/baseresources/images")
  [ -f "$root/tests/fuzz/$target.dict" ] && options+=(-dict="$root/tests/fuzz/$target.dict")
  "$program" -max_total_time="$seconds" -timeout=10 -seed=1 -print_final_stats=1 "${options[@]}" \
    -artifact_prefix="$program-" "$corpus" "${seeds[@]}" >"$program.log" 2>&1
}

run() {
  local target program failed=0
  for target in "${targets[@]}"; do
    program=$out/$target
    compile "$target" "$program" "$root"
    if fuzz "$target" "$program" "$1"; then
      echo "$target: $(awk '/number_of_executed_units/ { print $2 }' "$program.log") inputs in $1 s, no finding"
    else
      { tail -40 "$program.log"; echo "$target: a finding"; } >&2
      failed=1
    fi
  done
  return $failed
}

# The sed scripts that break a source, one line a fault.
faults() {
  sed -n "s/^$1 //p" <<'FAULTS'
number s/if (!fraction \&\& (c == L'\.' || c == L','))/if (c == L',' \&\& fraction) continue; else &/
number s/if (m_point + m_exponent > 0)/if (m_exponent > 0)/
catalogue /void TakeString/,/^    }/s/if (m_rest.empty() || m_rest.front() == '\\n')/if (m_rest.empty()) return; else if (m_rest.front() == '\\n')/
catalogue s/if (length == 0 || length > text.size())/if (length == 0)/
svg s/return std::clamp(at, 0\.0, static_cast<double>(m_width));/return m_width < 0 ? 0 : at;/
svg s/255 - (above >> 24)/255/
svg s/ || ++around\.depth > SvgLimits::Depth//
config s/fields\[2\], 0, Bounds::position)/fields[2], 0, Bounds::position + 1)/
config s/if (same != m_file\.devices\.end())/if (false)/
config s/if (limits->unit\.empty() || limits->unit == L"um") return;/return;/
config s/position >= 0 \&\& position < count/position >= 0 \&\& position <= count/
FAULTS
}

prove() {
  local target program source fault number changed failed=0
  for target in "${targets[@]}"; do
    number=0
    while IFS= read -r fault; do
      program=$out/faulty-$target-$((number += 1))
      rm -rf "$program"-* "$program.sources"
      changed=
      for source in $(sources "$target"); do
        mkdir -p "$(dirname "$program.sources/$source")"
        sed "$fault" "$root/$source" >"$program.sources/$source"
        cmp -s "$root/$source" "$program.sources/$source" || changed=yes
      done
      [ -z "$changed" ] || compile "$target" "$program" "$program.sources"
      # A finding leaves its input behind; a program that could not even start does not.
      if [ -z "$changed" ]; then
        echo "$target: the source has changed, fault $number has no place any more" >&2
        failed=1
      elif ! fuzz "$target" "$program" 60 && compgen -G "$program-*" >/dev/null; then
        echo "$target: fault $number found"
      else
        echo "$target: fault $number was not found" >&2
        failed=1
      fi
    done < <(faults "$target")
  done
  return $failed
}

mkdir -p "$out"
case ${1:-} in
--prove) prove ;;
*) run "${1:-10}" ;;
esac
