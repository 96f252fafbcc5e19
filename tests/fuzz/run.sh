#!/usr/bin/env bash
# Fuzzes the window-free code natively, with the address and undefined-behaviour sanitizers.
#   tests/fuzz/run.sh [SECONDS]   each target for SECONDS (10), from its kept seeds; fails on a finding
#   tests/fuzz/run.sh --prove     plants a fault into a copy of each source and fails unless the fuzzer finds it
# A finding is written to build/fuzz/TARGET-...; once understood, it belongs into tests/fuzz/seeds/TARGET or a unit test.
# Needs the Debian packages clang and libclang-rt-14-dev (libFuzzer and the sanitizers).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
out=${KXDEVUI_BUILD_ROOT:-$root/build}/fuzz
modules=$root/modules
targets=(number catalogue zstackrules)

# compile TARGET SOURCE PROGRAM
compile() {
  clang++ -std=c++20 -O1 -g -Wall -Wextra -Werror -DKXSYSTEM_STATIC -DKXDEVICES_STATIC -I"$modules" \
    -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
    "$root/tests/fuzz/$1_fuzz.cpp" "$2" -o "$3"
}

# source_of TARGET : the rules are named as their target, in whatever module.
source_of() { echo "$modules"/*/kx_"$1".cpp; }

# fuzz TARGET PROGRAM SECONDS : new inputs go into a throw-away corpus.
fuzz() {
  local target=$1 program=$2 seconds=$3 corpus=$out/corpus-$1
  local options=(-max_len=400)
  rm -rf "$corpus"; mkdir -p "$corpus"
  [ "$target" = catalogue ] && options+=(-dict="$root/tests/fuzz/po.dict")
  "$program" -max_total_time="$seconds" -timeout=10 -seed=1 -print_final_stats=1 "${options[@]}" \
    -artifact_prefix="$program-" "$corpus" "$root/tests/fuzz/seeds/$target" >"$program.log" 2>&1
}

run() {
  local target program failed=0
  for target in "${targets[@]}"; do
    program=$out/$target
    compile "$target" "$(source_of "$target")" "$program"
    if fuzz "$target" "$program" "$1"; then
      echo "$target: $(awk '/number_of_executed_units/ { print $2 }' "$program.log") inputs in $1 s, no finding"
    else
      tail -40 "$program.log" >&2
      echo "$target: a finding" >&2
      failed=1
    fi
  done
  return $failed
}

# The sed script that breaks a source, one line a fault.
faults() {
  case $1 in
  number) cat <<'FAULTS'
s/if (!fraction \&\& (c == L'\.' || c == L','))/if (c == L',' \&\& fraction) continue; else &/
s/if (m_point + m_exponent > 0)/if (m_exponent > 0)/
s/value = result + 0\.0/value = result/
FAULTS
  ;;
  catalogue) cat <<'FAULTS'
/void TakeString/,/^    }/s/if (m_rest.empty() || m_rest.front() == '\\n')/if (m_rest.empty()) return; else if (m_rest.front() == '\\n')/
s/if (length == 0 || length > text.size())/if (length == 0)/
s/m_rest\.remove_prefix(3);/m_rest.remove_prefix(4);/
FAULTS
  ;;
  zstackrules) cat <<'FAULTS'
s/ || PlanesIn(extent, step) != Nm{count}//
s/if (stack.IsRelative() \&\& !device.Holds(\*stack.home)) return/if (false) return/
s/std::max(reach.min, top - stack.Extent().value_or(0))/top - stack.Extent().value_or(0)/
FAULTS
  ;;
  esac
}

prove() {
  local target program source fault number failed=0
  for target in "${targets[@]}"; do
    source=$(source_of "$target") number=0
    while IFS= read -r fault; do
      program=$out/faulty-$target-$((number += 1))
      rm -f "$program"-*
      sed "$fault" "$source" >"$program.cpp"
      if cmp -s "$source" "$program.cpp"; then
        echo "$target: the source has changed, fault $number has no place any more" >&2
        failed=1
        continue
      fi
      compile "$target" "$program.cpp" "$program"
      # A finding leaves its input behind; a program that could not even start does not.
      if ! fuzz "$target" "$program" 60 && compgen -G "$program-*" >/dev/null; then
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
