#!/usr/bin/env bash
# The player's files are written when they change, and a save that cannot
# be written is told, not passed over.
#
# The data folder starts full: a small tmpfs when the script may mount one
# (root), else with a folder where each temporary file would go. (A
# read-only data folder cannot stand in: the game would not run in it but in
# the player's own folder.) The start-up score (every start records "0 0":
# r_highscore starts as "0") and two settings typed into the console cannot
# be saved: the old files stay whole, the game goes on, and each file is
# told once, in one line on standard error, in log.txt and in the console
# (read back through `dump`). Then room is made, one more setting is typed,
# and the game is killed (SIGKILL: nothing of its shutdown runs): that
# setting must be on the disk.
set -u
GAME_DIR=${1:?usage: saving.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
data=$work/game/data
planted_prefs > "$work/prefs.old"
planted_stats > "$work/stats.old"
# expect_red VALUE: the planted settings with con_red VALUE, into $work/prefs.
expect_red() { sed "s/^con_red .*/con_red $1/" "$work/prefs.old" > "$work/prefs"; }

# set_red VALUE [saved|told|taken]: typed into the open console, again (at
# most three times) until the game has taken it: prefs.cfg is the expected
# file (saved, the default), log.txt tells the settings were not saved
# (told), or the console's echo of it is in a fresh dump.txt (taken).
set_red() {
    local until=${2:-saved}
    expect_red "$1"
    for _ in 1 2 3; do
        line $(text_keys "con_red $1")
        case $until in
            saved) until_same "$data/prefs.cfg" "$work/prefs" 2 && return 0 ;;
            told)
                for _ in $(seq 1 40); do grep -qxF -- "$told_settings" "$work/game/log.txt" && return 0; sleep 0.05; done ;;
            taken)
                rm -f "$work/game/dump.txt"
                line d u m p
                for _ in $(seq 1 40); do
                    grep -qxF "cvar \"con_red\" has been set to $1" "$work/game/dump.txt" 2> /dev/null && return 0
                    sleep 0.05
                done ;;
        esac
    done
    same "$data/prefs.cfg" "$work/prefs"
    fail "con_red $1 typed three times: not $until"
}

cp "$work/prefs.old" "$data/prefs.cfg"
cp "$work/stats.old" "$data/stats.cfg"
mv "$data" "$work/data.real"
mkdir "$data"
if mount -t tmpfs -o size=64k tmpfs "$data" 2> /dev/null; then
    mode="full disk" reason="No space left on device"
    trap '[ -n "$pid" ] && kill -KILL "$pid" 2> /dev/null && wait "$pid"; umount "$data" || umount -l "$data"; cleanup' EXIT
    for d in "$work"/data.real/*/; do ln -s "$d" "$data/$(basename "$d")"; done
    mv "$work"/data.real/*.cfg "$data/"
    cat /dev/zero > "$data/fill" 2> /dev/null
    make_room() { rm "$data/fill"; }
else
    rmdir "$data"
    mv "$work/data.real" "$data"
    mode="folder in the way" reason="Is a directory"
    mkdir "$data/prefs.cfg.tmp" "$data/stats.cfg.tmp"
    make_room() { rmdir "$data/prefs.cfg.tmp" "$data/stats.cfg.tmp"; }
fi
told_scores="WARNING: scores not saved to data/stats.cfg: $reason"
told_settings="WARNING: settings not saved to data/prefs.cfg: $reason"

start_game 2> "$work/stderr"
wait_log "$told_scores" 60
keys grave
set_red 0.5 told
# A second failure, told no more.
set_red 0.6 taken
alive || fail "$mode: the game died"
same "$data/prefs.cfg" "$work/prefs.old" || fail "$mode: prefs.cfg is not the old file"
same "$data/stats.cfg" "$work/stats.old" || fail "$mode: stats.cfg is not the old file"
# The game's own lines; the libraries under it may have their say too.
grep '^velthra:' "$work/stderr" > "$work/told"
printf 'velthra: %s\n' "$told_scores" "$told_settings" > "$work/told.expected"
same "$work/told" "$work/told.expected" ||
    fail "$mode: standard error did not tell each failure once"
[ "$(grep -cxF -e "$told_scores" -e "$told_settings" "$work/game/log.txt")" -eq 2 ] ||
    fail "$mode: log.txt did not tell each failure once"
grep -qxF "$told_settings" "$work/game/dump.txt" && grep -qxF "$told_scores" "$work/game/dump.txt" ||
    { cat "$work/game/dump.txt"; fail "$mode: the console did not show the failures"; }

make_room
set_red 0.7
kill -KILL "$pid"
wait "$pid"
status=$?
pid=
[ "$status" -eq 137 ] || fail "exit status $status after SIGKILL"
same "$data/prefs.cfg" "$work/prefs" || fail "$mode: killed, prefs.cfg lost the setting saved once there was room"
same "$data/stats.cfg" "$work/stats.old" || fail "$mode: killed, stats.cfg is not the old file"
[ -z "$(find "$data/" -maxdepth 1 -name '*.tmp')" ] || fail "$mode: temporary files left"
echo "$mode: told once per file, the old files kept, a setting saved once there was room, kept when killed"
echo "e2e saving: ok"
