#!/usr/bin/env bash
# Plays a whole session in a real window of an X server of its own, with keys and mouse, and checks what the
# program wrote. Usage: play.sh PROGRAM DRAG_SOURCE
#
# Nothing waits for a fixed time: every step waits, within a bound, for the window title or the file content
# that shows that it is done.
set -euo pipefail

program=$1
drag_source=$2
box=$(mktemp -d "${TMPDIR:-/tmp}/ninarix-e2e-XXXXXX")
pids=()
cleanup() {
    kill "${pids[@]}" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$box"
}
trap cleanup EXIT
trap 'printf "FAILED: line %s: %s\n" "$LINENO" "$BASH_COMMAND" >&2' ERR

export HOME=$box/home XDG_RUNTIME_DIR=$box/run XDG_CONFIG_HOME=$box/home/.config XDG_DATA_HOME=$box/home/.local
export QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=fusion QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8
# No session bus, and none started for the occasion either.
export DBUS_SESSION_BUS_ADDRESS=disabled:
unset WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME || true
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" "$box/app"
chmod 700 "$XDG_RUNTIME_DIR"
cp "$program" "$box/app/Ninarix"
settings=$box/app/Ninarix.ini
printf '[Options]\r\nNoSplash=1\r\n' >"$settings"

fail() {
    printf 'FAILED: %s\nactive window: %s\n' "$*" "$(active_title)" >&2
    exit 1
}

# until_true DESCRIPTION COMMAND...: within 15 seconds.
until_true() {
    local what=$1 end=$((SECONDS + 15))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || fail "$what"
        read -r -t 0.03 <>"$box/never" || true
    done
}
mkfifo "$box/never"

active_title() { xdotool getactivewindow getwindowname 2>/dev/null || true; }
title_is() { [ "$(active_title)" = "$1" ]; }
title() { until_true "the active window is '$1'" title_is "$1"; }
key() { xdotool key --delay 12 "$@"; }
gone() { ! kill -0 "$1" 2>/dev/null; }

# records FILE: the 81 records, one a line, by cell.
records() { tr -d '\r' <"$1" 2>/dev/null | sed -n 's/^\([0-9]*\)=\(.*\)$/\1 \2/p' | sort -n | cut -d' ' -f2; }
values() { records "$1" | cut -d'|' -f1 | tr -d '\n'; }
locks() { records "$1" | cut -d'|' -f2 | tr -d '\n'; }
record() { records "$1" | sed -n "$2p"; }
values_are() { [ "$(values "$1")" = "$2" ]; }
record_is() { [ "$(record "$1" "$2")" = "$3" ]; }
same() { cmp -s "$1" "$2"; }

start() {
    (cd "$box" && exec "$box/app/Ninarix" "$@") &
    app=$!
    pids+=("$app")
}

# X and Y of the active window. A window may go while it is asked about; then it is asked again.
locate() {
    local id place
    id=$(xdotool getactivewindow 2>/dev/null) && place=$(xdotool getwindowgeometry --shell "$id" 2>/dev/null) || return 1
    eval "$place"
}

# click X Y: relative to the main window's client area.
click() {
    until_true 'the active window has a place' locate
    xdotool mousemove $((X + $1)) $((Y + $2)) click 1
}
# The middle of a cell, of a palette button, in the window's first size.
click_cell() { click $((42 + 73 * ($2 - 1))) $((124 + 63 * ($1 - 1))); }
click_value() { click 710 $((124 + 56 * $1)); }
click_mask() { click 780 $((124 + 56 * $1)); }

save_as() { # PATH, the dialog is open
    title 'Enregistrer sous'
    xdotool type --delay 4 "$1"
    key Return
}

exec 3<>"$box/never"
Xvfb -displayfd 4 -screen 0 1366x768x24 -nolisten tcp 4>"$box/display" >"$box/x.log" 2>&1 &
pids+=($!)
until_true 'the X server starts' test -s "$box/display"
DISPLAY=:$(tr -d '[:space:]' <"$box/display")
export DISPLAY
openbox --sm-disable >"$box/wm.log" 2>&1 &
pids+=($!)
wm_runs() { xdotool get_num_desktops >/dev/null 2>&1; }
until_true 'the window manager runs' wm_runs

