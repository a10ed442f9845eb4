#!/usr/bin/env bash
# Random-input soak of the real game: usage scripts/soak.sh [MINUTES] (10).
#
# Plays a copy of the runnable folder (build/game, or GAME_DIR=...) under a
# virtual X server of its own for MINUTES minutes with random input from
# xdotool: the pointer moved and clicked, keys (backquote, Escape, Space,
# Return, arrows, paging, letters and digits) and settings typed into the
# console, absurd values among them. Then it types `quit` and checks what the
# game left: its exit status, data/prefs.cfg and data/stats.cfg written and
# in the form the game writes them, its memory (VmRSS) at the first minute
# and at the end, and the ERROR lines of log.txt. Exits non-zero unless the
# game ran to the end, quit with status 0, wrote both files intact and grew
# by less than 10 %.
#
# SOAK_SEED (default 1) picks the input; the same seed sends the same
# sequence again (what it meets still depends on the game's timing).
# SHOTS=DIR keeps a screenshot at every minute; SOAK_KEEP=DIR keeps the
# input sent (with the memory samples between) and the game's files.
#
# Needs the build's packages and xvfb, xdotool, x11-utils, imagemagick
# (scripts/install-deps.sh). Use the ordinary build: a sanitizer build runs
# several times slower and its memory figures are the sanitizer's.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
minutes=${1:-10}
[[ $minutes =~ ^[1-9][0-9]*$ ]] || { echo "usage: soak.sh [MINUTES]"; exit 2; }

game=${GAME_DIR:-$root/build/game}
if [ ! -x "$game/velthra" ]; then
    [ -n "${GAME_DIR:-}" ] && { echo "no game in GAME_DIR=$GAME_DIR"; exit 2; }
    echo "no build in build/: building it with scripts/build.sh"
    bash "$root/scripts/build.sh" || exit 2
fi
for tool in Xvfb xdotool xwininfo import convert python3; do
    command -v "$tool" > /dev/null || { echo "$tool is missing (scripts/install-deps.sh installs it)"; exit 2; }
done
GAME_DIR=$(cd "$game" && pwd)

. "$root/tests/e2e/lib.sh"
seed=${SOAK_SEED:-1}
RANDOM=$seed
echo "soak: $minutes min of random input, SOAK_SEED=$seed, game $GAME_DIR"
ldd "$GAME_DIR/velthra" | grep -q 'libasan\|libubsan' &&
    echo "WARNING: a sanitizer build: slower, and its memory figures are the sanitizer's, not a player's"

copy_game "$GAME_DIR"
data=$work/game/data
# A first run for the settings; an old score table, dated far back, so that
# its rewrite shows.
printf '1200 Ada\n900 Grace Hopper\n' > "$data/stats.cfg"
touch -d @946684800 "$data/stats.cfg"
stats_before=$(stat -c %Y "$data/stats.cfg")
mkdir -p "${SHOTS:-$work}"

start_game
wait_menu
read -r w h <<< "$(xwininfo -id "$wid" | awk '/Width:/{w=$2} /Height:/{h=$2} END{print w, h}')"

# The Quit button ends the game by design, and a soak cut short measures
# nothing; restarting would reset the memory figures. So the pointer never
# enters the button's rectangle (with a margin), on any screen: a click or a
# drag cannot reach it, and one process lives through the whole soak. The
# console's `quit` is never typed before the end: `q` is not among the
# random letters, and no other command or setting name holds one.
read -r qx qy qw qh <<< "$(menu_rect main btn_quit.tga "$w" "$h")"
[ -n "$qh" ] || fail "no Quit button in the main menu"
qx=$((qx - 8)) qy=$((qy - 8)) qw=$((qw + 16)) qh=$((qh + 16))
pick_point() {
    while :; do
        px=$((RANDOM % w)) py=$((RANDOM % h))
        ((px < qx || px > qx + qw || py < qy || py > qy + qh)) && return
    done
}

