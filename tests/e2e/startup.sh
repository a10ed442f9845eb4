#!/usr/bin/env bash
# Starts the real game from a copy of its runnable folder, as a player would
# on a first run (no data/prefs.cfg), waits for its window, ends it the way a
# desktop session does (SIGTERM) and checks what it left on disk. A second
# run then checks that the saved settings are what the game starts with.
# Needs Xvfb and xdotool; OpenAL on its null backend.
set -u
GAME_DIR=${1:?usage: startup.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"

# Runs the game from another folder: it must find its own files.
# Prints the window's size; leaves the exit status in $status.
run_game() {
    start_game "$@"
    size=$(xwininfo -id "$wid" | awk '/Width:/{w=$2} /Height:/{h=$2} END{print w "x" h}')
    sleep 2  # let it draw frames and run the loading phases
    alive || fail "the game died while running"
    kill -TERM "$pid"
    wait_exit 30
}

run_game
[ "$status" -eq 0 ] || fail "exit status $status after SIGTERM (expected 0)"
[ "$size" = "800x600" ] || fail "window is $size, expected the packaged 800x600"

log="$work/game/log.txt"
[ -f "$log" ] || fail "no log.txt next to the executable"
head -4 "$log" > "$work/banner"
printf 'Console Initialized...\nVELTHRA V1.0.4\n\n - Initializing . . .\n' | diff - "$work/banner" \
    || fail "log.txt does not start with the banner"
grep -q ' -- initializing Open AL...' "$log" || fail "OpenAL start-up not logged"
! grep -q 'programming loop' "$log" || fail "loop tracing written without -vlog"

prefs="$work/game/data/prefs.cfg"
[ -f "$prefs" ] || fail "data/prefs.cfg was not written at exit"
names=$(cut -d' ' -f1 "$prefs" | tr '\n' ' ')
expected="showfps fullscreen volume brightness screenwidth screenheight screenbpp con_red con_green con_blue con_alpha r_blur r_blurpower r_blurzoom r_particles r_maxfps "
[ "$names" = "$expected" ] || fail "prefs.cfg holds [$names]"
[ "$(wc -l < "$prefs")" -eq 16 ] || fail "prefs.cfg is not 16 lines"
grep -qx 'fullscreen 0' "$prefs" || fail "fullscreen not saved as 0"
grep -qx 'screenwidth 800' "$prefs" || fail "screenwidth not saved"
grep -qx 'screenheight 600' "$prefs" || fail "screenheight not saved"
grep -qx 'r_particles 1' "$prefs" || fail "packaged particles setting lost"

# Second run: the player's settings, not the packaged ones, decide.
sed -i -e 's/^screenwidth .*/screenwidth 640/' -e 's/^screenheight .*/screenheight 480/' \
       -e 's/^volume .*/volume 0.25/' "$prefs"
run_game -vlog
[ "$status" -eq 0 ] || fail "second run: exit status $status"
[ "$size" = "640x480" ] || fail "second run: window is $size, expected 640x480 from prefs.cfg"
grep -qx 'volume 0.25' "$prefs" || fail "second run: the player's volume was lost"
grep -q ' --- in programming loop ' "$log" || fail "-vlog did not trace the loop"
# No sound device: the game says so in its log and ends with status 1,
# without touching the player's settings.
cp "$prefs" "$work/prefs.before"
(cd / && ALSOFT_DRIVERS=no-such-backend timeout 30 "$work/game/velthra")
status=$?
[ "$status" -eq 1 ] || fail "without OpenAL: exit status $status (expected 1)"
tail -1 "$log" | grep -qx 'FAILED TO INIT OPEN AL' || fail "without OpenAL: no failure line in log.txt"
cmp -s "$prefs" "$work/prefs.before" || fail "without OpenAL: settings were changed"
echo "e2e startup: ok"
