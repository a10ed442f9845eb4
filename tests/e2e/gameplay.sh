#!/usr/bin/env bash
# A whole game as a player plays it: New Game with the mouse, launch with
# Space, move the paddle, lose the ball until the game is over, type a name
# and press Return, at a person's pace with a doubled letter and Return at
# once (no key may be lost). stats.cfg must then hold the score under that name at
# once, and keep it when the game is killed (SIGKILL: nothing of the
# shutdown runs). SHOTS=DIR keeps screenshots of play and game over.
#
# The first level is replaced by one whose path is known: the paddle waits at
# the left wall (mouse x = 0), the ball leaves it at 45 degrees, breaks the
# one reachable brick (50 points) and comes back far right of the paddle;
# the other brick lies beyond the far wall, so the level never ends.
set -u
GAME_DIR=${1:?usage: gameplay.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
cat > "$work/game/data/levels/lvl1.xml" <<'LEVEL'
<World>
    <entities>
        <breakout type="0" x="-2" z="0" />
        <breakout type="0" x="0" z="-30" />
    </entities>
</World>
LEVEL
rect() {
    python3 "$(dirname "$0")/menu_rects.py" "$work/game/data/scripts/menu.xml" 800 600 |
        awk -v s="$1" -v n="$2" '$1 == s && $3 == n { print $4 + $6 / 2, $5 + $7 / 2; exit }'
}

start_game
wait_menu
click $(rect main btn_newgame.tga)
move 0 300
sleep 0.5
shot play-rest
keys space
sleep 1.5
shot play
# Each life takes about ten seconds of play; a click relaunches the ball.
deadline=$((SECONDS + ${GAME_SECONDS:-75}))
while [ $SECONDS -lt $deadline ]; do
    alive || fail "the game died during play"
    xdotool click 1
    sleep 2
    # The game-over screen is a menu: no sky behind it, so the left part of
    # the screen, where no menu item stands, turns black.
    # The window's own picture: SDL 2 (sdl12-compat) may place it elsewhere on the screen.
    import -window "$wid" "$work/now.png" 2>/dev/null &&
        [ "$(convert "$work/now.png" -crop 130x100+20+100 -format '%[fx:maxima]' info:)" = "0" ] && break
done
shot gameover
typed aabb
# The start-up line ("r_highscore" starts as "0", so the first level records
# 0 under the name "0") below the game's.
printf '50 aabb\n0 0\n' > "$work/stats"
until_same "$work/game/data/stats.cfg" "$work/stats" 10 ||
    { same "$work/game/data/stats.cfg" "$work/stats"; fail "the score was not saved as it was recorded"; }
kill -KILL "$pid"
wait_exit 10
same "$work/game/data/stats.cfg" "$work/stats" || fail "stats.cfg changed when the game was killed"
[ ! -e "$work/game/data/prefs.cfg" ] || fail "prefs.cfg written though no setting changed"
echo "e2e gameplay: ok"
