#!/usr/bin/env bash
# tests/consumer/check.sh BUILD_FOLDER : installs the built library, makes the consumer and the smallest example from the
# package in a folder outside of the tree; the one uses the other. Called by ctest.
set -eu
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/help.sh"
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
package=$1/package

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rm -rf "$package"
cmake --install "$1" --prefix "$package" >"$work/install.log" || { cat "$work/install.log"; exit 1; }
for internal in kxbaseui/kx_threadwindows.h kxbaseui/kx_svg.h kxsystem/kx_catalogue.h; do
  [ ! -e "$package/include/$internal" ] || { echo "the package has the internal header $internal"; exit 1; }
done
# A package that refers to the tree serves nobody else.
if grep -rlF "$root" "$package/include" "$package/lib/cmake"; then echo "the package names the source tree"; exit 1; fi

# Moved, as a package unpacked elsewhere is.
cp -r "$package" "$work/moved"
cp -r "$here" "$work/source"
# make PROJECT NAME : builds a project by the package alone, with the two commands that its page gives.
make() {
  cmake -G Ninja -S "$1" -B "$work/$2" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" \
        -DKxDevUI_DIR="$work/moved/lib/cmake/KxDevUI" >"$work/build.log" 2>&1 &&
    cmake --build "$work/$2" >>"$work/build.log" 2>&1 || { cat "$work/build.log"; exit 1; }
}
make "$work/source" consumer
# A host of another compiler is told so, before a linker or a crash does.
printf '%s\n' 'set(MSVC TRUE)' 'find_package(KxDevUI CONFIG REQUIRED)' >"$work/other.cmake"
if told=$(cmake -DKxDevUI_DIR="$work/moved/lib/cmake/KxDevUI" -P "$work/other.cmake" 2>&1) ||
   ! grep -qF 'built by another compiler than the host' <<<"$(tr -s ' \n' ' ' <<<"$told")"; then
  echo "another compiler is not refused: $told"
  exit 1
fi
make "$work/moved/share/kxdevui/examples/minimal" minimal

"$root/scripts/wine-run" "$work/consumer/consumer.exe" "$work/minimal/minimal.exe"
