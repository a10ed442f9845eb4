#!/usr/bin/env bash
# Takes the README's pictures from the real game at its packaged 800 x 600,
# under a virtual X server: docs/menu.png (the main menu) and docs/play.png
# (the first level, a moment after the ball is launched). Re-run it whenever
# the look of the game changes.
# usage: scripts/screenshots.sh [BUILD_DIR]   (default build/, built already)
# Needs Xvfb, xdotool and ImageMagick's import (scripts/install-deps.sh).
set -u
cd "$(dirname "$0")/.."
root=$PWD
build=$(realpath "${1:-build}")
[ -x "$build/game/velthra" ] || { echo "no game in $build/game: build it first (scripts/build.sh)"; exit 1; }
. "$root/tests/e2e/lib.sh"
copy_game "$build/game"

# The centre of a main-menu item, from menu.xml through the game's resolution rule.
centre() {
    python3 "$root/tests/e2e/menu_rects.py" "$work/game/data/scripts/menu.xml" 800 600 |
        awk -v n="$1" '$1 == "main" && $3 == n { print $4 + int($6 / 2), $5 + int($7 / 2); exit }'
}
# Only the window, without ImageMagick's dates, so an unchanged look gives
# unchanged files.
snap() { import -window "$wid" -strip "$root/docs/$1.png" || fail "cannot capture docs/$1.png"; }

start_game
wait_menu
# Point at nothing, so no button is highlighted.
move 790 590
sleep 3
snap menu
read -r x y <<< "$(centre btn_newgame.tga)"
[ -n "$x" ] || fail "no New Game button in menu.xml"
click "$x" "$y"
sleep 2
move 400 300
click 400 300   # launch the ball
sleep 1.5
alive || fail "the game died in play"
snap play
kill -TERM "$pid"
wait_exit 30
echo "wrote docs/menu.png and docs/play.png"
