# Shared by the end-to-end scripts: a private copy of the runnable folder,
# the game started in it, its window found, and input sent the way a player
# gives it (xdotool on the X server, real key and button events).
# Needs Xvfb, xdotool and OpenAL on its null backend.

fail() { echo "FAIL: $*"; exit 1; }
export ALSOFT_DRIVERS=${ALSOFT_DRIVERS:-null}
# In a sanitizer build the game's leaks are not checked at exit: SDL_Quit has
# unloaded the GL driver by then, so its one-time allocations show up from an
# unknown module that no suppression can name. The test binary checks leaks.
export ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0

work=$(mktemp -d)
pid=
wid=
xvfb=
cleanup() {
    [ -n "$pid" ] && kill -KILL "$pid" 2>/dev/null
    [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT

# Each script has an X server of its own: its own pointer, keyboard focus
# and window list, so ctest can run two scripts at once without one
# clicking into the other's game. Xvfb picks a free display itself and
# writes its number once it accepts clients. No access control: only local
# connections, and userdir.sh's second user must be able to connect too.
mkfifo "$work/xready"
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3> "$work/xready" 2> "$work/xvfb.log" &
xvfb=$!
read -r -t 30 display < "$work/xready" || fail "Xvfb did not start: $(cat "$work/xvfb.log")"
export DISPLAY=:$display
unset XAUTHORITY

# copy_game BUILD/game: a fresh folder, as on a first run.
copy_game() {
    cp -r "$1" "$work/game"
    rm -f "$work/game/data/prefs.cfg" "$work/game/data/stats.cfg" "$work/game/log.txt" "$work/game/dump.txt"
}

# find_window: waits up to 30 s for the game's window and leaves it in $wid.
# Polled rather than `xdotool search --sync`: a window that goes while the
# search walks the window tree (the game's own, as SDL sets the video mode)
# kills xdotool with an X error; seen twice in one run on a loaded machine.
# search_window SEARCH ARGS: the same wait for any window, printed.
search_window() {
    local found
    for _ in $(seq 1 300); do
        found=$(xdotool search --onlyvisible "$@" 2> /dev/null | head -1)
        [ -n "$found" ] && { echo "$found"; return 0; }
        sleep 0.1
    done
    return 1
}
find_window() { wid=$(search_window --name '^VELTHRA$'); }

# start_game [ARGS]: starts it from another folder and waits for its window.
start_game() {
    (cd / && exec "$work/game/velthra" "$@") &
    pid=$!
    find_window || fail "no window titled VELTHRA appeared"
    # No window manager here gives the new window the keyboard, as a desktop does.
    xdotool windowfocus "$wid" 2> /dev/null
}

# wait_menu: loading (eleven frames) and three seconds of splash, however
# slow the frames are (a sanitizer build with the blur on may draw only a
# few a second). The menus have no sky behind them: the main menu shows when
# the title is lit at the top centre while the left of the screen is black
# (the splash is never black there, the loading screen has no title).
wait_menu() {
    local w h
    read -r w h <<< "$(xwininfo -id "$wid" | awk '/Width:/{w=$2} /Height:/{h=$2} END{print w, h}')"
    move $((w - 5)) $((h - 5))  # the drawn cursor stays out of both places
    for _ in $(seq 1 240); do
        alive || fail "the game died while loading"
        if import -window "$wid" "$work/wait.png" 2>/dev/null &&
           [ "$(convert "$work/wait.png" -crop 100x100+10+200 -format '%[fx:maxima]' info:)" = "0" ] &&
           [ "$(convert "$work/wait.png" -crop 80x60+$((w / 2 - 40))+10 -format '%[fx:maxima>0.5]' info:)" = "1" ]; then
            sleep 0.5
            return 0
        fi
        sleep 0.25
    done
    fail "the main menu did not show within a minute"
}

alive() { kill -0 "$pid" 2>/dev/null; }

# wait_exit SECONDS: leaves the exit status in $status.
wait_exit() {
    for _ in $(seq 1 $(($1 * 10))); do
        alive || break
        sleep 0.1
    done
    alive && fail "the game did not end within $1 s"
    wait "$pid"
    status=$?
    pid=
}

# Keys go through the X server's input path as a keyboard's do (XTEST, real
# time stamps), not as events sent to the window, which carry time 0: sent
# that way, a Return on the game-over screen was lost through SDL 2
# (sdl12-compat) in about half the runs after the other e2e tests (SDL 2 tells
# auto-repeat from the time stamps of a release and the next press).
keys() { xdotool key --delay 60 "$@"; sleep 0.3; }
# A console line: the text, then Return on its own a moment later (a Return
# sent right behind the last letter was seen dropped on sdl12-compat).
line() { keys "$@"; keys Return; }
# typed TEXT: lower-case letters and digits typed as a person types, ten keys
# a second (each held 50 ms, 50 ms between), a doubled letter pressed again
# after its release, and Return straight after the last one. None may be
# lost: unlike `keys` and `line`, nothing is spaced out for the library's sake.
typed() {
    local i args=()
    for ((i = 0; i < ${#1}; i++)); do
        args+=(keydown "${1:i:1}" sleep 0.05 keyup "${1:i:1}" sleep 0.05)
    done
    xdotool "${args[@]}" keydown Return sleep 0.05 keyup Return
    sleep 0.3
}
move() { xdotool mousemove --window "$wid" "$1" "$2"; sleep 0.2; }
click() { move "$1" "$2"; xdotool click 1; sleep 0.4; }
shot() { [ -n "${SHOTS:-}" ] && mkdir -p "$SHOTS" && import -window "$wid" "$SHOTS/$1.png"; return 0; }

# rss_kb: the game's resident memory in KiB (VmRSS); empty once it is gone.
rss_kb() { awk '/^VmRSS:/ { print $2 }' "/proc/$pid/status" 2>/dev/null; }

# text_keys TEXT: the key names that type TEXT: letters, digits, blank and
# the punctuation of cvar values (. - _ + / ?); other characters are left
# out. A key straight after itself gets a Shift between: the
# classic SDL takes a key pressed again at once for auto-repeat and drops it.
text_keys() {
    local text=$1 i c k last=
    for ((i = 0; i < ${#text}; i++)); do
        c=${text:i:1}
        case $c in
            [a-z0-9]) k=$c ;;
            [A-Z]) k=shift+${c,} ;;
            ' ') k=space ;;
            .) k=period ;;
            -) k=minus ;;
            _) k=shift+minus ;;
            +) k=shift+equal ;;
            /) k=slash ;;
            '?') k=shift+slash ;;
            *) continue ;;
        esac
        [ "$k" = "$last" ] && echo Shift_L
        echo "$k"
        last=$k
    done
}

