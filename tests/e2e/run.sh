#!/usr/bin/env bash
# tests/e2e/run.sh : uses the host from outside, under a window manager, as a person does: the X server is given mouse and
# keyboard input, the host's log and pictures of the screen tell what came of it.
#
# Where things stand the host tells (host/watcher.h); no place and no size is written here. With KX_E2E_BREAK=1 one
# expectation is a wrong one, and the test has to fail.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

need_packages "${build_packages[@]}" "${runtime_packages[@]}" xdotool openbox imagemagick
build mingw-release kxdevhost
unset KX_OWN_DISPLAY
use_wine managed
out=$build_root/e2e
rm -rf "$out"
mkdir -p "$out"
log=$out/host.log
mark=0  # what is expected comes after this line of the log
seconds=15

give_up() {
  import -silent -window root "$out/failed.png"
  { printf 'The end of the log:\n'; grep -v '^Place' "$log" | tail -n 15; } >&2
  die "$* (line ${BASH_LINENO[-2]}; $out/failed.png)"
}

# until_true WHAT COMMAND... : asks again until the command succeeds.
until_true() {
  local what=$1 end=$((SECONDS + seconds)); shift
  until "$@"; do
    [ $SECONDS -lt $end ] || give_up "$what"
    # Once more after its end: the last lines may have been written meanwhile.
    kill -0 "$host" 2>/dev/null || "$@" || give_up "the host has ended; $what"
    sleep 0.03
  done
}

lines() { tr -d '\r' <"$log"; }
find_line() {
  local at; at=$(lines | tail -n +$((mark + 1)) | grep -nE -m1 -- "^($1)\$" | cut -d: -f1)
  [ -n "$at" ] && mark=$((mark + at))
}
# Waits for lines in this order, each an extended regular expression for the whole line.
expect() {
  local line
  for line in "$@"; do until_true "'$line' does not come" find_line "$line"; done
}
# From here on: what was in the log before does not count.
from_now() { mark=$(wc -l <"$log"); }

# find_place NAME : sets x y w h as told last.
find_place() {
  read -r x y w h < <(lines | tac | sed '0,/^Places: told/d; /^Places: told/q' |
    grep -m1 -oP -- "^Place: \Q$1\E \K-?\d+ -?\d+ \d+ \d+$")
}
place() { until_true "nothing tells where '$1' is" find_place "$1"; }
# point NAME [PERCENT] : the mouse goes there, PERCENT across.
point() {
  place "$1"
  xdotool mousemove --sync $((x + w * ${2:-50} / 100)) $((y + h / 2))
}

click() { point "$@"; from_now; xdotool click 1; }
wheel_up() { point "$1"; from_now; xdotool click 4; }
keys() { from_now; xdotool key --delay 30 "$@"; }
drag() {
  local i
  point "$1" "$2"
  from_now
  xdotool mousedown 1
  for i in 1 2 3 4; do point "$1" $(($2 + ($3 - $2) * i / 4)); done
  xdotool mouseup 1
}
# pull NAME FROM TO : the button goes down FROM percent down, and is still held at TO.
pull() {
  local i
  place "$1"
  xdotool mousemove --sync $((x + w / 2)) $((y + h * $2 / 100))
  from_now
  xdotool mousedown 1
  for i in 1 2 3 4; do xdotool mousemove --sync $((x + w / 2)) $((y + h * ($2 + ($3 - $2) * i / 4) / 100)); done
}
menu() { local entry; for entry in "$@"; do click "Menu/$entry"; done; }
# step ACT LINE... : what is done, and the lines that come of it.
step() { eval "$1"; expect "${@:2}"; }
# changing PLACE ACT LINE... : the same, and what is seen there is another picture than before.
changing() { look before "$1"; step "${@:2}"; changed before "$1"; }
page() { step "click Host/$1" 'Places: told'; }
time_series() { step 'menu Devices "Time series..."' 'Time series: OnInit.*' 'Places: told'; }

take() { import -silent -window root -crop "${w}x$h+$x+$y" +repage "$out/$1.png"; }
# nothing LINE : there has been no such line.
nothing() { ! find_line "$1" || give_up "'$1' came"; }
# look NAME PLACE : keeps a picture of the place.
look() { place "$2"; take "$1"; }
differs() { take now; ! compare -metric AE "$out/$1.png" "$out/now.png" null: 2>/dev/null; }
changed() { place "$2"; until_true "'$2' looks as it did ($1.png)" differs "$1"; }
unchanged() { place "$2"; until_true "'$2' does not look as it did ($1.png)" eval "! differs $1"; }

