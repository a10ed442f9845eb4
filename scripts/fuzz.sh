#!/usr/bin/env bash
# Fuzzing the game's loaders
# ==========================
# fuzz/ holds one libFuzzer target per loader, each feeding its bytes through
# the game's own entry point, with the sanitizers on:
#
#   tga        TGA_Read                      (pictures)
#   solid      CSolid::Load, getTexture      (models)
#   particles  ParticleLoad                  (particle effect files)
#   world      World_Load, World_Setup       (level files)
#   menu       Menu_Load                     (the menu file)
#   settings   Cvar_Load, Cvar_Save          (prefs.cfg; a save must load back the same)
#   scores     Scores_Load, Scores_Save      (stats.cfg; best first, saved table loads back the same)
#   zip        readZipFile                   (a damaged assets.zip)
#   ogg        LoadOGG, OpenStream, Update   (sounds whole and streamed, on OpenAL's null output)
#   console    Cvar_Run, Cmd_RunCommand      (typed console lines)
#
# Each process works in a scratch folder of its own (the loaders read
# "data/..." from the working directory); nothing is written in the
# repository. fuzz/corpus/<name>/ is a small minimised corpus, seeded from our
# own data (data/, assets/default.cfg, the built assets.zip and pictures, the
# first Ogg pages of our splash jingle) and grown by fuzzing;
# fuzz/regressions/<name>/ keeps the inputs of fixed findings; fuzz/dict/ has
# a dictionary per format. The ordinary build replays both folders through
# every target as the CTest tests fuzz_replay_<name> (label unit), so the
# sanitizer build of scripts/test.sh checks them too.
#
# This script builds the targets with clang in build-fuzz/ (or FUZZ_BUILD)
# (CC=clang CXX=clang++ cmake -DVELTHRA_FUZZ=ON), runs each target for
# SECONDS with a copy of its corpus, two at a time, and prints one line per
# target: executions, executions per second, corpus files after the run, and
# findings (crash-, leak-, timeout- and oom- files libFuzzer wrote; a target
# that ends badly without one counts as a finding too). It installs nothing:
# it needs clang and libFuzzer's runtime (Debian: clang libclang-rt-14-dev).
#
# Usage: scripts/fuzz.sh [SECONDS] [TARGET...]
#   SECONDS          time for each target (default 20; 0 with FUZZ_RUNS: no time limit)
#   TARGET           names from the list above (default: all)
# Environment:
#   FUZZ_RUNS=N      also stop each target after N executions
#   FUZZ_PARALLEL=N  targets run at once (default 2)
#   FUZZ_BUILD=DIR   the clang build to use (default build-fuzz; scripts/test.sh hands
#                    it its sanitizer build, which is configured for fuzzing too)
#   FUZZ_OUT=DIR     corpora, logs and findings of the run (default build-fuzz/fuzz-out;
#                    each target's folder is emptied when it starts)
#   FUZZ_RSS_MB=N    libFuzzer's -rss_limit_mb (default 2048)
#   FUZZ_MALLOC_MB=N libFuzzer's -malloc_limit_mb, the largest single allocation (default 512)
#   FUZZ_MERGE=1     after a clean run, minimise the corpus with -merge=1 and write it back
#                    into fuzz/corpus/<name>/ (the only way this script changes the repository)
# Exit status: 0 when nothing was found, 1 when any target found something,
# 2 when the tools are missing or the arguments are wrong.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
all_targets=(tga solid particles world menu settings scores zip ogg console)

