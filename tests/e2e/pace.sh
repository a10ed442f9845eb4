#!/usr/bin/env bash
# The frame-rate limit in the real game. With "r_maxfps" at its default (no
# such line in prefs.cfg) the main menu draws at most 60 frames a second, 5 %
# allowed, and spends no processor time between them: per frame it costs no
# more than a frame drawn with the limit lifted ("r_maxfps 0" typed in the
# console), twice that allowed. A slow machine draws fewer frames and spends
# more on each, in both phases alike: nothing here asks for a minimum rate.
# Frames are the " --- done drawing " lines of -vlog; processor time, of every
# thread, comes from /proc/PID/stat.
set -u
GAME_DIR=${1:?usage: pace.sh BUILD/game}
. "$(dirname "$0")/lib.sh"
copy_game "$GAME_DIR"
printf '%s\n' 'showfps 0' 'fullscreen 0' 'volume 0.7' 'brightness 1' 'screenwidth 640' 'screenheight 480' \
    'screenbpp 32' 'con_red 0' 'con_green 0' 'con_blue 0' 'con_alpha 0.9' 'r_blur 0' 'r_blurpower 25' \
    'r_blurzoom 0.02' 'r_particles 1' > "$work/game/data/prefs.cfg"

ticks=$(getconf CLK_TCK)
# sample: "frames cpu_ticks wall_ns" now.
sample() {
    local frames cpu
    frames=$(grep -c ' --- done drawing ' "$work/game/log.txt")
    cpu=$(awk '{ sub(/^.*\) /, ""); print $12 + $13 }' "/proc/$pid/stat")
    echo "$frames $cpu $(date +%s%N)"
}
# measure SECONDS: "frames_per_second cores cpu_ms_per_frame" over that time.
measure() {
    local f0 c0 t0 f1 c1 t1
    read -r f0 c0 t0 <<< "$(sample)"
    sleep "$1"
    read -r f1 c1 t1 <<< "$(sample)"
    alive || fail "the game died"
    awk -v f=$((f1 - f0)) -v c=$((c1 - c0)) -v t=$((t1 - t0)) -v hz="$ticks" \
        'BEGIN { s = t / 1e9; printf "%.2f %.3f %.3f\n", f / s, c / hz / s, f ? 1000 * c / hz / f : 0 }'
}

start_game -vlog
wait_menu
read -r fps cores per_frame <<< "$(measure 5)"
echo "limit 60: $fps frames/s, $cores cores, $per_frame ms of processor per frame"
keys grave
line $(text_keys "r_maxfps 0")
keys grave
sleep 1
read -r free_fps free_cores free_per_frame <<< "$(measure 5)"
echo "no limit: $free_fps frames/s, $free_cores cores, $free_per_frame ms of processor per frame"
kill -TERM "$pid"
wait_exit 15

awk -v f="$fps" 'BEGIN { exit !(f <= 63) }' || fail "$fps frames a second at the default limit of 60"
awk -v a="$per_frame" -v b="$free_per_frame" 'BEGIN { exit !(a <= 2 * b + 0.5) }' ||
    fail "a frame at the limit costs $per_frame ms of processor time, $free_per_frame ms without it: time burnt waiting"
grep -qx 'r_maxfps 0' "$work/game/data/prefs.cfg" || fail "the lifted limit was not saved"
echo "e2e pace: ok"