# ---- Type a puzzle in, row by row, there and back.
puzzle=530070000600195000098000060800060003400803001700020006060000280000419005000080079
solution=534678912672195348198342567859761423426853791713924856961537284287419635345286179
start
title Ninarix
key ctrl+n
title 'Ninarix - Grille1'
keys=()
for row in 0 1 2 3 4 5 6 7 8; do
    for step in 0 1 2 3 4 5 6 7 8; do
        column=$step
        [ $((row % 2)) -eq 0 ] || column=$((8 - step))
        digit=${puzzle:row * 9 + column:1}
        [ "$digit" = 0 ] || keys+=("$digit")
        if [ "$step" -lt 8 ]; then keys+=("$([ $((row % 2)) -eq 0 ] && echo Right || echo Left)"); fi
    done
    keys+=(Down)
done
key "${keys[@]}"
key ctrl+s
save_as "$box/puzzle.nx3"
title 'Ninarix - puzzle'
until_true 'the typed puzzle is saved' values_are "$box/puzzle.nx3" "$puzzle"
[ "$(locks "$box/puzzle.nx3")" = "${puzzle//[1-9]/1}" ] || fail 'typed values are givens'
givens=$(tr -d '0' <<<"$puzzle" | tr -d '\n' | wc -c)

# ---- Play: keyboard, palette, mouse; exclude candidates.
key ctrl+i
click_cell 1 3
key 4
click_cell 2 2
click_value 7
click_cell 1 4
click_mask 2
click_cell 9 1
click_mask 1
click_mask 3
key ctrl+s
until_true 'excluded candidates are saved' record_is "$box/puzzle.nx3" 73 '0|0|10'
record_is "$box/puzzle.nx3" 3 '4|0|0' || fail 'a value by keyboard'
record_is "$box/puzzle.nx3" 11 '7|0|0' || fail 'a value by palette'
record_is "$box/puzzle.nx3" 4 '0|0|4' || fail 'an exclusion by palette'
cp "$box/puzzle.nx3" "$box/played.nx3"

# ---- A given cannot be changed, an impossible digit not be entered.
click_cell 1 1
key 1 Delete
click_cell 1 6
key 5
key ctrl+s
until_true 'refused entries change nothing' same "$box/puzzle.nx3" "$box/played.nx3"

# ---- Undo everything, redo everything.
changes=$((givens + 5))
repeat() { local i list=(); for ((i = 0; i < $2; i++)); do list+=("$1"); done; key "${list[@]}"; }
repeat ctrl+z "$changes"
key ctrl+s
until_true 'everything is undone' values_are "$box/puzzle.nx3" "${puzzle//[1-9]/0}"
key ctrl+z
title Ninarix
key Return
title 'Ninarix - puzzle'
repeat ctrl+y "$changes"
key ctrl+s
until_true 'everything is done again' same "$box/puzzle.nx3" "$box/played.nx3"
key ctrl+y
title Ninarix
key Return
title 'Ninarix - puzzle'

# ---- Candidates hidden: any digit is taken. Candidates by hand: the setting is kept.
key ctrl+h
setting() { grep -q "^$1"$'\r' "$settings"; }
until_true 'hidden candidates are kept as a setting' setting GridHelpNone=1
click_cell 1 6
key 5 ctrl+s
until_true 'a digit that stands in the row' record_is "$box/puzzle.nx3" 6 '5|0|0'
key ctrl+z ctrl+h
until_true 'candidates are shown again' setting GridHelpNone=0
key ctrl+m
until_true 'candidates by hand' setting NoAutoMasks=1
key ctrl+m ctrl+s
until_true 'candidates are computed again' setting NoAutoMasks=0
until_true 'the detour left no trace' same "$box/puzzle.nx3" "$box/played.nx3"

# ---- Are the answers right?
key F4
title Ninarix
key Return
title 'Ninarix - puzzle'