# wait_log TEXT SECONDS: waits until log.txt holds a line with TEXT.
wait_log() {
    for _ in $(seq 1 $(($2 * 20))); do
        alive || fail "the game died before logging \"$1\""
        grep -qF -- "$1" "$work/game/log.txt" 2> /dev/null && return 0
        sleep 0.05
    done
    fail "log.txt did not show \"$1\" within $2 s"
}

# menu_rect SCREEN NAME WIDTH HEIGHT: "x y w h" of a menu item of the copied
# game at that window size, empty when there is none.
menu_rect() {
    python3 "$(dirname "${BASH_SOURCE[0]}")/menu_rects.py" "$work/game/data/scripts/menu.xml" "$3" "$4" |
        awk -v s="$1" -v n="$2" '$1 == s && $3 == n { print $4, $5, $6, $7; exit }'
}

# same FILE EXPECTED: FILE holds exactly what the file EXPECTED holds (a
# missing FILE never does); on a difference both are shown, "$" ending each line.
same() {
    cmp -s "$1" "$2" && return 0
    echo "-- ${1#"$work"/}:"; cat -A "$1" 2> /dev/null; echo "-- expected:"; cat -A "$2"
    return 1
}

# until_same FILE EXPECTED SECONDS: true as soon as FILE holds exactly what
# EXPECTED holds, false if it still does not at the deadline.
until_same() {
    for _ in $(seq 1 $(($3 * 20))); do
        cmp -s "$1" "$2" && return 0
        sleep 0.05
    done
    return 1
}

# planted_prefs: a whole settings file as the game writes it at 800 x 600,
# with values a fresh start does not have, so a file written from the
# defaults instead is seen.
planted_prefs() {
    printf '%s\n' 'showfps 1' 'fullscreen 0' 'volume 0.4' 'brightness 0.9' 'screenwidth 800' 'screenheight 600' \
        'screenbpp 32' 'con_red 0.25' 'con_green 0' 'con_blue 0' 'con_alpha 0.9' 'r_blur 0' 'r_blurpower 25' \
        'r_blurzoom 0.02' 'r_particles 0' 'r_maxfps 60'
}

# planted_stats: a scores file as the game writes it, two names, one with a blank.
planted_stats() { printf '%s\n' '1200 Bo' '900 Al Ri'; }

# main_ticks: processor time the game's main thread has used, in clock ticks.
main_ticks() { awk '{ print $14 + $15 }' "/proc/$pid/task/$pid/stat"; }