# ---- The session -----------------------------------------------------------------------------------------------------

openbox >"$out/openbox.log" 2>&1 &
host=$!
until_true "the window manager does not start" sh -c 'xdotool get_num_desktops >/dev/null 2>&1'
"$KX_WINE" "$build_root/mingw-release/bin/kxdevhost.exe" --log "Z:${log//\//\\}" >"$out/wine.log" 2>&1 &
host=$!
started=$SECONDS
until_true "the host writes no log" test -s "$log"
expect 'Nosepiece: OnInit.*' 'Microscope: .*' 'Places: told'
until_true "the window manager does not give the host the focus" \
  sh -c 'xdotool getactivewindow getwindowname 2>/dev/null | grep -q "Microscope panels"'

say "By keyboard alone"
step 'keys F6' 'Focus: Microscope/Nosepiece/10202'
step 'keys Right' 'Focus: Microscope/Nosepiece/10203'
step 'keys space' 'Nosepiece: OnPositionChangeRequest\(3\)' 'Status: Plan Apo 40x/0.95'
step 'keys Left' 'Focus: Microscope/Nosepiece/10202'
step 'keys space' 'Nosepiece: OnPositionChangeRequest\(2\)' 'Status: Plan Apo 20x/0.75'
# until_at FOCUS KEY : the key again and again, until the focus is there.
until_at() {
  local i
  for i in $(seq 20); do
    from_now
    xdotool key "$2"
    expect 'Focus: .*'
    [ "$(lines | grep '^Focus: ' | tail -n 1)" = "Focus: $1" ] && return
  done
  give_up "no $2 leads to '$1'"
}
until_at Microscope/Laser/1603 F6
until_at Microscope/Laser/10000 Tab
step 'keys 7' 'Focus: Microscope/Laser/0'
step 'keys Return' 'Laser: OnPowerChanged\(7\)'
until_at Microscope/Shutter/10200 F6
step 'keys space' 'Shutter: OnStateChangeRequest.*'
# To the Focus page and to a place on it.
step 'keys ctrl+shift+Tab' 'Focus: Focus/.*/0'
step 'keys 3 9 9 0 Return' '.*: OnMoveRequest\(3990\)'
step 'keys ctrl+Tab' 'Places: told'

say "Typing, Tab and arrows"
page 501
step 'click Stand/Camera/1001 80' 'Focus: Stand/Camera/1001'
step 'keys End BackSpace BackSpace 5 5 period 5' \
  'Camera: OnCommand id 1001 code 0x0300' 'Camera: OnCommand id 1001 code 0x0300'
step 'keys Tab' 'Camera: OnCommand id 1001 code 0x0200' 'Focus: Stand/Camera/1002' 'Status: Exposure time 55.5 ms'
step 'keys Down' 'Camera: OnCommand id 1002 code 0x0001' 'Status: Binning 2'
step 'keys Tab' 'Focus: Stand/Camera/1003'
changing Stand/Camera/1003 'keys space' 'Camera: OnCommand id 1003 code 0x0000' 'Status: Live image on'
changing Stand/Camera/1004 'keys Tab' 'Focus: Stand/Camera/1004'
step 'keys shift+Tab' 'Focus: Stand/Camera/1003'
unchanged before Stand/Camera/1004
keys Tab
step 'keys Return' 'Camera: OnCommand id 1004 code 0x0000' 'Status: Image taken'

say "Numbers that are safe"
page 500
power='Laser: OnPowerChanged.*' typed='Focus: Microscope/Laser/0'
# away : the focus leaves the field for the log's filter.
away() { step 'click Host/1701 80' 'Focus: Host/0'; }
from_now
begun=$mark
for typed_keys in '4 2 Escape' 'ctrl+a a b c' 'ctrl+a 5 0 0 Return'; do
  step 'click Microscope/Laser/10001#2' "$typed"
  keys $typed_keys
  away
done
mark=$begun
nothing "$power"
step 'click Microscope/Laser/10001#2' "$typed"
step 'keys ctrl+a 1 4 Return 6 Return' 'Laser: OnPowerChanged\(14\)' 'Laser: OnPowerChanged\(6\)'
step 'keys 1 comma 9 e 1 Return' 'Laser: OnPowerChanged\(20\)'
# Whatever has the focus.
changing 'Microscope/Laser/10000#2' 'keys F12' 'Host: All light is off'
step 'click "Microscope/Z drive/1263"' 'Focus: Microscope/Z drive/1263'
step 'keys ctrl+a 3 period 0 Return Return' 'Z drive: OnStepChanged\(3, 1\)'
step 'click "Microscope/Z drive/1263"' 'Focus: Microscope/Z drive/1263'
nothing 'Z drive: OnStepChanged.*'

