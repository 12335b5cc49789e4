#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Plays a whole session in a real window of an X server of its own, with keys and mouse, and checks what the
# program wrote. Usage: play.sh PROGRAM
#
# Nothing waits for a fixed time or trusts in one. Keys are sent when the window that they are for is active and
# has the keyboard; the mouse clicks in the same breath as it moves to a place of a window that is in front. The
# server hands both to the program in the order of sending, so a file that a save replaced tells that everything
# before it is done.
set -euo pipefail

program=$1
box=$(mktemp -d "${TMPDIR:-/tmp}/ninarix-e2e-XXXXXX")
cleanup() {
    # shellcheck disable=SC2046
    kill $(jobs -p) 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$box"
}
trap cleanup EXIT
trap 'exit 1' INT TERM
trap 'printf "FAILED: line %s: %s\n" "$LINENO" "$BASH_COMMAND" >&2' ERR

export HOME=$box/home XDG_RUNTIME_DIR=$box/run LC_ALL=C.UTF-8 DISPLAY=''
# No session bus, and none started for the occasion either.
export DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=fusion QT_SCALE_FACTOR=1
unset XDG_{CONFIG,DATA,STATE,CACHE}_HOME WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME
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
until_true() { # DESCRIPTION COMMAND...
    local end=$((SECONDS + 30))
    until "${@:2}" >"$box/attempt.log" 2>&1; do
        [ "$SECONDS" -lt "$end" ] || fail "$1"
        sleep 0.02
    done
}
gone() { ! kill -0 "$1"; }

