#!/usr/bin/env bash
# tests/scale/system.sh PROGRAMS : the host's pages where the whole system is at 150 %, in a prefix of its own: every window
# stands where it stands at 100 % with zoom 1.5, and every page looks as it does there. Called by ctest.
set -eu
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
work=$(mktemp -d)
trap 'end_session; rm -rf "$work"' EXIT

places() { KX_PLACES="Z:$work/$1" "$KX_WINE" "$2/scale_test.exe" --gtest_filter='*WhateverTheSystemsScaleIs' >"$work/$1.log" 2>&1 || { cat "$work/$1.log"; exit 1; }; }

start_display
export DISPLAY=$kx_display
cp -a "$WINEPREFIX" "$work/prefix"
export WINEPREFIX=$work/prefix
kx_prefixes+=("$WINEPREFIX")
"$KX_WINE" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 96 /f >/dev/null 2>&1
wineserver -k || true
places at-96 "$1"
for key in 'HKCU\Control Panel\Desktop' 'HKCC\Software\Fonts'; do
  "$KX_WINE" reg add "$key" /v LogPixels /t REG_DWORD /d 144 /f >/dev/null 2>&1
done
wineserver -k || true
places at-144 "$1"
[ "$(head -n 1 "$work/at-144" | tr -d '\r')" = 144 ] || { echo "the system is not at 150 %"; exit 1; }
diff <(tail -n +2 "$work/at-96") <(tail -n +2 "$work/at-144")
