# Shared by the install scripts: an ordinary user to run the game as, since
# root ignores file permissions (an installed tree is only read-only, and a
# HOME only unwritable, for someone else).
#
# player_user: sets $player to a user name, or leaves it empty (with the
# reason in $player_why) when none can be had. As root it is velthra-player,
# created with a home folder on first use (useradd, from passwd); as an
# ordinary user it is that user.
# as_player CMD...: runs CMD as $player in this process (setpriv execs it, so
# a signal sent to it reaches CMD itself; runuser would stand between).
PLAYER_NAME=velthra-player

player_user() {
    player=
    player_why=
    if [ "$(id -u)" -ne 0 ]; then
        player=$(id -un)
        return 0
    fi
    if ! id "$PLAYER_NAME" > /dev/null 2>&1; then
        if ! command -v useradd > /dev/null || ! command -v setpriv > /dev/null; then
            player_why="useradd or setpriv is missing (packages passwd, util-linux)"
            return 0
        fi
        if ! useradd --create-home --shell /bin/bash "$PLAYER_NAME" 2> "${work:-/tmp}/useradd.err"; then
            player_why="useradd failed: $(cat "${work:-/tmp}/useradd.err")"
            return 0
        fi
    fi
    player=$PLAYER_NAME
}

as_player() {
    if [ "$(id -u)" -eq 0 ]; then
        setpriv --reuid="$player" --regid="$player" --init-groups -- "$@"
    else
        "$@"
    fi
}
