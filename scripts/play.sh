#!/usr/bin/env bash
# One command for a fresh Debian 12 machine: install, build, play.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
exec build/game/velthra "$@"
