# Shared by ./run, ./test and .ci/run: packages, build, Wine prefix, display. Sourced, never run.
# Every step says what it does, and does nothing the second time.

source "$(dirname "${BASH_SOURCE[0]}")/help.sh"

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_root=${KXDEVUI_BUILD_ROOT:-$root/build}

say() { printf '== %s\n' "$*"; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# need_packages PACKAGE... : installs what is missing, as root or through sudo.
need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  say "Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || die "these packages are missing, and there is neither root nor sudo to install them: ${missing[*]}"
    as_root=(sudo)
  fi
  local log; log=$(mktemp)
  if ! { "${as_root[@]}" apt-get update -qq &&
         "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    die "the packages could not be installed"
  fi
  rm -f "$log"
}

build_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build gettext googletest)
runtime_packages=(wine wine64 xvfb xauth fonts-wine fonts-liberation fonts-ipafont-gothic)

# clang's front end with g++'s library: for MinGW, and with the tables, the records and the extensions of Visual C++, whose own
# headers are not to be had here.
kx_gcc=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++
clang_library=(-isystem $kx_gcc -isystem $kx_gcc/x86_64-w64-mingw32)
clang_mingw=(clang++ --target=x86_64-w64-mingw32 "${clang_library[@]}")
clang_other=(clang++ --target=x86_64-pc-windows-msvc -nostdlibinc "${clang_library[@]}" -idirafter /usr/x86_64-w64-mingw32/include
  -fms-extensions -fno-ms-compatibility -D__MINGW32__ -D__MINGW64__ '-D__declspec(a)=__attribute__((a))')

# build PRESET [TARGET...] : configures once, then builds.
build() {
  local preset=$1; shift
  local dir=$build_root/$preset log
  mkdir -p "$dir"
  log=$dir/build.log
  if [ ! -f "$dir/build.ninja" ]; then
    say "Configuring $preset"
    (cd "$root" && cmake --preset "$preset" -B "$dir") >"$log" 2>&1 || { cat "$log" >&2; die "configuring $preset failed"; }
  fi
  say "Building $preset"
  local targets=() target
  for target in "$@"; do targets+=(--target "$target"); done
  cmake --build "$dir" "${targets[@]}" >"$log" 2>&1 || { cat "$log" >&2; die "building $preset failed"; }
}

# The prefixes that this script has begun. One that it has only inherited, as a test does, is not its to end: other tests run
# in it.
kx_prefixes=()

# use_wine [NAME] : exports what Wine needs and makes the prefix once. The prefix has a virtual desktop: without a window
# manager, losing the focus would cancel captures, and hiding a managed window could wait for seconds. NAME chooses another
# prefix, for a script that runs beside another (each ends the programs of its own prefix when it begins and ends); `managed`
# is without that desktop, and a window manager sees its windows.
use_wine() {
  export WINEPREFIX=$build_root/wine${1:+-$1} WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
  KX_WINE=$(command -v wine64 || true)
  [ -n "$KX_WINE" ] || KX_WINE=/usr/lib/wine/wine64
  [ -x "$KX_WINE" ] || die "wine64 is not installed"
  export KX_WINE
  use_display
  if [ ! -f "$WINEPREFIX/ready" ]; then
    say "Making the Wine prefix"
    # Debian's Wine does not look where Debian's package of its fonts puts them. The bold dialog face stays out: its larger
    # sizes are not bold, and it has no link to the Japanese characters; made from the normal face, bold type has both.
    mkdir -p "$WINEPREFIX/drive_c/windows/Fonts"
    ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    rm "$WINEPREFIX/drive_c/windows/Fonts/tahomabd.ttf"
    "$KX_WINE" wineboot -i >"$WINEPREFIX/wineboot.log" 2>&1 || { cat "$WINEPREFIX/wineboot.log" >&2; die "wineboot failed"; }
    if [ "${1:-}" != managed ]; then
      "$KX_WINE" reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
      "$KX_WINE" reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1280x1024 /f >/dev/null 2>&1
    fi
    # The pictures must not depend on the machine: one smoothing, one set of fonts.
    "$KX_WINE" reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 2 /f >/dev/null 2>&1
    "$KX_WINE" reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 1 /f >/dev/null 2>&1
    "$KX_WINE" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'MS UI Gothic' /d 'IPAGothic' /f >/dev/null 2>&1
    wineserver -w
    touch "$WINEPREFIX/ready"
  fi
  kx_prefixes+=("$WINEPREFIX")
  # A desktop belongs to the display on which it was started; one left over from an earlier display shows no windows.
  wineserver -k >/dev/null 2>&1 || true
  wineserver -p >/dev/null 2>&1 || true
}

# use_display : a private X server, unless the caller wants the window on the user's own display.
use_display() {
  [ "${KX_OWN_DISPLAY:-}" = 1 ] && [ -n "${DISPLAY:-}" ] && return 0
  [ -n "${kx_display:-}" ] && return 0
  start_display
  export DISPLAY=$kx_display
}

# start_display : sets kx_display to that of an X server which ends with the session. -noreset: a server that starts over
# whenever its last client has gone drops the client that comes just then, and that program could make no window.
kx_servers=()
start_display() {
  # A desktop has resources; without any, Xlib looks for files of them again with every font that Wine selects.
  export XENVIRONMENT=$root/scripts/display.resources
  local number_file; number_file=$(mktemp)
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$number_file" >/dev/null 2>&1 &
  kx_servers+=($!)
  local i
  for i in $(seq 100); do [ -s "$number_file" ] && break; sleep 0.1; done
  [ -s "$number_file" ] || die "Xvfb did not start"
  kx_display=:$(cat "$number_file")
  rm -f "$number_file"
}

# use_seats NUMBER : after use_wine. So many prefixes, each with a display, for programs that run side by side: foreground
# window, mouse and focus are a session's. scripts/wine-run takes a seat that is free.
use_seats() {
  local i prefix
  export KX_SEATS=$build_root/seats
  rm -rf "$KX_SEATS"
  mkdir -p "$KX_SEATS"
  printf '%s\n%s\n' "$DISPLAY" "$WINEPREFIX" >"$KX_SEATS/1"
  for i in $(seq 2 "$1"); do
    prefix=$WINEPREFIX-$i
    [ -f "$prefix/ready" ] || { rm -rf "$prefix"; cp -a "$WINEPREFIX" "$prefix"; }
    start_display
    kx_prefixes+=("$prefix")
    WINEPREFIX=$prefix wineserver -k >/dev/null 2>&1 || true
    WINEPREFIX=$prefix wineserver -p >/dev/null 2>&1 || true
    printf '%s\n%s\n' "$kx_display" "$prefix" >"$KX_SEATS/$i"
  done
}

end_session() {
  local each
  for each in "${kx_prefixes[@]}"; do WINEPREFIX=$each wineserver -k >/dev/null 2>&1; done
  for each in "${kx_servers[@]}"; do kill "$each" 2>/dev/null; done
  return 0
}
trap end_session EXIT
