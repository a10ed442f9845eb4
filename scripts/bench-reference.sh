#!/usr/bin/env bash
# The reference pictures scripts/bench.sh compares with: the last frame of
# each drawn scene of velthra-bench, and a checksum of every frame, as the
# game drew them at a named commit. That commit's sources are unpacked and
# built beside the benchmark's build, once; the pictures are made on this
# machine, since another driver draws other pixels.
#
# Usage: scripts/bench-reference.sh [WIDTHxHEIGHT ...]   (default: 640x480 800x600 1024x768)
# Environment: REFERENCE_COMMIT (default below: the frame as drawn before the
#              drawing was made cheaper), BUILD_DIR (default build-bench),
#              REFERENCE (default BUILD_DIR/reference), BENCH_ARGS (passed on
#              as to scripts/bench.sh: a run compares only with pictures made
#              with the same switches).
# Writes REFERENCE/WIDTHxHEIGHT/*.ppm and REFERENCE/WIDTHxHEIGHT.sums.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
commit=${REFERENCE_COMMIT:-a36c103}
build=${BUILD_DIR:-$root/build-bench}
reference=${REFERENCE:-$build/reference}
sizes=("$@")
[ ${#sizes[@]} -gt 0 ] || sizes=(640x480 800x600 1024x768)
for size in "${sizes[@]}"; do
    [[ $size =~ ^[0-9]+x[0-9]+$ ]] || { echo "bench-reference.sh: not a size: $size (WIDTHxHEIGHT)" >&2; exit 2; }
done
command -v xvfb-run >/dev/null || { echo "bench-reference.sh: xvfb-run is missing (scripts/install-deps.sh)" >&2; exit 1; }
full=$(git -C "$root" rev-parse --verify "$commit^{commit}")

work=$build/reference-build/$full
bench=$work/build/tools/bench/velthra-bench
if [ ! -x "$bench" ]; then
    echo "building velthra-bench of $full in $work ..." >&2
    rm -rf "$work/src"
    mkdir -p "$work/src"
    git -C "$root" archive "$full" | tar -x -C "$work/src"
    cmake -S "$work/src" -B "$work/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build "$work/build" -j"$(nproc)" --target velthra-bench >/dev/null
fi

for size in "${sizes[@]}"; do
    echo "drawing $size ..." >&2
    rm -rf "${reference:?}/$size"
    mkdir -p "$reference/$size"
    # shellcheck disable=SC2086 # BENCH_ARGS is a list of switches
    ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 ${size}x24" \
        "$bench" --size "$size" --shots "$reference/$size" --frame-sums "$reference/$size.sums" ${BENCH_ARGS:-} >/dev/null
done
echo "$full ${BENCH_ARGS:-}" >"$reference/COMMIT"
echo "reference pictures of $full in $reference" >&2
