#!/usr/bin/env bash
# The check to run while working: an incremental build of build/ (warnings are
# errors), the layering, the source layout, and the unit and window tests
# under a virtual X server. Well under a minute after a one-file change. The
# end-to-end tests, the sanitizers, fuzzing and the package are left to
# scripts/test.sh, which CI runs.
#
# Usage: scripts/check.sh [CTEST ARGS...]   e.g. scripts/check.sh -R Ball
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)
log=$(mktemp)
trap 'rm -f "$log"' EXIT

[ -f build/CMakeCache.txt ] || cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELTHRA_WERROR=ON -DVELTHRA_TESTS=ON > /dev/null
if ! cmake --build build -j"$jobs" > "$log" 2>&1; then
    grep -v '^\[ *[0-9]*%\]' "$log"
    exit 1
fi

bash scripts/check-layers.sh
python3 scripts/check-calls.py build
bash scripts/check-format.sh

if ! (cd build && ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 1024x768x24 -noreset" \
        ctest -L 'unit|gl' -j"$jobs" --timeout 120 --output-on-failure "$@") > "$log" 2>&1; then
    cat "$log"
    exit 1
fi
grep -E 'tests passed|Total Test time' "$log"