seconds=20
if [ $# -gt 0 ] && [[ $1 =~ ^[0-9]+$ ]]; then
    seconds=$1
    shift
fi
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=("${all_targets[@]}")
for t in "${targets[@]}"; do
    if [[ " ${all_targets[*]} " != *" $t "* ]]; then
        echo "fuzz.sh: unknown target '$t' (known: ${all_targets[*]})" >&2
        exit 2
    fi
done
runs=${FUZZ_RUNS:-}
if [ -n "$runs" ] && ! [[ $runs =~ ^[0-9]+$ ]]; then
    echo "fuzz.sh: FUZZ_RUNS must be a number" >&2
    exit 2
fi
if [ "$seconds" -eq 0 ] && [ -z "$runs" ]; then
    echo "fuzz.sh: SECONDS 0 needs FUZZ_RUNS, or the targets never stop" >&2
    exit 2
fi
parallel=${FUZZ_PARALLEL:-2}
build=${FUZZ_BUILD:-$root/build-fuzz}
out=${FUZZ_OUT:-$build/fuzz-out}
rss=${FUZZ_RSS_MB:-2048}
malloc_mb=${FUZZ_MALLOC_MB:-512}

# ---- The tools: clang, and a program that links with libFuzzer.
if ! command -v clang >/dev/null || ! command -v clang++ >/dev/null; then
    echo "fuzz.sh: clang is not installed (Debian: apt-get install clang libclang-rt-14-dev)" >&2
    exit 2
fi
probe=$(mktemp -d)
echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' > "$probe/probe.cpp"
if ! clang++ -fsanitize=fuzzer,address,undefined "$probe/probe.cpp" -o "$probe/probe" 2> "$probe/err"; then
    echo "fuzz.sh: clang cannot link a libFuzzer program (Debian: apt-get install libclang-rt-14-dev):" >&2
    cat "$probe/err" >&2
    rm -rf "$probe"
    exit 2
fi
rm -rf "$probe"

# ---- Build.
echo "== building the fuzz targets in $build"
mkdir -p "$build"
if ! CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DVELTHRA_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo > "$build/fuzz-configure.log" 2>&1; then
    cat "$build/fuzz-configure.log" >&2
    exit 2
fi
build_targets=()
for t in "${targets[@]}"; do build_targets+=("fuzz_$t"); done
if ! cmake --build "$build" -j"$(nproc)" --target "${build_targets[@]}" > "$build/fuzz-build.log" 2>&1; then
    tail -40 "$build/fuzz-build.log" >&2
    exit 2
fi

# ---- Run.
# The leaks the libraries under us keep for the whole process (openal-soft's
# device above all) are not the loaders'; the test suite suppresses the same.
export LSAN_OPTIONS=suppressions=$root/tests/sanitizer/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ALSOFT_DRIVERS=null
# The targets' scratch folders: memory-backed where possible (the settings and
# score targets sync a file per input); a crash leaves its folder behind, so
# they all live under one folder that goes when the script ends.
scratch_parent=/dev/shm
[ -w "$scratch_parent" ] || scratch_parent=${TMPDIR:-/tmp}
scratch=$(mktemp -d "$scratch_parent/velthra-fuzz-run.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

run_target() {
    local t=$1 dir=$out/$1
    rm -rf "$dir"
    mkdir -p "$dir/corpus" "$dir/findings" "$scratch/$t"
    cp -r "$root/fuzz/corpus/$t/." "$dir/corpus/"
    local args=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb="$rss" -malloc_limit_mb="$malloc_mb"
                -print_final_stats=1 -artifact_prefix="$dir/findings/")
    [ -f "$root/fuzz/dict/$t.dict" ] && args+=(-dict="$root/fuzz/dict/$t.dict")
    [ -n "$runs" ] && args+=(-runs="$runs")
    TMPDIR=$scratch/$t "$build/fuzz/fuzz_$t" "${args[@]}" "$dir/corpus" > "$dir/log.txt" 2>&1
    echo $? > "$dir/status"
    if [ "${FUZZ_MERGE:-0}" = 1 ] && [ "$(cat "$dir/status")" = 0 ]; then
        mkdir -p "$dir/merged"
        if TMPDIR=$scratch/$t "$build/fuzz/fuzz_$t" -merge=1 -timeout=10 -rss_limit_mb="$rss" \
               -malloc_limit_mb="$malloc_mb" "$dir/merged" "$root/fuzz/corpus/$t" "$dir/corpus" \
               > "$dir/merge.txt" 2>&1; then
            rm -f "$root/fuzz/corpus/$t"/*
            cp "$dir/merged"/* "$root/fuzz/corpus/$t/"
        else
            echo "merge failed" > "$dir/merge-failed"
        fi
    fi
    rm -rf "${scratch:?}/$t"
}

echo "== fuzzing ${targets[*]}: ${seconds}s each${runs:+, at most $runs runs}, $parallel at a time; output in $out"
for t in "${targets[@]}"; do
    while [ "$(jobs -rp | wc -l)" -ge "$parallel" ]; do
        wait -n
    done
    run_target "$t" &
done
wait

# ---- Report.
found_any=0
printf '%-10s %12s %10s %8s %9s\n' target executions exec/s corpus findings
for t in "${targets[@]}"; do
    dir=$out/$t
    log=$dir/log.txt
    execs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' | tail -1)
    [ -n "$execs" ] || execs=$(sed -n 's/^Done \([0-9]*\) runs.*/\1/p' "$log" | tail -1)
    rate=$(grep -o 'stat::average_exec_per_sec: *[0-9]*' "$log" | grep -o '[0-9]*$' | tail -1)
    corpus=$(find "$dir/corpus" -type f | wc -l)
    findings=$(find "$dir/findings" -type f \( -name 'crash-*' -o -name 'leak-*' -o -name 'timeout-*' -o -name 'oom-*' \) | wc -l)
    status=$(cat "$dir/status" 2>/dev/null || echo "?")
    note=""
    if [ "$findings" -gt 0 ]; then
        note="  see $dir/findings and $log"
    elif [ "$status" != 0 ]; then
        findings=1
        note="  ended with status $status without a finding file: see $log"
    fi
    [ -f "$dir/merge-failed" ] && note="$note  (merge failed: see $dir/merge.txt)"
    [ "$findings" -gt 0 ] && found_any=1
    printf '%-10s %12s %10s %8s %9s%s\n' "$t" "${execs:-?}" "${rate:-?}" "$corpus" "$findings" "$note"
done
exit $found_any
