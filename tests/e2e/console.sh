#!/usr/bin/env bash
# The console as a player uses it: backquote opens it, typed lines run as
# commands, `dump` writes dump.txt, `quit` ends the game cleanly.
set -u
GAME_DIR=${1:?usage: console.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
start_game
wait_menu
keys grave
# Typed at a person's pace, doubled letters and Return at once: every key counts.
typed aabb11
wait_log "Unkown Command!  aabb11" 5
line c l e a r
line d u m p
shot console
line q u i t
wait_exit 15
[ "$status" -eq 0 ] || fail "exit status $status after the quit command"
printf -- '-- Console Dump -----------------\ndump\n\n-- ex dmp -----------------------' > "$work/expected"
cmp "$work/expected" "$work/game/dump.txt" || { cat -A "$work/game/dump.txt"; fail "dump.txt is not the two markers around \"dump\""; }
[ -f "$work/game/data/prefs.cfg" ] || fail "quit did not save the settings"
echo "e2e console: ok"