say "Undo and redo"
objective='Microscope/Nosepiece/10204'
step "click $objective" 'Nosepiece: OnPositionChangeRequest\(4\)' 'Status: Plan Apo 60x/1.40 Oil'
step 'keys ctrl+z' 'Host: Undone: Objective 20x .* 60x' 'Status: Plan Apo 20x/0.75'
step 'keys ctrl+y' 'Host: Done again: Objective 20x .* 60x' 'Status: Plan Apo 60x/1.40 Oil'
# In a field they are its own.
step 'click Microscope/Laser/10001#2' "$typed"
step 'keys ctrl+a 1 4 Return 6 Return' 'Laser: OnPowerChanged\(14\)' 'Laser: OnPowerChanged\(6\)'
keys ctrl+z ctrl+z ctrl+y
before_keys=$mark
step 'click Host/500' 'Focus: Host/500'
mark=$before_keys
nothing 'Host: .*'
# Never more light: of what went up and down again the way up is undone.
step 'keys ctrl+z' 'Host: Left as it is, the light would rise: Laser 640 14 mW .* 6 mW'
step 'keys ctrl+z' 'Host: Undone: Laser 640 0 mW .* 6 mW'
step 'keys ctrl+y' 'Host: Left as it is, the light would rise: .*'
step 'menu Edit' 'Place: Menu/Undo: Objective 20x .* 60x.*'
keys Escape Escape

say "The ends of a Z series"
grips='Microscope/Z drive/1256' top='Microscope/Z drive/1260' told='Z drive: OnZStackChanged\(3\)'
look top "$top"
step 'pull "$grips" 12 30' "$told"
changed top "$top"
step 'keys Escape' "$told"
unchanged top "$top"
xdotool mouseup 1
changing "$top" 'pull "$grips" 12 30' "$told"
xdotool mouseup 1
look dragged "$top"
step 'keys Down' "$told"
changed dragged "$top"
step 'keys Down Prior' "$told" "$told"
step 'keys Escape' "$told"
unchanged dragged "$top"
step 'keys Down Prior' "$told" "$told"
# As one step each, and none of what was given back.
step 'keys ctrl+z' 'Host: Undone: Z series .*'
unchanged dragged "$top"
step 'keys ctrl+z' 'Host: Undone: Z series .*'
unchanged top "$top"
mark=0
nothing 'Z drive: OnMoveZRequest.*'

say "A modal dialog"
changing Host time_series
click Dialog/1301 80
step 'keys End 2' 'Time series: OnCommand id 1301 code 0x0300'
step 'click Dialog/1' 'Time series: OnCommand id 1 code 0x0000' 'Time series: OnDestroy' \
  "Status: Series of ${KX_E2E_BREAK:+9}102 images every 5 s planned"
time_series
step 'keys F12' 'Host: All light is off'
step 'keys Escape' 'Time series: OnCommand id 2 code 0x0000' 'Time series: OnDestroy' 'Status: Series cancelled'

say "Wheel and drag on the page of the controls"
page 502
changing Controls/Sliders/1520 'wheel_up Controls/Sliders/1520' 'Exposure: OnHPotDragDrop'
look interval Controls/Sliders/1527
changing Controls/Sliders/1522 'drag Controls/Sliders/1522 30 80' \
  'Interval: OnHPotChange\(.*\)' 'Interval: OnHPotDragDrop'
# A drag is undone as a whole.
step 'keys ctrl+z' 'Host: Undone: Interval 30 s .*'
unchanged interval Controls/Sliders/1527
look gain Controls/Sliders/1521
changing Controls/Sliders/1527 'keys Right' 'Interval: OnHPotDragDrop'
unchanged gain Controls/Sliders/1521

say "The nosepiece"
page 503
changing Optical\ path/Nosepiece/10204 'click "Optical path/Nosepiece/10204"' \
  'Nosepiece: OnPositionChangeRequest\(4\)' 'Status: The nosepiece turns' 'Status: Plan Apo 60x/1.40 Oil'

