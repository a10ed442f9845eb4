#!/usr/bin/env bash
# Installs what is missing, builds, and runs the whole test suite twice under
# a virtual X server with OpenAL on its null backend (no screen or sound card
# needed): once on the optimised gcc build with warnings as errors, once on a
# clang build with AddressSanitizer and UndefinedBehaviorSanitizer, which is
# also instrumented for fuzzing, so the same objects give the fuzz targets
# (each loader's target runs FUZZ_SECONDS, default 20). Also checks the
# layering and the source layout, repeats the end-to-end and window tests on
# sdl12-compat and plays the Debian package. Prints each step's time at the
# end. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
jobs=$(nproc)

steps=()
step_started=$SECONDS
step_name=
step() {  # step NAME: closes the step before, opens this one
    [ -n "$step_name" ] && steps+=("$(printf '%-52s %4d s' "$step_name" $((SECONDS - step_started)))")
    step_name=$1
    step_started=$SECONDS
    [ "$1" = end ] || echo "== $1"
}
report() {
    local rc=$? failed=$step_name
    step end
    echo "== step times"
    printf '%s\n' "${steps[@]}"
    printf '%-52s %4d s\n' total "$SECONDS"
    [ $rc -eq 0 ] || echo "FAILED (exit $rc) in: $failed"
}
trap report EXIT

step "packages"
bash scripts/install-deps.sh

step "layers and layout"
bash scripts/check-layers.sh
bash scripts/check-format.sh

# Two tests per core: the end-to-end scripts spend most of their time waiting
# for the game's frames and their own pauses, each on an X server of its own
# (scripts/repeat.sh LOAD=1 runs them with both cores busy elsewhere).
test_jobs=$((jobs * 2))
run_suite() {
    # -noreset: Xvfb otherwise restarts whenever its last client leaves and
    # refuses the next test's window while it does.
    (cd "$1" && xvfb-run -a -s "-screen 0 1024x768x24 -noreset" \
        ctest --output-on-failure --timeout 300 -j"$test_jobs")
}
export ALSOFT_DRIVERS=null

step "build (gcc, warnings are errors)"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELTHRA_WERROR=ON -DVELTHRA_TESTS=ON > /dev/null
cmake --build build -j"$jobs"
cmake --build build -j"$jobs" --target layer_check
python3 scripts/check-calls.py build

step "tests"
run_suite build

step "build (clang, sanitizers, fuzzing instrumentation)"
CC=clang CXX=clang++ cmake -S . -B build-san -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELTHRA_SANITIZE=ON \
    -DVELTHRA_FUZZ=ON -DVELTHRA_WERROR=ON -DVELTHRA_TESTS=ON > /dev/null
cmake --build build-san -j"$jobs"

step "tests under the sanitizers"
# LP_NUM_THREADS=0: llvmpipe renders on the calling thread, and
# MESA_SHADER_CACHE_DISABLE: no cache thread writes compiled shaders, so no
# driver thread is still running (or exiting) while LeakSanitizer stops the
# process at exit; a thread that ends under its tracer crashes the scan.
ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 \
LSAN_OPTIONS=suppressions=$root/tests/sanitizer/lsan.supp:print_suppressions=0 \
UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
LP_NUM_THREADS=0 MESA_SHADER_CACHE_DISABLE=true \
    run_suite build-san

# The ordinary build replayed every fuzz corpus (fuzz_replay_<target>); here
# each loader's fuzz target runs for a short while from the sanitizer build's
# objects (the long runs are recorded in the README).
step "fuzzing the loaders"
FUZZ_BUILD=$root/build-san bash scripts/fuzz.sh "${FUZZ_SECONDS:-20}"

# ---------------------------------------------------------------------------
# Both SDL 1.2 libraries players have. The game is built against the classic
# SDL 1.2; sdl12-compat (SDL 1.2 carried on SDL 2, what newer distributions
# ship) installs beside it in a folder of its own, so the same executable
# runs on it with LD_LIBRARY_PATH. The end-to-end runs are repeated there as
# players get it, and the tests that open a window with its OpenGL scaling
# off: with it on, "framebuffer 0" is a framebuffer object of its own, which
# the tests that read the bound framebuffer would see.
step "end-to-end and window tests on sdl12-compat"
compat=$(dirname "$(dpkg -L libsdl1.2-compat | grep -m1 '/libSDL-1.2.so.0$')")
libs=$(LD_LIBRARY_PATH=$compat ldd build/game/velthra)
grep -q "$compat/libSDL-1.2.so.0" <<< "$libs" || { echo "the game does not load sdl12-compat from $compat"; exit 1; }
# Each end-to-end script starts an X server of its own.
(cd build && LD_LIBRARY_PATH=$compat ctest -L e2e --output-on-failure --timeout 300 -j"$test_jobs")
(cd build && LD_LIBRARY_PATH=$compat SDL12COMPAT_OPENGL_SCALING=0 xvfb-run -a -s "-screen 0 1024x768x24 -noreset" \
    ctest -L gl --output-on-failure --timeout 300 -j"$test_jobs")

# The Debian package: built with its library dependencies, installed with
# apt-get, played by an ordinary user, removed without a trace.
step "Debian package"
rm -f build/velthra_*.deb
(cd build && cpack -G DEB > /dev/null)
bash tests/e2e/install_deb.sh build/velthra_*_amd64.deb