# ---- Windows, told apart by their number: the main window and a message box can have the same title.
main='' last='' front=''
is_front() { # TITLE: is a window of this title active, and does it have the keyboard?
    front=$(xdotool getactivewindow) && [ "$(xdotool getwindowfocus)" = "$front" ] &&
        [ "$(xdotool getwindowname "$front")" = "$1" ]
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
click() { xdotool mousemove --window "$main" "$@" click 1; } # X Y in the main window, which is in front
click_cell() { # ROW COLUMN KEY...: in the window's first size, with tabs and without
    click $((31 + 60 * ($2 - 1))) $((110 + 62 * ($1 - 1)))
    key "${@:3}"
}

# ---- Files.
records() { tr -d '\r' <"$1" | sed -n 's/^\([0-9]*\)=\(.*\)$/\1 \2/p' | sort -n | cut -d' ' -f2; }
fields() { records "$1" | cut -d'|' -f"$2" | tr -d '\n'; }
expect() { [ "$2" = "$3" ] || fail "$1: '$2' instead of '$3'"; }
replaced() { [ "$(stat -c '%i %y' "$1")" != "$old" ]; }
save() { # FILE of the active grid
    old=$(stat -c '%i %y' "$1")
    key ctrl+s
    until_true "$1 is replaced" replaced "$1"
}
save_as() { # NAME in the home folder: a whole path would open a list of proposals
    key ctrl+shift+s
    until_true 'the file dialog opens' another_is_front 'Enregistrer sous'
    xdotool type --delay 6 "$1.nx3"
    key Return
    main "Ninarix - $1"
}

# ---- The X server repeats no key by itself and does not start anew when its only client leaves, which would throw
# out who is just connecting. The window manager grabs neither keys nor mouse (it hands on late what it grabs).
setpriv --pdeathsig TERM Xvfb -displayfd 4 -screen 0 1366x768x24 -r -noreset 4>"$box/display" 2>"$box/x.log" &
until_true 'the X server starts' test -s "$box/display"
DISPLAY=:$(cat "$box/display")
printf '<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard/><mouse/></openbox_config>' >"$box/openbox.xml"
openbox --sm-disable --config-file "$box/openbox.xml" >"$box/wm.log" 2>&1 &
until_true 'the window manager runs' xdotool get_num_desktops

start() { # ARGUMENT...
    main=
    "$box/app/Ninarix" "$@" &
    app=$!
}
ended() {
    until_true 'the program ends' gone "$app"
    wait "$app" || fail "the program ended with $?"
}

# ---- A terminal is answered without a window.
DISPLAY=:none "$box/app/Ninarix" --version | grep -qx 'Ninarix [0-9.]*' || fail 'no version'
DISPLAY=:none "$box/app/Ninarix" --help | grep -q 'nx3' || fail 'no help'

# ---- Type a puzzle in, row by row; at the border an arrow does nothing.
givens=530070000600195000098000060800060003400803001700020006060000280000419005000080079
solution=534678912672195348198342567859761423426853791713924856961537284287419635345286179
keys=()
for cell in {0..80}; do
    [ "${givens:cell:1}" = 0 ] || keys+=("${givens:cell:1}")
    keys+=(Right)
    ((cell % 9 < 8)) || keys+=(Left Left Left Left Left Left Left Left Down)
done
start
main Ninarix ctrl+n
main 'Ninarix - Grille1' "${keys[@]}"
save_as puzzle
typed=$(records "$puzzle")
expect 'the typed values' "$(fields "$puzzle" 1)" "$givens"
expect 'their locks' "$(fields "$puzzle" 2)" "${givens//[1-9]/1}"

# ---- Play: keyboard, palette, mouse; exclude a candidate. Undo all of it.
key ctrl+i
click_cell 1 3 4
click_cell 2 2
click 610 484 # the value 7
click_cell 9 1
click 680 276 # the candidate 3
save "$puzzle"
expect 'played' "$(records "$puzzle" | sed -n '3p;11p;73p' | tr '\n' ' ')" '4|0|0 7|0|0 0|0|8 '
key ctrl+z ctrl+z ctrl+z
save "$puzzle"
expect 'undone' "$(records "$puzzle")" "$typed"

# ---- Play it through by the number row of a French keyboard, without Shift; the 1 is key 10. Exclude the last
# cell's own digit and readmit it. Undo all of it.
setxkbmap fr
keys=(ctrl+Home)
for cell in {0..80}; do
    [ "$cell" != 78 ] || keys+=(ctrl+10 ctrl+10)
    [ "${givens:cell:1}" != 0 ] || keys+=($((9 + ${solution:cell:1})))
    keys+=(Right)
    ((cell % 9 < 8)) || keys+=(Home Down)
done
key "${keys[@]}"
answer Return # well done
setxkbmap us
main 'Ninarix - puzzle'
save "$puzzle"
expect 'played through' "$(fields "$puzzle" 1)" "$solution"
# shellcheck disable=SC2046
key $(printf 'ctrl+z %.0s' {1..53})
save "$puzzle"
expect 'undone again' "$(records "$puzzle")" "$typed"

# ---- Solve a duplicate; the puzzle stays as it is.
key ctrl+d
main 'Ninarix - puzzle (1)'
save_as branch
key F9
answer Left Return
main 'Ninarix - branch'
save "$branch"
expect 'the solution' "$(fields "$branch" 1)" "$solution"
expect 'the puzzle' "$(records "$puzzle")" "$typed"

# ---- Close with the save question, both ways; an unchanged grid closes without one.
click_cell 1 3 Delete ctrl+w
answer Escape
main 'Ninarix - branch' ctrl+w
answer alt+o
main 'Ninarix - puzzle' ctrl+w
expect 'the changed record' "$(records "$branch" | sed -n 3p)" '0|0|0'

# ---- Open again from the recent files: the last entry of the list is the puzzle.
main Ninarix alt+f Up Up Return
main 'Ninarix - puzzle'

# ---- Quit with three modified grids, Cancel at the second question: all three stay and ask again.
click_cell 1 3 4 ctrl+n
main 'Ninarix - Grille2' 9 ctrl+n
main 'Ninarix - Grille3' 8 ctrl+q
answer alt+n
answer Escape
main 'Ninarix - Grille2' ctrl+q
answer alt+n
answer alt+n
answer alt+n
ended
tr -d '\r' <"$settings" | grep -qx "1=$puzzle" || fail 'the puzzle is not the first recent file'

# ---- A file on the command line. Beside the splash the keyboard is the grid's.
sed -i 's/NoSplash=1/NoSplash=0/' "$settings"
start "$branch"
until_true 'the splash is shown' xdotool search --onlyvisible --name '^Ninarix$'
main 'Ninarix - branch' ctrl+Home End Delete
xdotool search --onlyvisible --name '^Ninarix$' >"$box/splash" || fail 'the splash is gone too early to tell'
save "$branch"
expect 'deleted beside the splash' "$(records "$branch" | sed -n 9p)" '0|0|0'
until_true 'the splash goes' bash -c "! xdotool search --onlyvisible --name '^Ninarix$'"
sed -i 's/NoSplash=0/NoSplash=1/' "$settings"

# ---- Told to end with unsaved work, and later killed: the next start brings it back.
asks() { # a second window of the main window's title, which is younger, has the keyboard
    local both
    both=$(xdotool search --onlyvisible --name '^Ninarix$' | sort -n) && [ "$(wc -l <<<"$both")" -eq 2 ] &&
        is_front Ninarix && [ "$front" = "${both##*$'\n'}" ]
}
kept() { compgen -G "$HOME/.local/state/ninarix/recovery/*/1.nx3"; }
kept_anew() { # OLD: for a moment both are there, and a program that is killed then leaves both
    local now
    now=$(kept) && [ "$now" != "$1" ] && [ "$(wc -l <<<"$now")" -eq 1 ]
}
restart() { # and take what comes back
    local old
    old=$(kept)
    start
    until_true 'the start asks' asks
    key Return
    main 'Ninarix - branch'
    until_true 'it is kept anew' kept_anew "$old"
}
click_cell 1 3 4
until_true 'the grid is kept' kept
kill -TERM "$app"
ended
restart
kill -KILL "$app"
until_true 'the program is killed' gone "$app"
restart
save "$branch"
expect 'what came back' "$(records "$branch" | sed -n 3p)" '4|0|0'
main 'Ninarix - branch' ctrl+q
ended
if kept; then fail 'a recovery file is left'; fi
echo 'The whole session was played.'