# The console opens and closes only on backquote, so its state follows from
# the backquotes sent. A key sent straight after itself gets a Shift between,
# or the classic SDL may take it for auto-repeat and drop it.
console_open=0
last_key=
press() {
    local k list=()
    for k in "$@"; do
        [ "$k" = "$last_key" ] && list+=(Shift_L)
        list+=("$k")
        last_key=$k
        [ "$k" = grave ] && console_open=$((1 - console_open))
    done
    xdotool key --delay 40 "${list[@]}" 2> /dev/null
}
type_text() { [ -n "$1" ] && press $(text_keys "$1"); }
note() { printf '%4d s  %s\n' $((SECONDS - start)) "$*" >> "$work/actions.log"; }

# Settings: the absurd values first (each is typed at least once), then sane
# ones; random lines take any registered name with a value from the pool.
absurd=("r_blurpower 1e9" "volume nan" "screenwidth -5" "brightness abc" "skyscroll 1e30"
    "r_blurzoom -1e38" "con_alpha inf" "brightness -1" "volume 1e40" "r_blurpower -25" "skyscroll nan"
    "screenheight 0" "con_red 99999999999" "r_blur 2" "showfps -1" "r_blurzoom 1e30")
sane=("volume 0.5" "brightness 1" "r_blur 1" "r_blur 0" "showfps 1" "showfps 0" "r_particles 1"
    "r_particles 0" "con_alpha 0.6" "skyscroll 0.1" "r_blurpower 25" "r_blurzoom 0.02" "con_green 0.3")
mapfile -t names < <(grep -o '^CVAR_DEF([a-z_]*' "$root/common/cvartable.cpp" | cut -d'(' -f2)
[ "${#names[@]}" -gt 0 ] || fail "no cvar names in common/cvartable.cpp"
values=(0 1 0.5 2 -1 100 1e9 -1e9 nan inf -inf abc 0.02 12345678901234567890 1e-9 "1 2 3" "" ".")
letters=abcdefghijklmnoprstuvwxyz0123456789  # no q: see above
next_absurd=0

