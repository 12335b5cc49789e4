#!/usr/bin/env bash
# Plays a whole session in a real window of an X server of its own, with keys and mouse, and checks what the
# program wrote. Usage: play.sh PROGRAM DRAG_SOURCE
#
# Nothing waits for a fixed time or trusts in one. Keys are sent when the window that they are for is active and
# has the keyboard; the mouse clicks when it is known to be over the window that is meant. The server hands both
# to the program in the order of sending, so a file that a save replaced tells that everything before it is done.
set -euo pipefail

program=$1 drag_source=$2
box=$(mktemp -d "${TMPDIR:-/tmp}/ninarix-e2e-XXXXXX")
programs=() servers=()
cleanup() {
    kill -KILL "${programs[@]}" 2>/dev/null || true
    kill "${servers[@]}" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$box"
}
trap cleanup EXIT
trap 'exit 1' INT TERM
trap 'printf "FAILED: line %s: %s\n" "$LINENO" "$BASH_COMMAND" >&2' ERR

export HOME=$box/home XDG_RUNTIME_DIR=$box/run XDG_CONFIG_HOME=$box/home/.config XDG_DATA_HOME=$box/home/.data
export XDG_STATE_HOME=$box/home/.state XDG_CACHE_HOME=$box/home/.cache LC_ALL=C.UTF-8
export QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=fusion QT_SCALE_FACTOR=1
# No session bus, and none started for the occasion either.
export DBUS_SESSION_BUS_ADDRESS=disabled:
unset WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME
mkdir -m 700 "$HOME" "$XDG_RUNTIME_DIR" "$box/app"
cp "$program" "$box/app/Ninarix"
settings=$box/app/Ninarix.ini puzzle=$HOME/puzzle.nx3 branch=$HOME/branch.nx3
printf '[Options]\r\nNoSplash=1\r\n' >"$settings"

# ---- Waiting, within a bound.
fail() {
    printf 'FAILED: line %s: %s\nactive window %s, focus %s, main window %s; windows in sight:\n' \
        "${BASH_LINENO[-2]}" "$*" "$(xdotool getactivewindow 2>&1)" "$(xdotool getwindowfocus 2>&1)" "$main" >&2
    xdotool search --onlyvisible --name . getwindowname %@ >&2
    exit 1
}
mkfifo "$box/never"
exec 3<>"$box/never"
until_true() { # DESCRIPTION COMMAND...
    local end=$((SECONDS + 30))
    until "${@:2}"; do
        [ "$SECONDS" -lt "$end" ] || fail "$1"
        read -r -t 0.02 <&3 || true
    done
}
gone() { ! kill -0 "$1" 2>/dev/null; }

