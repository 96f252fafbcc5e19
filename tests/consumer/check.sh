#!/usr/bin/env bash
# tests/consumer/check.sh BUILD_FOLDER : installs the built library, makes the consumer from the package in a folder
# outside of the tree, and runs it beside a copy of the package's bin/. Called by ctest.
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
cmake -G Ninja -S "$work/source" -B "$work/build" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" \
      -DKxDevUI_DIR="$work/moved/lib/cmake/KxDevUI" >"$work/build.log" 2>&1 &&
  cmake --build "$work/build" >>"$work/build.log" 2>&1 || { cat "$work/build.log"; exit 1; }

mkdir "$work/bin"
cp "$work/moved/bin/"* "$work/build/consumer.exe" "$work/bin/"
"$root/scripts/wine-run" "$work/bin/consumer.exe"
