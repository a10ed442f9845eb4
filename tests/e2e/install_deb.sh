#!/usr/bin/env bash
# The Debian package as a player's machine gets it: `apt-get install` of the
# .deb, /usr/games/velthra started by an ordinary user under an X server of
# their own and ended with SIGTERM, the settings and log in that user's
# ~/.local/share/velthra and nothing written under /usr; then removal leaves
# no file of the package behind. Changes the system: run as root (CI does);
# anyone else is told so and the script stops with status 0.
# usage: install_deb.sh BUILD_DIR/velthra_VERSION_amd64.deb
set -u
deb=$(realpath "${1:?usage: install_deb.sh PACKAGE.deb}")
fail() { echo "FAIL: $*"; exit 1; }
if [ "$(id -u)" -ne 0 ]; then
    echo "SKIP: installing a package needs root"
    exit 0
fi
work=$(mktemp -d)
chmod 755 "$work"
trap 'rm -rf "$work"' EXIT
. "$(dirname "$0")/player.sh"
player_user
[ -n "$player" ] || fail "no ordinary user to play as: $player_why"
player_home=$(getent passwd "$player" | cut -d: -f6)
[ -d "$player_home" ] || fail "$player has no home folder ($player_home)"
rm -rf "$player_home/.local/share/velthra"

# A package left by an earlier, interrupted run would hide a broken install.
dpkg -s velthra > /dev/null 2>&1 && apt-get purge -y -qq velthra > /dev/null
export DEBIAN_FRONTEND=noninteractive
apt-get install -y -qq "$deb" > "$work/apt.log" 2>&1 || { cat "$work/apt.log"; fail "apt-get install $deb failed"; }
dpkg -L velthra > "$work/files"
for path in /usr/games/velthra /usr/share/games/velthra/assets.zip /usr/share/applications/velthra.desktop \
            /usr/share/man/man6/velthra.6 /usr/share/icons/hicolor/48x48/apps/velthra.png; do
    grep -qx "$path" "$work/files" || fail "the package does not install $path"
done
touch "$work/stamp"

# The player's own X server; the game must find its data from /usr/games alone.
cat > "$work/play.sh" <<'PLAY'
cd ~ || exit 2
/usr/games/velthra &
pid=$!
# Polled: a window that goes while the search walks the window tree kills
# xdotool with an X error (see find_window in lib.sh).
wid=
for _ in $(seq 1 300); do
    wid=$(xdotool search --onlyvisible --name '^VELTHRA$' 2> /dev/null | head -1)
    [ -n "$wid" ] && break
    sleep 0.1
done
[ -n "$wid" ] || { echo "no window titled VELTHRA appeared"; kill -KILL $pid; exit 2; }
sleep 2
kill -0 $pid || { echo "the game died while running"; exit 2; }
kill -TERM $pid
wait $pid
PLAY
as_player env -i PATH=/usr/local/bin:/usr/bin:/bin:/usr/games HOME="$player_home" USER="$player" \
    ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 1024x768x24" bash "$work/play.sh"
status=$?
[ "$status" -eq 0 ] || fail "the installed game as $player: exit status $status"

user=$player_home/.local/share/velthra
for file in data/prefs.cfg log.txt; do
    [ -f "$user/$file" ] || fail "no $file in $user"
    [ "$(stat -c %U "$user/$file")" = "$player" ] || fail "$user/$file does not belong to $player"
done
[ "$(readlink "$user/data/levels")" = /usr/share/games/velthra/data/levels ] || fail "data/levels is not a link to the installed levels"
written=$(find /usr -xdev -newer "$work/stamp" ! -type d 2> /dev/null)
[ -z "$written" ] || fail "files written under /usr while playing: $written"

apt-get purge -y -qq velthra > "$work/apt.log" 2>&1 || { cat "$work/apt.log"; fail "apt-get purge velthra failed"; }
while IFS= read -r path; do
    [ -d "$path" ] && [ ! -L "$path" ] && continue  # shared folders such as /usr/share stay
    [ -e "$path" ] || [ -L "$path" ] && fail "$path is still there after removal"
done < "$work/files"
left=$(find /usr -xdev -path '*velthra*' 2> /dev/null)
[ -z "$left" ] || fail "left under /usr after removal: $left"
echo "package: ok ($(basename "$deb") installed, played by $player, removed)"