# ---- Windows, told apart by their number: the main window and a message box can have the same title.
main='' last='' front=''
is_front() { # TITLE: is a window of this title active, and does it have the keyboard?
    front=$(xdotool getactivewindow 2>/dev/null) && [ "$(xdotool getwindowfocus 2>/dev/null)" = "$front" ] &&
        [ "$(xdotool getwindowname "$front" 2>/dev/null)" = "$1" ]
}
main_is_front() { is_front "$1" && [ "$front" = "${main:=$front}" ]; }
another_is_front() { is_front "$1" && [ "$front" != "$main" ] && [ "$front" != "$last" ] && last=$front; }
key() { [ $# -eq 0 ] || xdotool key --delay 6 "$@"; }
main() { # TITLE KEY...: to the main window, once it is in front
    until_true "the main window is '$1'" main_is_front "$1"
    key "${@:2}"
}
answer() { # KEY...: to a message box that was not there before
    until_true 'a message box asks' another_is_front Ninarix
    key "$@"
}
repeat() { # TIMES KEY
    local i keys=()
    for ((i = 0; i < $1; i++)); do keys+=("$2"); done
    key "${keys[@]}"
}
over() { # WINDOW X Y: moves the mouse there, seen from the window's corner; is it there?
    local X Y place
    place=$(xdotool getwindowgeometry --shell "$1" 2>/dev/null | grep '^[XY]=') || return 1
    eval "$place"
    place=("$((X + $2))" "$((Y + $3))")
    xdotool mousemove "${place[@]}"
    eval "$(xdotool getmouselocation --shell | grep '^[XY]=')"
    [ "$X $Y" = "${place[*]}" ]
}
click() { # X Y in the main window, which is in front
    until_true "the mouse is at $1 $2" over "$main" "$1" "$2"
    xdotool click 1
}
# The middle of a cell, of a palette button, in the window's first size.
click_cell() { # ROW COLUMN KEY...
    click $((40 + 73 * ($2 - 1))) $((122 + 64 * ($1 - 1)))
    key "${@:3}"
}
click_value() { click 710 $((121 + 56 * $1)); }
click_mask() { click 779 $((121 + 56 * $1)); }

# ---- Files.
records() { tr -d '\r' <"$1" | sed -n 's/^\([0-9]*\)=\(.*\)$/\1 \2/p' | sort -n | cut -d' ' -f2; }
fields() { records "$1" | cut -d'|' -f"$2" | tr -d '\n'; }
expect() { [ "$2" = "$3" ] || fail "$1: '$2' instead of '$3'"; }
expect_values() { expect 'values' "$(fields "$1" 1)" "$2"; }
expect_record() { expect "record $2" "$(records "$1" | sed -n "$2p")" "$3"; }
expect_same() { cmp "$1" "$2" || fail "$2 has changed"; }
setting() { tr -d '\r' <"$settings" | sed -n "/^\[$1\]/,/^\[/s/^$2=//p"; }
setting_is() { [ "$(setting Options "$1")" = "$2" ]; }
replaced() { [ "$(stat -c '%i %y' "$1")" != "$2" ]; }
save() { # FILE of the active grid
    local old
    old=$(stat -c '%i %y' "$1")
    key ctrl+s
    until_true "$1 is replaced" replaced "$1" "$old"
}
save_as() { # NAME in the home folder: a whole path would open a list of proposals
    key ctrl+shift+s
    until_true 'the file dialog opens' another_is_front 'Enregistrer sous'
    xdotool type --delay 6 "$1.nx3"
    key Return
    main "Ninarix - $1"
}

# ---- The X server repeats no key by itself and does not start anew when its only client leaves, which would throw
# out who is just connecting. The window manager grabs neither keys nor mouse (it hands on late what it grabs) and
# draws no frames (which xdotool's geometry counts twice).
setpriv --pdeathsig TERM Xvfb -displayfd 4 -screen 0 1366x768x24 -nolisten tcp -r -noreset 4>"$box/display" \
    2>"$box/x.log" &
servers+=($!)
until_true 'the X server starts' test -s "$box/display"
DISPLAY=:$(tr -d '[:space:]' <"$box/display")
export DISPLAY
printf '%s' '<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard/><mouse/><menu/>' \
    '<theme><keepBorder>no</keepBorder></theme><applications><application class="*"><decor>no</decor>' \
    '</application></applications></openbox_config>' >"$box/openbox.xml"
openbox --sm-disable --config-file "$box/openbox.xml" >"$box/wm.log" 2>&1 &
servers+=($!)
manages() { xdotool get_num_desktops >/dev/null 2>&1; }
until_true 'the window manager runs' manages

start() { # ARGUMENT...
    main=
    "$box/app/Ninarix" "$@" 3>&- &
    app=$!
    programs+=("$app")
}
ended() {
    until_true 'the program ends' gone "$app"
    wait "$app" || fail "the program ended with $?"
}

# ---- Type a puzzle in, row by row, there and back.
givens=530070000600195000098000060800060003400803001700020006060000280000419005000080079
solution=534678912672195348198342567859761423426853791713924856961537284287419635345286179
keys=() arrows=(Right Left)
for row in {0..8}; do
    for step in {0..8}; do
        digit=${givens:row * 9 + (row % 2 ? 8 - step : step):1}
        [ "$digit" = 0 ] || keys+=("$digit")
        keys+=("${arrows[row % 2]}")
    done
    keys[-1]=Down
done
start
main Ninarix ctrl+n
main 'Ninarix - Grille1' "${keys[@]}"
save_as puzzle
expect_values "$puzzle" "$givens"
expect 'locks' "$(fields "$puzzle" 2)" "${givens//[1-9]/1}"

# ---- Play: keyboard, palette, mouse; exclude candidates.
key ctrl+i
click_cell 1 3 4
click_cell 2 2
click_value 7
click_cell 1 4
click_mask 2
click_cell 9 1
click_mask 1
click_mask 3
save "$puzzle"
expect_record "$puzzle" 3 '4|0|0'
expect_record "$puzzle" 4 '0|0|4'
expect_record "$puzzle" 11 '7|0|0'
expect_record "$puzzle" 73 '0|0|10'
cp "$puzzle" "$box/played.nx3"

# ---- A given cannot be changed, an impossible digit not be entered.
click_cell 1 1 1 Delete
click_cell 1 6 5
save "$puzzle"
expect_same "$box/played.nx3" "$puzzle"

# ---- Undo everything, redo everything; each says when nothing is left.
digits=${givens//0/}
changes=$((${#digits} + 5))
repeat "$changes" ctrl+z
save "$puzzle"
expect_values "$puzzle" "${givens//[1-9]/0}"
key ctrl+z
answer Return
main 'Ninarix - puzzle'
repeat "$changes" ctrl+y
save "$puzzle"
expect_same "$box/played.nx3" "$puzzle"
key ctrl+y
answer Return

# ---- Candidates hidden: any digit is taken. Candidates by hand: the setting is kept.
main 'Ninarix - puzzle' ctrl+h
until_true 'hidden candidates are kept as a setting' setting_is GridHelpNone 1
click_cell 1 6 5
save "$puzzle"
expect_record "$puzzle" 6 '5|0|0'
key ctrl+z ctrl+h ctrl+m
until_true 'candidates by hand are kept as a setting' setting_is NoAutoMasks 1
key ctrl+m
until_true 'candidates are computed again' setting_is NoAutoMasks 0
setting_is GridHelpNone 0 || fail 'candidates are shown again'
save "$puzzle"
expect_same "$box/played.nx3" "$puzzle"

# ---- Are the answers right? Try a branch, reset it, solve it.
key F4
answer Return
main 'Ninarix - puzzle' ctrl+d
main 'Ninarix - puzzle (1)'
click_cell 5 5 5
save_as branch
expect_record "$branch" 41 '5|0|0'
expect_record "$puzzle" 41 '0|0|0'
key ctrl+r
answer Left Return
main 'Ninarix - branch'
save "$branch"
expect_values "$branch" "$givens"
key F9
answer Left Return
main 'Ninarix - branch'
save "$branch"
expect_values "$branch" "$solution"

# ---- Close with the save question, both ways; an unchanged grid closes without one.
click_cell 1 3 Delete ctrl+w
answer Escape
main 'Ninarix - branch' ctrl+w
answer alt+o
main 'Ninarix - puzzle' ctrl+w
expect_record "$branch" 3 '0|0|0'

# ---- Open again from the recent files: the last entry of the list is the puzzle.
main Ninarix alt+f Up Up Return
main 'Ninarix - puzzle' ctrl+w
main Ninarix

# ---- Drop two files at once; the button is released when the program has said that it takes them.
"$drag_source" "$puzzle" "$branch" >"$box/drag.log" 2>&1 3>&- &
source_pid=$!
programs+=("$source_pid")
source_shows() { source_window=$(xdotool search --onlyvisible --name '^drag source$' 2>/dev/null); }
until_true 'the drag source shows' source_shows
until_true 'the mouse is over the drag source' over "$source_window" 100 100
xdotool mousedown 1
step=0
accepted() { # by what is below the mouse, which moves on
    step=$(((step + 1) % 20))
    xdotool mousemove $((700 - 5 * step)) $((300 + 5 * step))
    grep -q accepted "$box/drag.log"
}
until_true 'the program takes the dragged files' accepted
xdotool mouseup 1
main_is_named() { [ "$(xdotool getwindowname "$main")" = "$1" ]; }
until_true 'both dropped files are open' main_is_named 'Ninarix - branch'
kill "$source_pid"
until_true 'the drag source ends' gone "$source_pid"
xdotool windowactivate "$main"
main 'Ninarix - branch' ctrl+w
main 'Ninarix - puzzle'

# ---- Quit with three modified grids, Cancel at the second question: all three stay and ask again.
click_cell 1 3 Delete 4 ctrl+n
main 'Ninarix - Grille2' 9 ctrl+n
main 'Ninarix - Grille3' 8 ctrl+q
answer alt+n
answer Escape
main 'Ninarix - Grille2' ctrl+q
answer alt+n
answer alt+n
answer alt+n
ended
expect 'the first recent file' "$(setting MRU 1)" "$puzzle"
expect 'the second recent file' "$(setting MRU 2)" "$branch"
expect 'the third recent file: a dropped one is none' "$(setting MRU 3)" ''

# ---- A file on the command line.
start "$branch"
main 'Ninarix - branch' ctrl+q
ended
echo 'The whole session was played.'
