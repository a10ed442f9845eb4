#!/usr/bin/env bash
# Flake hunting: runs the end-to-end and window tests N times in a row on both
# SDL 1.2 libraries (the classic one the game is built against, and
# sdl12-compat), then prints how often each test passed and failed. Any
# failure makes the exit status 1: a test that fails once in many runs is a
# bug to find, in the test or in the game.
#
# Usage: scripts/repeat.sh N [CTEST ARGS...]    e.g. scripts/repeat.sh 5 -R e2e_menus
# Environment: BUILD_DIR (default build/, built already), LOAD=1 keeps both
# cores busy with `stress-ng --cpu 2` meanwhile (apt-get install stress-ng),
# LIBS="classic compat" (the default) to choose the libraries, JOBS (default
# two per core, as scripts/test.sh runs them) tests at once.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build}
rounds=${1:?usage: scripts/repeat.sh N [CTEST ARGS...]}
shift
[ -f "$build/CTestTestfile.cmake" ] || { echo "repeat.sh: no test suite in $build (scripts/build.sh first)" >&2; exit 2; }
compat=$(dirname "$(dpkg -L libsdl1.2-compat 2>/dev/null | grep -m1 '/libSDL-1.2.so.0$')")
log=$(mktemp -d)
load=
cleanup() { [ -n "$load" ] && kill "$load" 2>/dev/null; rm -rf "$log"; }
trap cleanup EXIT
if [ "${LOAD:-0}" = 1 ]; then
    command -v stress-ng >/dev/null || { echo "repeat.sh: LOAD=1 needs stress-ng" >&2; exit 2; }
    stress-ng --cpu 2 --quiet &
    load=$!
fi

declare -A passed=() failed=()
for lib in ${LIBS:-classic compat}; do
    env=(ALSOFT_DRIVERS=null)
    if [ "$lib" = compat ]; then
        [ -n "$compat" ] && [ "$compat" != . ] || { echo "repeat.sh: sdl12-compat is not installed" >&2; exit 2; }
        # As scripts/test.sh runs them: the compat library's own framebuffer
        # object would stand in for the window's in the window tests.
        env+=(LD_LIBRARY_PATH=$compat SDL12COMPAT_OPENGL_SCALING=0)
    fi
    for ((i = 1; i <= rounds; i++)); do
        out=$log/$lib-$i.txt
        start=$(date +%s)
        (cd "$build" && env "${env[@]}" xvfb-run -a -s "-screen 0 1024x768x24 -noreset" \
            ctest -L 'e2e|gl' -j"${JOBS:-$(($(nproc) * 2))}" --timeout 300 --output-on-failure "$@") > "$out" 2>&1
        # "  12/49 Test  #7: e2e_menus ......   Passed   9.87 sec"
        while read -r name result; do
            key="$lib $name"
            if [ "$result" = Passed ]; then
                passed[$key]=$((${passed[$key]:-0} + 1))
            else
                failed[$key]=$((${failed[$key]:-0} + 1))
                cp "$out" "$root/repeat-failure-$lib-$i.txt"
            fi
        done < <(sed -n 's/^ *[0-9]*\/[0-9]* Test *#[0-9]*: \([^ ]*\) [ .*]*\(Passed\|\*\*\*[A-Za-z]*\|Failed\|Timeout\|Not Run\).*/\1 \2/p' "$out")
        echo "$lib round $i: $(grep -Eo '[0-9]+% tests passed.*' "$out" || echo 'no result') ($(($(date +%s) - start)) s)"
    done
done

status=0
printf '\n%-8s %-70s %6s %6s\n' library test passed failed
for key in $(printf '%s\n' "${!passed[@]}" "${!failed[@]}" | sort -u | tr ' ' '|'); do
    k=${key/|/ }
    printf '%-8s %-70s %6d %6d\n' "${k%% *}" "${k#* }" "${passed[$k]:-0}" "${failed[$k]:-0}"
    [ "${failed[$k]:-0}" -eq 0 ] || status=1
done
[ $status -eq 0 ] && echo "no failures" || echo "FAILURES: the output of each failed round is in $root/repeat-failure-*.txt"
exit $status
