#!/usr/bin/env bash
# The game ended from outside still writes the player's files: SIGHUP (the
# terminal it was started from closed), SIGQUIT while its window is unmapped
# (the loop then sleeps in its wait for events, and must wake for it), and
# the X server killed under it.
#
# Each case plants known settings and scores, starts the game, waits until
# the start-up score is on the disk (every start records "0 0": r_highscore
# starts as "0"; a score is written as it is recorded), then removes both
# files and ends the game: both must come back exactly, the game ending with
# status 0 for the signals and with Xlib's 1 for the lost display.
set -u
GAME_DIR=${1:?usage: endings.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
data=$work/game/data
planted_prefs > "$work/prefs"
planted_stats > "$work/stats.old"
{ planted_stats; echo '0 0'; } > "$work/stats"

# end_game WAY STATUS
end_game() {
    local way=$1 t
    cp "$work/prefs" "$data/prefs.cfg"
    cp "$work/stats.old" "$data/stats.cfg"
    start_game 2> "$work/stderr"
    until_same "$data/stats.cfg" "$work/stats" 60 || { same "$data/stats.cfg" "$work/stats"; fail "$way: the start-up score was not saved"; }
    rm "$data/prefs.cfg" "$data/stats.cfg"
    case $way in
        SIGHUP) kill -HUP "$pid" ;;
        SIGQUIT)
            xdotool windowunmap --sync "$wid"
            # Asleep: no frames drawn, so the main thread's processor time stops.
            for _ in $(seq 1 40); do
                t=$(main_ticks)
                sleep 0.5
                [ "$(main_ticks)" = "$t" ] && break
            done
            [ "$(main_ticks)" = "$t" ] || fail "the game kept running with its window unmapped"
            kill -QUIT "$pid" ;;
        display) kill "$xvfb"; xvfb= ;;
    esac
    wait_exit 30
    [ "$status" -eq "$2" ] || { cat "$work/stderr"; fail "$way: exit status $status, expected $2"; }
    same "$data/prefs.cfg" "$work/prefs" || fail "$way: prefs.cfg not written at the end"
    same "$data/stats.cfg" "$work/stats" || fail "$way: stats.cfg not written at the end"
    echo "$way: status $status, both files written"
}

end_game SIGHUP 0
grep -qx 'Quitting on signal 1 (Hangup)' "$work/game/log.txt" || fail "SIGHUP: not logged"
end_game SIGQUIT 0
# Last: the X server does not come back.
end_game display 1
grep -q "^velthra: lost the connection to the X server :$display; saving and quitting$" "$work/stderr" ||
    { cat "$work/stderr"; fail "display: the loss was not reported on standard error"; }
tail -1 "$work/game/log.txt" | grep -qx "ERROR: lost the connection to the X server :$display" ||
    fail "display: the loss is not the last line of log.txt"
echo "e2e endings: ok"
