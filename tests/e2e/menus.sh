#!/usr/bin/env bash
# Every menu screen reached with the mouse, as a player would at the
# packaged 800 x 600 (or RES=640x480, RES=1024x768): options (two checkboxes, the volume slider dragged,
# the resolution list stepped), scores, a new game paused with Escape and
# left for the main menu, then Quit. The settings changed must be in
# data/prefs.cfg as soon as the options screen is left, and afterwards.
# SHOTS=DIR keeps a screenshot of each screen.
set -u
GAME_DIR=${1:?usage: menus.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
printf '1200 Ada\n900 Grace\n' > "$work/game/data/stats.cfg"
RES=${RES:-800x600}
W=${RES%x*} H=${RES#*x}
case $RES in
    640x480) next='800 600' ;;
    800x600) next='1024 768' ;;
    1024x768) next='1280 800' ;;
    *) fail "RES must be 640x480, 800x600 or 1024x768" ;;
esac
if [ "$RES" != 800x600 ]; then
    printf '%s\n' 'showfps 0' 'fullscreen 0' 'volume 0.7' 'brightness 1' "screenwidth $W" "screenheight $H" \
        'screenbpp 32' 'con_red 0' 'con_green 0' 'con_blue 0' 'con_alpha 0.9' 'r_blur 0' 'r_blurpower 25' \
        'r_blurzoom 0.02' 'r_particles 1' 'r_maxfps 60' > "$work/game/data/prefs.cfg"
fi

# The settings changed below, each a whole line of prefs.cfg.
prefs="$work/game/data/prefs.cfg"
changed=('showfps 1' 'fullscreen 1' 'volume 0.3' "screenwidth ${next% *}" "screenheight ${next#* }")
saved() {
    local line
    for line in "${changed[@]}"; do grep -qx "$line" "$prefs" 2> /dev/null || return 1; done
}

# The centre of an item, from menu.xml through the game's resolution rule.
centre() {
    local r
    r=$(python3 "$(dirname "$0")/menu_rects.py" "$work/game/data/scripts/menu.xml" "$W" "$H" |
        awk -v s="$1" -v n="$2" '$1 == s && $3 == n { print; exit }')
    [ -n "$r" ] || fail "no item $2 on screen $1"
    set -- $r
    echo $(($4 + $6 / 2)) $(($5 + $7 / 2))
}

start_game
wait_menu
shot main
click $(centre main btn_options.tga)
click $(centre options showfps)
click $(centre options fullscreen)
# The knob sits at x + 96 * volume; it follows the mouse while the button is held.
read -r sx sy <<< "$(centre options volume)"
knob=$((sx - 64 + 96 * 7 / 10 + 16))
move "$knob" "$sy"
xdotool mousedown 1; sleep 0.3
# Small steps, a few frames apart even when frames are slow, keep the mouse
# over the knob as it follows.
for x in $(seq $((knob - 5)) -5 $((sx - 64 + 47))) $((sx - 64 + 46)); do move "$x" "$sy"; sleep 0.1; done
xdotool mouseup 1; sleep 0.3
# The list's right arrow is 160 pixels right of its left arrow.
read -r lx ly <<< "$(centre options -)"
click $((lx + 160)) "$ly"
shot options
click $(centre options btn_back.tga)
# Saved as the options screen is left, long before the game ends.
for _ in $(seq 1 40); do saved && break; sleep 0.05; done
saved || { cat "$prefs"; fail "leaving the options did not save the settings"; }
click $(centre main btn_scores.tga)
shot scores
click $(centre scores btn_back.tga)
click $(centre main btn_newgame.tga)
sleep 0.5
shot play
keys Escape
shot pause
click $(centre pause btn_mainmenu.tga)
alive || fail "the game died in the menus"
click $(centre main btn_quit.tga)
wait_exit 15
[ "$status" -eq 0 ] || fail "exit status $status after Quit"

saved || { cat "$prefs"; fail "prefs.cfg lost a setting at the end"; }
# The one line a run adds without a finished game: "r_highscore" starts as
# "0", so the first level records a score of 0 under the name "0".
printf '1200 Ada\n900 Grace\n0 0\n' | cmp -s - "$work/game/data/stats.cfg" || { cat "$work/game/data/stats.cfg"; fail "stats.cfg is not the old table plus the start-up line"; }
echo "e2e menus: ok"