# ---- Duplicate and try a branch.
key ctrl+d
title 'Ninarix - puzzle (1)'
click_cell 5 5
key 5 ctrl+s
save_as "$box/branch.nx3"
title 'Ninarix - branch'
until_true 'the branch has its own file' record_is "$box/branch.nx3" 41 '5|0|0'
record_is "$box/puzzle.nx3" 41 '0|0|0' || fail 'the branch changed the original'

# ---- Reset the branch, solve it.
key ctrl+r
title Ninarix
key Left Return
title 'Ninarix - branch'
key ctrl+s
until_true 'the reset keeps the givens only' values_are "$box/branch.nx3" "$puzzle"
key F9
title Ninarix
key Left Return
title 'Ninarix - branch'
key ctrl+s
until_true 'the solution' values_are "$box/branch.nx3" "$solution"

# ---- Close with the save question, both ways.
click_cell 1 3
key Delete ctrl+w
title Ninarix
key Escape
title 'Ninarix - branch'
key ctrl+w
title Ninarix
key alt+o
title 'Ninarix - puzzle'
until_true 'Yes saves' record_is "$box/branch.nx3" 3 '0|0|0'
key ctrl+w
until_true 'an unchanged grid closes without a question' title_is Ninarix

# ---- Open again from the recent files: the last entry of the list is the puzzle.
key alt+f Up Up Return
title 'Ninarix - puzzle'
key ctrl+w
title Ninarix

# ---- Drop two files at once; the button is released when the program has said that it takes them.
"$drag_source" "$box/puzzle.nx3" "$box/branch.nx3" >"$box/drag.log" 2>&1 &
source_pid=$!
pids+=("$source_pid")
title 'drag source'
until_true 'the drag source has a place' locate
xdotool mousemove $((X + 100)) $((Y + 100)) mousedown 1
step=0
accepted() {
    step=$(((step + 1) % 20))
    xdotool mousemove $((700 - 5 * step)) $((300 + 5 * step))
    grep -q accepted "$box/drag.log"
}
until_true 'the program takes the dragged files' accepted
xdotool mouseup 1
main_title() { xdotool search --onlyvisible --name "^$1\$" >/dev/null 2>&1; }
until_true 'both dropped files are open' main_title 'Ninarix - branch'
kill "$source_pid"
activate() {
    local ids
    ids=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null) && xdotool windowactivate "${ids%%$'\n'*}" 2>/dev/null
}
until_true 'the main window comes to the front' activate 'Ninarix - branch'
title 'Ninarix - branch'
key ctrl+w
title 'Ninarix - puzzle'

# ---- Quit with three modified grids, Cancel at the second question: all three stay.
click_cell 1 3
key Delete 4
key ctrl+n
title 'Ninarix - Grille2'
key 9
key ctrl+n
title 'Ninarix - Grille3'
key 8
last_box=
new_box() {
    local id
    id=$(xdotool getactivewindow 2>/dev/null) || return 1
    [ "$id" != "$last_box" ] && [ "$(xdotool getwindowname "$id" 2>/dev/null)" = Ninarix ] && last_box=$id
}
answer() { # KEY, to the next message box
    until_true 'another message box' new_box
    key "$1"
}
key ctrl+q
answer alt+n
answer Escape
title 'Ninarix - Grille2'
# Each of the three asks again, so none was closed.
key ctrl+q
answer alt+n
answer alt+n
answer alt+n
until_true 'the program ends' gone "$app"
wait "$app" || fail "the program ended with $?"
mru() { tr -d '\r' <"$settings" | sed -n '/^\[MRU\]/,/^\[/p' | sed -n "s/^$1=//p"; }
[ "$(mru 1)" = "$box/puzzle.nx3" ] || fail 'the first recent file'
[ "$(mru 2)" = "$box/branch.nx3" ] || fail 'the second recent file'
[ -z "$(mru 3)" ] || fail 'dropped files are no recent files'

# ---- A file on the command line.
start "$box/branch.nx3"
title 'Ninarix - branch'
key ctrl+q
until_true 'the program ends' gone "$app"
wait "$app" || fail "the program ended with $?"
echo 'The whole session was played.'
