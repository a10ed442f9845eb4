#!/usr/bin/env bash
# scripts/check-layers.sh passes on the tree and fails on each planted fault:
# a GL call, an SDL call and an OpenAL call in rules files, an include that
# points up, a circle of includes between two folders, a folder missing from
# the layer table, and a comment or string that only names a call (which must
# pass).
set -uo pipefail
src=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail=0

copy() {
    rm -rf "$work/tree" && mkdir -p "$work/tree"
    (cd "$src" && cp -r CMakeLists.txt common input app console game scene menu render particles sound platform scripts "$work/tree/")
}
expect() {  # expect pass|fail "what"
    local want=$1 what=$2 out rc
    out=$(bash "$work/tree/scripts/check-layers.sh" "$work/tree" 2>&1); rc=$?
    if { [ "$want" = pass ] && [ $rc -ne 0 ]; } || { [ "$want" = fail ] && [ $rc -eq 0 ]; }; then
        echo "FAIL: $what: expected $want, got exit $rc"; echo "$out"; fail=1
    else
        echo "ok: $what"
    fi
}

copy; expect pass "the tree as it is"
copy; echo 'void planted() { glBegin(0); }' >> "$work/tree/game/game.cpp"
expect fail "a gl call in game/game.cpp"
copy; echo 'void planted() { SDL_SetGamma(1, 1, 1); }' >> "$work/tree/menu/menu_runtime.cpp"
expect fail "an SDL call in a menu rules file"
copy; echo 'void planted() { alSourcePlay(0); }' >> "$work/tree/console/cconsole.cpp"
expect fail "an OpenAL call in console/cconsole.cpp"
copy; sed -i '1i #include "game/game.h"' "$work/tree/render/draw2d.cpp"
expect fail "render/ including game/"
copy; sed -i '1i #include "render/texture.h"' "$work/tree/common/log.cpp"
expect fail "the log (floor) including render/"
copy; sed -i '1i #include "game/game.h"' "$work/tree/menu/menu.cpp"
expect fail "menu/ and game/ including each other"
copy; mkdir "$work/tree/extra" && echo 'int planted;' > "$work/tree/extra/planted.cpp"
expect fail "a folder of sources outside the layer table"
copy; printf '%s\n' '// glBegin( in a comment' 'const char* planted = "SDL_Quit()";' >> "$work/tree/game/game.cpp"
expect pass "calls named only in a comment and a string"
copy; echo 'void planted() { glBegin(0); }' >> "$work/tree/menu/menu_draw.cpp"
expect pass "a gl call in a drawing file"
exit $fail
