#!/usr/bin/env bash
# Every menu screen reached with the mouse, as a player would at the
# packaged 800 x 600: options (two checkboxes, the volume slider dragged,
# the resolution list stepped), scores, a new game paused with Escape and
# left for the main menu, then Quit. The settings changed must be in
# data/prefs.cfg afterwards. SHOTS=DIR keeps a screenshot of each screen.
set -u
GAME_DIR=${1:?usage: menus.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
printf '1200 Ada\n900 Grace\n' > "$work/game/data/stats.cfg"

# The centre of an item, from menu.xml through the game's resolution rule.
centre() {
    local r
    r=$(python3 "$(dirname "$0")/menu_rects.py" "$work/game/data/scripts/menu.xml" 800 600 |
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
for x in $((knob - 9)) $((knob - 19)) $((knob - 29)) $((sx - 64 + 46)); do move "$x" "$sy"; done
xdotool mouseup 1; sleep 0.3
# The list's right arrow is 160 pixels right of its left arrow.
read -r lx ly <<< "$(centre options -)"
click $((lx + 160)) "$ly"
shot options
click $(centre options btn_back.tga)
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

prefs="$work/game/data/prefs.cfg"
for line in 'showfps 1' 'fullscreen 1' 'volume 0.3' 'screenwidth 1024' 'screenheight 768'; do
    grep -qx "$line" "$prefs" || { cat "$prefs"; fail "prefs.cfg lacks \"$line\""; }
done
printf '1200 Ada\n900 Grace\n' | cmp -s - "$work/game/data/stats.cfg" || fail "stats.cfg changed without a game"
echo "e2e menus: ok"
