#!/usr/bin/env bash
# The per-user folder of an installed game, as a player meets it:
#  1. the first run creates $XDG_DATA_HOME/velthra (links to the installed
#     data, the player's own settings and log);
#  2. a second run reuses it and keeps the settings and the scores;
#  3. a link the player replaced by a real folder is used and left alone;
#  4. a copied game folder still writes beside its executable;
#  5. as an ordinary user: a HOME that cannot be written gives the reason
#     on standard error and status 1; a copy of the game the player may not
#     write runs from a per-user folder of links to it.
# Needs Xvfb and xdotool; step 5 needs an ordinary user (created as root;
# skipped with a message only when none can be had).
set -u
BUILD_DIR=${1:?usage: userdir.sh BUILD_DIR}
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/player.sh"
chmod 755 "$work"  # the ordinary user of step 5 reads the install from here
# Step 5 makes folders read-only; give them back so they can be removed.
trap 'chmod -R u+w "$work" 2> /dev/null; cleanup' EXIT
prefix=$work/prefix
cmake --install "$BUILD_DIR" --prefix "$prefix" > /dev/null || fail "cmake --install failed"
installed=$prefix/share/games/velthra
home=$work/home
mkdir "$home"
user=$home/.local/share/velthra

# run_at EXE: runs it from / with HOME=$home, waits for its window, leaves
# the window's size in $size, ends it with SIGTERM.
run_at() {
    (cd / && exec env -u XDG_DATA_HOME HOME="$home" "$1") &
    pid=$!
    find_window || fail "no window titled VELTHRA appeared"
    size=$(xwininfo -id "$wid" | awk '/Width:/{w=$2} /Height:/{h=$2} END{print w "x" h}')
    sleep 2
    alive || fail "the game died while running"
    kill -TERM "$pid"
    wait_exit 30
    [ "$status" -eq 0 ] || fail "exit status $status after SIGTERM"
}

# 1. First run.
run_at "$prefix/games/velthra"
[ "$size" = 800x600 ] || fail "first run: window is $size"
[ -f "$user/log.txt" ] && [ -f "$user/data/prefs.cfg" ] || fail "first run: no log.txt or data/prefs.cfg in $user"
[ -d "$user/data" ] && [ ! -L "$user/data" ] || fail "first run: data/ is not the player's own folder"
for entry in assets.zip data/levels data/models data/scripts data/textures data/sound; do
    [ "$(readlink "$user/$entry")" = "$installed/$entry" ] || fail "first run: $entry is not a link to $installed/$entry"
done

# 2. The player's settings and scores survive the next run.
sed -i -e 's/^screenwidth .*/screenwidth 640/' -e 's/^screenheight .*/screenheight 480/' "$user/data/prefs.cfg"
printf '1200 Ada\n900 Grace\n' > "$user/data/stats.cfg"
run_at "$prefix/games/velthra"
[ "$size" = 640x480 ] || fail "second run: window is $size, the saved 640x480 was not used"
grep -qx 'screenwidth 640' "$user/data/prefs.cfg" || fail "second run: the saved settings were lost"
head -2 "$user/data/stats.cfg" | cmp -s - <(printf '1200 Ada\n900 Grace\n') || fail "second run: the scores were lost"

# 3. Own menus: a real folder in place of the link is what the game reads.
rm "$user/data/scripts"
cp -r "$installed/data/scripts" "$user/data/scripts"
echo '<NotAGameMenu/>' > "$user/data/scripts/menu.xml"
run_at "$prefix/games/velthra"
grep -q 'corrupt menu.xml' "$user/log.txt" || fail "the player's own data/scripts was not used"
[ -d "$user/data/scripts" ] && [ ! -L "$user/data/scripts" ] || fail "the player's folder was replaced by a link"
! grep -q 'corrupt' "$installed/data/scripts/menu.xml" || fail "the installed menu was changed"

# 4. A copied game folder is still portable: it writes beside itself only.
copy_game "$BUILD_DIR/game"
rm -rf "$home"
mkdir "$home"
run_at "$work/game/velthra"
[ -f "$work/game/log.txt" ] && [ -f "$work/game/data/prefs.cfg" ] || fail "the copied folder did not write beside its executable"
[ -z "$(ls -A "$home")" ] || fail "the copied folder's run wrote into HOME"

# 5. As an ordinary user.
player_user
if [ -z "$player" ]; then
    echo "SKIP: the read-only cases need an ordinary user: $player_why"
    echo "e2e userdir: ok (without the read-only cases)"
    exit 0
fi
# What the runs above inherited goes along: the sanitizer build's settings
# (lib.sh turns its leak scan off) and the SDL library chosen by CI.
pass_env=()
for name in ASAN_OPTIONS LSAN_OPTIONS UBSAN_OPTIONS LP_NUM_THREADS LD_LIBRARY_PATH; do
    [ -n "${!name:-}" ] && pass_env+=("$name=${!name}")
done
locked=$work/locked-home
mkdir -p "$locked"
chmod 555 "$locked"
# The game ends before it opens a window.
as_player env -i "${pass_env[@]}" PATH="$PATH" HOME="$locked" DISPLAY="$DISPLAY" "$prefix/games/velthra" > "$work/out" 2> "$work/err"
status=$?
[ "$status" -eq 1 ] || fail "unwritable HOME: exit status $status (expected 1)"
grep -qx "velthra: $prefix/games holds no data/ and assets.zip, and the per-user folder $locked/.local/share/velthra cannot be prepared: cannot create $locked/.local: Permission denied" "$work/err" ||
    { cat "$work/err"; fail "unwritable HOME: the reason is not on standard error"; }
[ ! -s "$work/out" ] || fail "unwritable HOME: something was printed on standard output"
[ -z "$(ls -A "$locked")" ] || fail "unwritable HOME: files appeared in it"

# A game folder the player may only read: the game runs from links to it.
rm -f "$work/game/log.txt" "$work/game/data/prefs.cfg" "$work/game/data/stats.cfg"
chmod -R go-w "$work/game"
[ "$(id -u)" -eq 0 ] || chmod a-w "$work/game" "$work/game/data"
own=$work/player-home
mkdir -p "$own"
[ "$(id -u)" -eq 0 ] && chown "$player" "$own"
run_env=(env -i "${pass_env[@]}" PATH="$PATH" HOME="$own" DISPLAY="$DISPLAY" ALSOFT_DRIVERS=null "$work/game/velthra")
if [ "$(id -u)" -eq 0 ]; then
    (cd / && exec setpriv --reuid="$player" --regid="$player" --init-groups -- "${run_env[@]}") &
else
    (cd / && exec "${run_env[@]}") &
fi
pid=$!
find_window || fail "read-only copy: no window titled VELTHRA appeared"
sleep 2
alive || fail "read-only copy: the game died while running"
kill -TERM "$pid"
wait_exit 30
[ "$status" -eq 0 ] || fail "read-only copy: exit status $status after SIGTERM"
mine=$own/.local/share/velthra
[ "$(readlink "$mine/assets.zip")" = "$work/game/assets.zip" ] || fail "read-only copy: assets.zip is not a link to the copy"
[ -f "$mine/log.txt" ] && [ -f "$mine/data/prefs.cfg" ] || fail "read-only copy: no log.txt or prefs.cfg in the player's folder"
[ ! -e "$work/game/log.txt" ] && [ ! -e "$work/game/data/prefs.cfg" ] || fail "read-only copy: the game wrote into the copy"
echo "e2e userdir: ok"
