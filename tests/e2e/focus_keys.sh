#!/usr/bin/env bash
# Play stops when another window takes the keyboard, and the arrow keys move
# the paddle. The first level's one brick lies on the ball's way, a second
# or so of flight from the left wall, and breaking it loads the next level
# (logged). The ball is launched and the keyboard given at once to another X
# client: the pause screen must show and the next level must not load while
# it is away, nor when the keyboard comes back; after Resume the ball flies
# on and the next level loads. On the next level, with the ball
# resting, Right is held (XTEST down and up): the pointer the paddle follows
# must reach the window's right edge, and the paddle and ball with it.
# RES=640x480 or 1024x768 plays at that size; SHOTS=DIR keeps screenshots.
set -u
GAME_DIR=${1:?usage: focus_keys.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
RES=${RES:-800x600}
W=${RES%x*} H=${RES#*x}
if [ "$RES" != 800x600 ]; then
    printf '%s\n' 'showfps 0' 'fullscreen 0' 'volume 0.7' 'brightness 1' "screenwidth $W" "screenheight $H" \
        'screenbpp 32' 'con_red 0' 'con_green 0' 'con_blue 0' 'con_alpha 0.9' 'r_blur 0' 'r_blurpower 25' \
        'r_blurzoom 0.02' 'r_particles 1' > "$work/game/data/prefs.cfg"
fi
# From the left wall the ball leaves at 45 degrees and touches this brick
# five units on.
cat > "$work/game/data/levels/lvl1.xml" << 'LEVEL'
<World>
    <entities>
        <breakout type="0" x="0" z="2" />
    </entities>
</World>
LEVEL
centre() {
    local r
    r=$(menu_rect "$1" "$2" "$W" "$H")
    [ -n "$r" ] || fail "no item $2 on screen $1"
    set -- $r
    echo $(($1 + $3 / 2)) $(($2 + $4 / 2))
}
now() { import -window "$wid" "$work/now.png" || fail "cannot capture the window"; }
# The pause screen: its title lit, and no sky at the left, where no item stands.
paused() {
    now
    set -- $(menu_rect pause lbl_paused.tga "$W" "$H")
    [ "$(convert "$work/now.png" -crop "$3x$4+$1+$2" -format '%[fx:maxima>0.5]' info:)" = 1 ] &&
        [ "$(convert "$work/now.png" -crop 20x100+5+$((H / 6)) -format '%[fx:maxima]' info:)" = 0 ]
}
# paddle_right: true when the bottom third of the window has clearly more
# white (paddle and ball; the field is blue) right of the centre than left.
white() { convert "$work/now.png" -crop "$((W / 2))x$((H / 3))+$1+$((H * 2 / 3))" -fx 'min(r,min(g,b))>0.8' -format '%[fx:mean]' info:; }
paddle_right() {
    now
    awk -v l="$(white 0)" -v r="$(white $((W / 2)))" 'BEGIN { exit !(r > 3 * l) }'
}

start_game
wait_menu
xmessage -geometry -0-0 elsewhere 2> /dev/null &
owid=$(search_window --class Xmessage) || fail "xmessage's window did not appear"
xdotool windowraise "$wid"  # over it, out of the pictures
click $(centre main btn_newgame.tga)
move 0 $((H / 2))
sleep 0.5
paused && fail "the pause screen shows before the keyboard went away"
# One xdotool: the launch and the loss of the keyboard a moment apart.
xdotool key space windowfocus "$owid"
sleep 3
shot focus-lost
paused || fail "no pause screen after the keyboard went to another window"
xdotool windowfocus "$wid"
sleep 1
paused || fail "play resumed by itself when the keyboard came back"
grep -qF "lvl2.xml world loaded!" "$work/game/log.txt" && fail "the ball flew on behind the pause screen"
click $(centre pause btn_resume.tga)
wait_log "lvl2.xml world loaded!" 20

move 0 $((H / 2))
paddle_right && fail "the paddle is not at the left wall to begin with"
xdotool keydown Right
sleep 2  # the paddle crosses the field in one second
xdotool keyup Right
sleep 0.3
shot right
paddle_right || fail "holding Right did not take the paddle to the right wall"
eval "$(xdotool getmouselocation --shell)"
read -r wx < <(xwininfo -id "$wid" | awk '/Absolute upper-left X:/ { print $4 }')
[ $((X - wx)) -eq $((W - 1)) ] || fail "holding Right left the pointer at x $((X - wx)), not $((W - 1))"
echo "e2e focus_keys: ok"