say "A setup by mouse alone, and by keys alone"
gear='Optical path/Nosepiece/10500' changed='Nosepiece: setup of position [0-9]+: .* -> .*'
step 'click "$gear"' 'Nosepiece: OnSetupRequest\(\)' 'Focus: Dialog/.*' 'Places: told'
click Dialog/2301
look before Dialog/2301
click Dialog/2307 20
changed before Dialog/2301
step 'click Dialog/1' "$changed" "Focus: $gear" 'Status: The objectives have been changed'
step 'keys ctrl+z' 'Host: Undone: Objectives .*'
step 'keys Right' 'Focus: Optical path/Nosepiece/10200'
step 'keys Left' "Focus: $gear"
step 'keys Return' 'Nosepiece: OnSetupRequest\(\)' 'Focus: Dialog/.*' 'Places: told'
keys Down alt+f
step 'keys w a t e r Down' 'Focus: Dialog/10000'
step 'keys End Return' 'Nosepiece: setup of position 1: .* -> .* Water' 'Status: The objectives have been changed'
step 'keys ctrl+z' 'Host: Undone: Objectives 2: .*'

say "A day with lasers"
page 507
engine='Lasers/Laser engine'
changing "$engine/10203" "click '$engine/10301'" 'Laser engine: OnSubsetChangeRequest\(1, 1\)'
# From the third row on, after the field and the button of the link.
row=4
for line in 2 3 0; do
  click "$engine/10200#$row"
  step 'keys ctrl+a 2 0 Return' "Laser engine: OnLinePowerChangeRequest\($line, 20\)"
  step "click '$engine/10202#$row'" "Laser engine: OnLineStateChangeRequest\($line, 1\)"
  row=$((row + 1))
done
changing "$engine/10303" "click '$engine/10402'" 'Laser engine: OnSoloRequest\(2\)'
changing "$engine/10203" "click '$engine/1607'" "Focus: $engine/1607"
step "click '$engine/10201'" 'Laser engine: OnAllOffRequest'
mark=0
nothing 'Laser engine: OnLineStateChangeRequest\(.*, 0\)'
# The way up is left, the way down is gone.
for light in 'Green 561 nm on .* off' 'Red 640 nm on .* off'; do
  step 'keys ctrl+z' "Host: Left as it is, the light would rise: $light"
done

say "A focus drive within limits"
drive='Focus/Focus' moves='Focus: OnMoveRequest' sets='Focus: OnLimitChangeRequest'
# steady : the digits stand still.
steady_now() { place "$drive/10210"; h=$((h / 2)); take steady; take now; take now; ! differs steady; }
steady() { until_true "the drive does not stand still" steady_now; }
# run_and_return HOLD LET_GO ESCAPE RETURN : up to the upper limit and not beyond, away from the sample and back.
run_and_return() {
  step "$1" "$moves\(4025\)"
  $2
  mark=0
  nothing "$moves\((402[6-9]|40[3-9]).*\)"
  steady
  step "$3" "$moves\(4000\)"
  steady
  step "$4" "$moves\(4025\)"
  steady
}
page 508
page 509
click "$drive/10200"
step 'keys 4 0 0 0 Return' "$moves\(4000\)"
steady
step "click '$drive/10229'" "$sets\(lower, 4000\)"
click "$drive/10203"
step 'keys 4 0 2 5 Return' "$sets\(upper, 4025\)"
# The ends of the planned series are brought within them.
look beyond "$drive/10101"
page 508
ends='Z series/Z series'
changing "$ends/1262" "pull '$ends/1256' 88 40" 'Z series: OnZStackChanged\(3\)'
xdotool mouseup 1
page 509
changed beyond "$drive/10101"
run_and_return "point '$drive/10223'; from_now; xdotool mousedown 1" 'xdotool mouseup 1' \
  "click '$drive/10225'" "click '$drive/10226'"
step "click '$drive/10228'" "$sets\(upper, inf\)"
step "click '$drive/10230'" "$sets\(lower, inf\)"

say "The same by keys"
page 508
click "$ends/1267"
step 'keys Tab' "Focus: $ends/1256"
changing "$ends/1262" 'keys Right Up' 'Z series: OnZStackChanged\(3\)'
step 'keys ctrl+z' 'Host: Undone: Z series .*'
page 509
step "click '$drive/10203'" "Focus: $drive/0"
step 'keys 4 0 2 5 Return' "$sets\(upper, 4025\)"
step 'keys 4 0 0 0 Return' "$sets\(lower, 4000\)"
click "$drive/10200"
step 'keys 4 0 0 0 Return' "$moves\(4000\)"
steady
# The focus is in the window inside of the button.
step 'keys shift+Tab' "Focus: $drive/10200"
run_and_return 'from_now; xdotool keydown space' 'xdotool keyup space' 'keys Tab Tab Tab Tab space' 'keys Tab space'

say "The window manager closes the window"
step 'keys alt+F4' 'Stand: OnDestroy' 'Camera: OnDestroy'
wait $host || give_up "the host has ended with $?"
say "The host was used from outside for $((SECONDS - started)) s"
