#!/usr/bin/env bash
# Installs what is missing, builds, and runs the whole test suite under a
# virtual X server with OpenAL on its null backend (no screen or sound card
# needed). Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
export ALSOFT_DRIVERS=null
cd build
# -noreset: Xvfb otherwise restarts whenever its last client leaves and
# refuses the next test's window while it does.
xvfb-run -a -s "-screen 0 1024x768x24 -noreset" ctest --output-on-failure --timeout 300
