#!/usr/bin/env bash
# The committed models are exactly what tools/assetgen/make_models.py writes:
# a shape edited by hand, or a generator change not re-run, shows up here.
set -euo pipefail
src=$1
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
python3 "$src/tools/assetgen/make_models.py" "$out" > /dev/null
diff -r "$out" "$src/data/models"
echo "ok: $(ls "$out" | wc -l) models reproduced byte for byte"
