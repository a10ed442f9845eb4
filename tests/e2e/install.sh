#!/usr/bin/env bash
# The install tree: `cmake --install` into a fresh prefix lays down every
# file a desktop and a player expect (executable, read-only data, desktop
# entry, metainfo, icons, manual page), the desktop entry and the metainfo
# pass their validators, and the installed game runs once under the X
# server with HOME in a scratch folder: its settings and log go there and
# nothing in the prefix changes. Then the whole prefix is moved and the game
# still finds its data. Needs Xvfb, xdotool, desktop-file-validate
# (desktop-file-utils), appstreamcli (appstream), file and man.
set -u
BUILD_DIR=${1:?usage: install.sh BUILD_DIR}
. "$(dirname "$0")/lib.sh"
for tool in desktop-file-validate appstreamcli file man; do
    command -v "$tool" > /dev/null || fail "$tool is missing (scripts/install-deps.sh installs it)"
done

prefix=$work/prefix
cmake --install "$BUILD_DIR" --prefix "$prefix" > "$work/install.log" || { cat "$work/install.log"; fail "cmake --install failed"; }

# Every file, and nothing that a player's run writes.
[ -x "$prefix/games/velthra" ] || fail "no executable games/velthra"
share=$prefix/share/games/velthra
cmp -s "$share/assets.zip" "$BUILD_DIR/game/assets.zip" || fail "share/games/velthra/assets.zip is not the built one"
for dir in levels models scripts textures sound; do
    [ -n "$(ls -A "$share/data/$dir" 2> /dev/null)" ] || fail "share/games/velthra/data/$dir is missing or empty"
    diff -r "$BUILD_DIR/game/data/$dir" "$share/data/$dir" > /dev/null || fail "data/$dir differs from the build"
done
leftovers=$(find "$prefix" -name prefs.cfg -o -name stats.cfg -o -name log.txt -o -name dump.txt)
[ -z "$leftovers" ] || fail "a player's files were installed: $leftovers"

desktop=$prefix/share/applications/velthra.desktop
[ -f "$desktop" ] || fail "no share/applications/velthra.desktop"
desktop-file-validate "$desktop" || fail "desktop-file-validate refuses velthra.desktop"
for line in '^Name=.' '^Comment=.' '^Categories=Game;ArcadeGame;$' '^Icon=velthra$' '^Exec=velthra$'; do
    grep -q "$line" "$desktop" || fail "velthra.desktop has no line matching $line"
done

metainfo=$(ls "$prefix"/share/metainfo/*.metainfo.xml 2> /dev/null)
[ "$(echo "$metainfo" | wc -w)" -eq 1 ] || fail "expected one metainfo file in share/metainfo, found [$metainfo]"
appstreamcli validate --no-net "$metainfo" > "$work/appstream.out" 2>&1 || { cat "$work/appstream.out"; fail "appstreamcli refuses $metainfo"; }
grep -q '<launchable type="desktop-id">velthra.desktop</launchable>' "$metainfo" || fail "the metainfo does not launch velthra.desktop"

for size in 32 48 64 128 256; do
    icon=$prefix/share/icons/hicolor/${size}x$size/apps/velthra.png
    file "$icon" | grep -q "PNG image data, $size x $size, 8-bit/color RGBA" || fail "bad icon: $(file "$icon")"
    # Decoded whole (a bad checksum or cut-short data fails here, where
    # `file` reads only the header): a see-through rounded corner, an opaque
    # tile, the bright ball on it.
    look=$(convert -regard-warnings "$icon" \
        -format '%[fx:p{0,0}.a] %[fx:p{w/2,h/2}.a] %[fx:p{w*0.6,h*0.62}.intensity>0.86]' info: 2>&1) ||
        fail "the ${size}px icon does not decode: $look"
    [ "$look" = "0 1 1" ] || fail "the ${size}px icon shows the wrong picture (corner, tile, ball: $look)"
done

page=$prefix/share/man/man6/velthra.6
[ -f "$page" ] || fail "no share/man/man6/velthra.6"
MANWIDTH=80 man -l "$page" > "$work/man.txt" 2> "$work/man.err" || fail "man cannot render velthra.6"
[ -s "$work/man.err" ] && { cat "$work/man.err"; fail "man warns about velthra.6"; }
for word in NAME SYNOPSIS OPTIONS CONTROLS FILES -help -vlog -menuxm -menu -world \
            prefs.cfg stats.cfg log.txt .local/share/velthra Escape; do
    grep -q -- "$word" "$work/man.txt" || fail "the manual page does not mention $word"
done

# One run as a player would start it from the menu: from elsewhere, with a
# fresh HOME, and -help answered on standard output.
find "$prefix" -printf '%p %s %T@\n' | sort > "$work/tree.before"
run_installed() {
    (cd / && exec env -u XDG_DATA_HOME HOME="$work/home" "$1/games/velthra" -help > "$work/stdout") &
    pid=$!
    find_window || fail "no window titled VELTHRA appeared"
    sleep 2
    alive || fail "the installed game died while running"
    kill -TERM "$pid"
    wait_exit 30
    [ "$status" -eq 0 ] || fail "exit status $status after SIGTERM"
}
mkdir "$work/home"
run_installed "$prefix"
grep -q '^SWITCH HELP: VELTHRA V1.0.4$' "$work/stdout" || fail "-help printed nothing on standard output"
user=$work/home/.local/share/velthra
[ -f "$user/log.txt" ] || fail "no log.txt in HOME/.local/share/velthra"
grep -q ' -- menu.xml menu loaded!' "$user/log.txt" || fail "the menu was not loaded through the links"
[ -f "$user/data/prefs.cfg" ] || fail "no data/prefs.cfg in HOME/.local/share/velthra"
find "$prefix" -printf '%p %s %T@\n' | sort | diff "$work/tree.before" - || fail "the run changed the install tree"

# Any prefix: the tree moved elsewhere still runs, and the links follow it.
mv "$prefix" "$work/moved"
run_installed "$work/moved"
[ "$(readlink "$user/data/textures")" = "$work/moved/share/games/velthra/data/textures" ] ||
    fail "data/textures still points at $(readlink "$user/data/textures")"
echo "e2e install: ok"
