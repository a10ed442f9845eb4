#!/usr/bin/env bash
# The player's files survive a shutdown cut short. Each round starts the
# game, changes con_red in the console (so the settings file differs every
# round), checks that both files already hold their new content (a setting
# is written when it changes, the start-up score when it is recorded), asks
# the game to quit, and sends SIGKILL at a random moment between the request
# and the end of a normal shutdown, which writes both files once more. Then
# data/prefs.cfg and data/stats.cfg must each still be exactly the new file:
# never empty, cut short, the old one or a temporary file in its place.
#
# Rounds alternate the two ways a player ends the game: the console's
# `quit`, and SIGTERM, which SDL turns into the quit event that closing the
# window sends (xdotool cannot close the window without breaking the X
# connection under the game). The first four rounds end unkilled and time
# each way; the kills then fall anywhere from the request to a little after
# an orderly shutdown has ended.
#
# The new files are known in advance: prefs.cfg is the old one with the new
# con_red, and stats.cfg the old table plus the "0 0" that each start adds
# (r_highscore starts as "0", so the first level records a score of 0 under
# the name "0"), best first, at most 20 lines.
#
# KILL_ROUNDS (20) killed rounds, fewer when KILL_SECONDS (60) run out first
# (a sanitizer build starts slowly); KILL_SEED repeats a run's delays.
set -u
GAME_DIR=${1:?usage: shutdown_kill.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
data=$work/game/data
prefs=$data/prefs.cfg
stats=$data/stats.cfg

seed=${KILL_SEED:-$(date +%s)}
RANDOM=$seed
kill_rounds=${KILL_ROUNDS:-20}
budget=${KILL_SECONDS:-60}
echo "seed $seed (KILL_SEED=$seed repeats the delays)"

printf '%s\n' 'showfps 0' 'fullscreen 0' 'volume 0.7' 'brightness 1' 'screenwidth 800' 'screenheight 600' \
    'screenbpp 32' 'con_red 0' 'con_green 0' 'con_blue 0' 'con_alpha 0.9' 'r_blur 0' 'r_blurpower 25' \
    'r_blurzoom 0.02' 'r_particles 1' 'r_maxfps 60' > "$prefs"
planted_stats > "$stats"
# Left behind by an earlier cut-short save: never to be read as the real file.
echo garbage > "$prefs.tmp"
echo garbage > "$stats.tmp"

send() { xdotool key --delay 30 "$@" 2> /dev/null; }
# A line typed into the console, Return a moment after the text.
send_line() { send $(text_keys "$1"); sleep 0.15; send Return; sleep 0.1; }
now_ms() { echo $(($(date +%s%N) / 1000000)); }
# A pause of $1 ms without starting a process: the shutdown lasts only tens
# of milliseconds, about what starting `sleep` can take on a busy machine.
mkfifo "$work/never"
exec {never}<> "$work/never"
snooze() {
    local secs
    printf -v secs '%d.%03d' $(($1 / 1000)) $(($1 % 1000))
    read -r -t "$secs" -u "$never" _
}

# The quit request: the Return of the typed `quit` (the text goes first),
# or SIGTERM.
prepare_quit() { [ "$1" = console ] && { send q u i t; sleep 0.15; }; }
request_quit() {
    if [ "$1" = console ]; then send Return; else kill -TERM "$pid"; fi
}

# run_round N WAY DELAY_MS: one start and quit (WAY console or term); an
# empty DELAY_MS lets it end by itself and sets $shutdown_ms. Sets $outcome
# to during (a temporary file of the shutdown's save left), outside (killed
# before or after it wrote), exited or bad; counts violations.
violations=0
round=0
run_round() {
    local n=$1 way=$2 delay=$3 value="0.$1" ok t0 killer=
    cp "$prefs" "$work/old_prefs"
    cp "$stats" "$work/old_stats"
    sed "s/^con_red .*/con_red $value/" "$work/old_prefs" > "$work/new_prefs"
    { cat "$work/old_stats"; echo "0 0"; } | sort -s -t' ' -k1,1nr | head -n 20 > "$work/new_stats"

    start_game
    # Logged by the game's initialisation once the start-up score is in.
    wait_log "lvl1.xml world loaded!" 60
    rm -f "$work/game/dump.txt"
    send grave
    # The change must have arrived before the quit, or the new file is not
    # the one predicted: the console's own echo of it is dumped and read.
    ok=
    for _ in 1 2 3; do
        send_line "con_red $value"
        send_line dump
        for _ in $(seq 1 20); do
            grep -qxF "cvar \"con_red\" has been set to $value" "$work/game/dump.txt" 2> /dev/null && { ok=1; break; }
            sleep 0.1
        done
        [ -n "$ok" ] && break
    done
    [ -n "$ok" ] || fail "round $n: con_red $value typed three times did not reach the console"
    same "$prefs" "$work/new_prefs" || fail "round $n: the setting was not saved when it changed"
    same "$stats" "$work/new_stats" || fail "round $n: the start-up score was not saved when it was recorded"

    prepare_quit "$way"
    touch "$work/asked"
    if [ -n "$delay" ]; then
        # The killer is started first: xdotool itself takes a while to
        # deliver the Return, and the kill may land before it arrives.
        # Bash reports a job killed by a signal on standard error at a later
        # moment of its own choosing: the report is expected here.
        exec {stderr}>&2 2> /dev/null
        (snooze "$delay"; kill -KILL "$pid") &
        killer=$!
        request_quit "$way"
        wait "$pid"
        status=$?
        wait "$killer"
        :
        exec 2>&$stderr {stderr}>&-
    else
        t0=$(now_ms)
        request_quit "$way"
        wait "$pid"
        status=$?
        shutdown_ms=$(($(now_ms) - t0))
    fi
    pid=

    # Each file: the complete new one, or a violation.
    local p=new s=new temps
    cmp -s "$prefs" "$work/new_prefs" || p=bad
    cmp -s "$stats" "$work/new_stats" || s=bad
    temps=$(find "$data" -maxdepth 1 -name '*.tmp' -newer "$work/asked" -printf '%f ')

    if [ "$p" = bad ] || [ "$s" = bad ]; then
        outcome=bad
        echo "VIOLATION round $n (status $status): prefs.cfg $p, stats.cfg $s"
        # The files as they are, then what a whole save writes; "$" ends a line.
        [ "$p" = bad ] && { echo "-- prefs.cfg:"; cat -A "$prefs"; echo; echo "-- new:"; cat -A "$work/new_prefs"; }
        [ "$s" = bad ] && { echo "-- stats.cfg:"; cat -A "$stats"; echo; echo "-- new:"; cat -A "$work/new_stats"; }
    elif [ "$status" -eq 0 ]; then
        if [ -z "$temps" ]; then outcome=exited
        else outcome=bad; echo "VIOLATION round $n: an orderly exit left $temps"; fi
    elif [ "$status" -ne 137 ]; then
        outcome=bad
        echo "VIOLATION round $n: exit status $status (neither 0 nor SIGKILL's 137)"
    elif [ -n "$temps" ]; then outcome=during
    else outcome=outside; fi
    [ "$outcome" = bad ] && violations=$((violations + 1))

    local when="ended by itself $shutdown_ms ms after"
    [ -n "$delay" ] && when="killed $delay ms after"
    printf 'round %2d: %-7s %-7s status %3d, %s the request, prefs.cfg %s, stats.cfg %s%s\n' "$n" "$outcome" \
        "$way" "$status" "$when" "$p" "$s" "${temps:+, temp files left: $temps}"
}

# Unkilled rounds: the planted temp files must not have been read, and the
# shorter of each way's two shutdowns bounds its random delays (the longer
# one is more likely a busy machine's pause than the game's own time).
declare -A took=([console]="" [term]="") limit
for way in console term console term; do
    round=$((round + 1))
    run_round "$round" "$way" ""
    [ "$outcome" = exited ] || fail "an orderly quit did not leave the predicted files"
    took[$way]+="$shutdown_ms "
done
for way in console term; do
    read -r a b <<< "${took[$way]}"
    shortest=$((a < b ? a : b))
    limit[$way]=$((shortest * 5 / 4 + 2))
    echo "orderly shutdown by $way: $a and $b ms from the request to the exit;" \
        "kills fall 0 to ${limit[$way]} ms after the request"
done

declare -A count=([outside]=0 [during]=0 [exited]=0 [bad]=0)
start=$SECONDS
killed=0
while [ "$killed" -lt "$kill_rounds" ] && { [ "$killed" -lt 5 ] || [ $((SECONDS - start)) -lt "$budget" ]; }; do
    round=$((round + 1))
    killed=$((killed + 1))
    way=console
    [ $((round % 2)) -eq 0 ] && way=term
    run_round "$round" "$way" $(((RANDOM * 32768 + RANDOM) % (limit[$way] + 1)))
    count[$outcome]=$((count[$outcome] + 1))
done
echo "$killed kills: ${count[during]} while the shutdown wrote the files, ${count[outside]} before or after" \
    "it did, ${count[exited]} too late (the game had ended), ${count[bad]} violations"
[ "$violations" -eq 0 ] || fail "$violations rounds left a damaged or unexpected file"
echo "e2e shutdown_kill: ok"
