#!/usr/bin/env bash
# One command for a fresh Debian 12 machine: install what building and playing
# need, build the game and its data (nothing of the tests), play.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh --play
[ -f build/CMakeCache.txt ] || cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build -j"$(nproc)" --target velthra
exec build/game/velthra "$@"