cvar_line() {
    local text
    if [ "$next_absurd" -lt "${#absurd[@]}" ]; then
        text=${absurd[next_absurd]}
        next_absurd=$((next_absurd + 1))
    else
        case $((RANDOM % 3)) in
            0) text=${sane[RANDOM % ${#sane[@]}]} ;;
            1) text=${absurd[RANDOM % ${#absurd[@]}]} ;;
            *) text="${names[RANDOM % ${#names[@]}]} ${values[RANDOM % ${#values[@]}]}" ;;
        esac
        # Now and then the bare name (shows the value) or its help line.
        case $((RANDOM % 10)) in
            0) text=${text%% *} ;;
            1) text="?${text%% *}" ;;
        esac
    fi
    note "console: $text"
    [ "$console_open" -eq 1 ] || press grave
    press Return  # a half-typed random line goes first, on its own
    sleep 0.1
    type_text "$text"
    sleep 0.15  # a Return right behind a letter was seen dropped on sdl12-compat
    press Return
    sleep 0.1
    press grave
}

random_text() {
    local n=$((1 + RANDOM % 8)) text=
    while [ "$n" -gt 0 ]; do
        text+=${letters:RANDOM % ${#letters}:1}
        n=$((n - 1))
    done
    note "type $text"
    type_text "$text"
}

declare -A done_count
act() {
    local r=$((RANDOM % 100)) kind
    if ((r < 25)); then
        kind=move
        pick_point
        xdotool mousemove --window "$wid" "$px" "$py"
    elif ((r < 40)); then
        kind=click
        pick_point
        note "click $px $py"
        xdotool mousemove --window "$wid" "$px" "$py" sleep 0.05 click 1
    elif ((r < 44)); then
        kind=drag
        pick_point
        note "drag from $px $py"
        xdotool mousemove --window "$wid" "$px" "$py" sleep 0.05 mousedown 1
        for _ in 1 2 3; do
            pick_point
            xdotool mousemove --window "$wid" "$px" "$py" sleep 0.05
        done
        xdotool mouseup 1
    elif ((r < 50)); then
        kind=console; note "backquote"; press grave
    elif ((r < 55)); then
        kind=escape; note "Escape"; press Escape
    elif ((r < 63)); then
        kind=space; note "Space"; press space
    elif ((r < 68)); then
        kind="return"; note "Return"; press Return
    elif ((r < 75)); then
        kind=other_key
        local others=(Up Down Left Right Prior Next BackSpace Tab Home End) key
        key=${others[RANDOM % ${#others[@]}]}
        note "$key"; press "$key"
    elif ((r < 85)); then
        kind=typing; random_text
    else
        kind=setting; cvar_line
    fi
    done_count[$kind]=$((${done_count[$kind]:-0} + 1))
}

# Memory: a sample every minute; the baseline is the first minute's (half
# way through a one-minute soak), when every asset is long loaded. The
# heap's share is shown too: the software OpenGL driver's allocations live
# there, and freed heap stays resident.
heap_kb() { awk '/\[heap\]$/ { h = 1; next } /^[0-9a-f]+-/ { h = 0 } h && /^Rss:/ { print $2 }' "/proc/$pid/smaps" 2> /dev/null; }
# Warm-up before the clock starts. The software OpenGL driver (llvmpipe)
# compiles and keeps code for each drawing state it meets, and it builds each
# frame in memory of its own before drawing it: about 32 kB for every draw
# call, freed when the frame is drawn but kept by the allocator for the next
# one. Every glyph of text is a draw call of its own (one display list per
# character), so the process grows to the busiest frame seen so far: a full
# console of full-width lines costs some 60 MB, the options screen under it
# with its restart notice (drawn once per item of the screen) some 60 MB
# more. Measured with heaptrack: those blocks are allocated by the driver
# under glPrint and freed each frame; softpipe (no JIT, no frame memory)
# stays flat under the same input. Such growth is bounded by the text a
# screen can hold, but a random run meets its busiest frame at a random
# time, and then the driver's growth reads as the game's. So the busiest
# frames come first: blur on at its largest count of copies (the longest
# shader the game compiles), particles on; the console filled with lines as
# wide as it draws and a full line left at its prompt, over the main menu
# and its particle bursts, the options screen with its notice (fullscreen
# clicked twice: the setting ends as it was) and play; then play with the
# ball out; the three settings back to their defaults with the console
# open; the console closed.
warm_up() {
    local nx ny nw nh ox oy ow oh fx fy fw fh bx by bw bh long line i
    read -r nx ny nw nh <<< "$(menu_rect main btn_newgame.tga "$w" "$h")"
    read -r ox oy ow oh <<< "$(menu_rect main btn_options.tga "$w" "$h")"
    read -r fx fy fw fh <<< "$(menu_rect options fullscreen "$w" "$h")"
    read -r bx by bw bh <<< "$(menu_rect options btn_back.tga "$w" "$h")"
    [ -n "$nh" ] && [ -n "$oh" ] && [ -n "$fh" ] && [ -n "$bh" ] || fail "a menu item of the warm-up is missing"
    warm_click() { xdotool mousemove --window "$wid" $(($1 + $3 / 2)) $(($2 + $4 / 2)) sleep 0.1 click 1; sleep 1; }
    press grave
    for line in "r_blur 1" "r_particles 1" "r_blurpower 1e9"; do
        type_text "$line"; sleep 0.15; press Return
    done
    # 100 characters, as long as a typed line may be, no q (see above); an
    # unknown command, so its echo and the log line that answers it are
    # both wider than the screen. Recalled and sent again, ten times over:
    # twenty lines, more than the half screen shows. They stay in the
    # history, where the run's Up presses may find them later.
    long=$(printf 'abcdefghij%.0s' 1 2 3 4 5 6 7 8 9 10)
    type_text "$long"; sleep 0.15; press Return
    for i in 1 2 3 4 5 6 7 8 9; do
        press Up; sleep 0.1; press Return
    done
    press Up
    sleep 4
    warm_click "$ox" "$oy" "$ow" "$oh"
    warm_click "$fx" "$fy" "$fw" "$fh"
    warm_click "$fx" "$fy" "$fw" "$fh"
    sleep 3
    warm_click "$bx" "$by" "$bw" "$bh"
    warm_click "$nx" "$ny" "$nw" "$nh"
    sleep 2
    press Return grave
    press space
    for _ in 1 2 3 4 5 6; do
        xdotool mousemove --window "$wid" $((RANDOM % w)) $((h / 2))
        sleep 1
    done
    press grave
    for line in "r_blur 0" "r_particles 0" "r_blurpower 25"; do
        type_text "$line"; sleep 0.15; press Return
    done
    sleep 2
    press grave
    sleep 2
}
rss_warm=$(rss_kb)
warm_up
echo "warm-up: VmRSS $rss_warm kB before, $(rss_kb) kB after (heap $(heap_kb) kB)"

total=$((minutes * 60))
baseline_at=$((minutes > 1 ? 60 : 30))
rss_base='' rss_mid='' rss_end='' next_sample=$baseline_at
start=$SECONDS
premature=
while [ $((SECONDS - start)) -lt "$total" ]; do
    alive || { premature=$((SECONDS - start)); break; }
    act
    printf -v pause '0.%03d' $((50 + RANDOM % 300))
    sleep "$pause"
    if [ $((SECONDS - start)) -ge "$next_sample" ]; then
        rss=$(rss_kb)
        [ -z "$rss_base" ] && rss_base=$rss
        [ -z "$rss_mid" ] && [ $((SECONDS - start)) -ge $((total / 2)) ] && rss_mid=$rss
        echo "$((SECONDS - start)) s: VmRSS ${rss:-?} kB (heap $(heap_kb) kB)"
        note "VmRSS ${rss:-?} kB"
        [ -n "${SHOTS:-}" ] && import -window "$wid" "$SHOTS/soak-$((SECONDS - start))s.png" 2> /dev/null
        next_sample=$(((next_sample / 60 + 1) * 60))
    fi
done

failures=()
if [ -n "$premature" ]; then
    wait "$pid"
    status=$?
    pid=
    failures+=("the game ended by itself after $premature s of soak (status $status)")
    echo "the game ended after $premature s, status $status; the last input sent:"
    tail -n 15 "$work/actions.log"
else
    rss_end=$(rss_kb)
    echo "end: VmRSS $rss_end kB (heap $(heap_kb) kB)"
    # The console is normally closed here; if a backquote went astray, the
    # next attempt opens it.
    for _ in 1 2 3; do
        [ "$console_open" -eq 1 ] || press grave
        press Return
        sleep 0.1
        type_text quit
        sleep 0.15
        press Return
        for _ in $(seq 1 100); do alive || break; sleep 0.1; done
        alive || break
        console_open=0
    done
    if alive; then
        failures+=("\`quit\` typed three times did not end the game: ended with SIGTERM")
        kill -TERM "$pid"
        for _ in $(seq 1 300); do alive || break; sleep 0.1; done
        alive && fail "the game did not end on SIGTERM either"
    fi
    wait "$pid"
    status=$?
    pid=
fi

echo "input sent:$(for k in "${!done_count[@]}"; do printf ' %s %s' "$k" "${done_count[$k]}"; done)"
echo "exit status: $status"
[ "$status" -eq 0 ] || failures+=("exit status $status")

# prefs.cfg: every saved cvar in registration order, "name value" (the
# value may be empty or hold blanks), nothing else.
prefs=$data/prefs.cfg
mapfile -t saved < <(grep '^CVAR_DEF(.*CVAR_SAVED' "$root/common/cvartable.cpp" | cut -d'(' -f2 | cut -d, -f1)
if [ ! -f "$prefs" ]; then
    failures+=("prefs.cfg was not written")
    echo "prefs.cfg: missing"
elif [ "$(cut -d' ' -f1 "$prefs" | tr '\n' ' ')" = "${saved[*]} " ] &&
     [ "$(grep -c ' ' "$prefs")" -eq "${#saved[@]}" ] && [ "$(tail -c 1 "$prefs" | od -An -c | tr -d ' ')" = '\n' ]; then
    echo "prefs.cfg: written, parses (${#saved[@]} settings):" $(tr '\n' ';' < "$prefs")
else
    failures+=("prefs.cfg does not parse")
    echo "prefs.cfg: written but does not parse:"
    cat -A "$prefs"
fi
# stats.cfg: "<score> <name>" lines, best first, at most 20.
stats=$data/stats.cfg
if [ ! -f "$stats" ]; then
    failures+=("stats.cfg is missing")
    echo "stats.cfg: missing"
elif [ "$(stat -c %Y "$stats")" = "$stats_before" ]; then
    failures+=("stats.cfg was not rewritten")
    echo "stats.cfg: not rewritten"
elif bad=$(grep -vnE '^[0-9]+ ' "$stats"); [ -z "$bad" ] && [ "$(wc -l < "$stats")" -le 20 ] &&
     cut -d' ' -f1 "$stats" | sort -c -s -nr 2> /dev/null && [ "$(tail -c 1 "$stats" | od -An -c | tr -d ' ')" = '\n' ]; then
    echo "stats.cfg: written, parses ($(wc -l < "$stats") entries, best first):" $(tr '\n' ';' < "$stats")
else
    failures+=("stats.cfg does not parse")
    echo "stats.cfg: written but does not parse:"
    cat -A "$stats"
fi

if [ -n "$rss_base" ] && [ -n "$rss_end" ]; then
    growth=$(awk -v a="$rss_base" -v b="$rss_end" 'BEGIN { printf "%.1f", (b - a) * 100 / a }')
    echo "VmRSS: $rss_base kB after $baseline_at s, $rss_end kB at the end: growth $growth %"
    # Told apart from a leak, which keeps its pace: growth that levels off
    # is a cache or the heap's high-water mark.
    [ -n "$rss_mid" ] && [ "$minutes" -gt 2 ] &&
        echo "VmRSS over the second half: $rss_mid kB to $rss_end kB," \
            "$(awk -v a="$rss_mid" -v b="$rss_end" 'BEGIN { printf "%.1f", (b - a) * 100 / a }') %"
    awk -v g="$growth" 'BEGIN { exit !(g < 10) }' || failures+=("memory grew by $growth %")
else
    echo "VmRSS: not measured to the end"
fi

errors=$(grep ERROR "$work/game/log.txt" 2> /dev/null)
echo "log.txt: $(grep -c '' "$work/game/log.txt" 2> /dev/null || echo 0) lines, $(grep -c ERROR <<< "$errors") with ERROR"
# Each distinct line once, with how often it came.
[ -n "$errors" ] && awk '{ n[$0]++; if (n[$0] == 1) order[++k] = $0 } END { for (i = 1; i <= k; i++) printf "  %5d x %s\n", n[order[i]], order[i] }' <<< "$errors"

if [ -n "${SOAK_KEEP:-}" ]; then
    mkdir -p "$SOAK_KEEP"
    cp "$work/actions.log" "$work/game/log.txt" "$SOAK_KEEP/" 2> /dev/null
    cp "$data/prefs.cfg" "$data/stats.cfg" "$SOAK_KEEP/" 2> /dev/null
    echo "kept in $SOAK_KEEP: the input sent (actions.log), log.txt, prefs.cfg, stats.cfg"
fi
if [ ${#failures[@]} -gt 0 ]; then
    printf 'SOAK FAILED: %s\n' "${failures[@]}"
    exit 1
fi
echo "soak: ok"
