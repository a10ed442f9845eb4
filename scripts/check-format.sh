#!/usr/bin/env bash
# Every C++ source of the tree laid out as .clang-format says; names the files
# that are not and exits 1. `bash scripts/check-format.sh --fix` rewrites them.
set -uo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.cpp' '*.h' 2>/dev/null || find . -path ./build\* -prune -o \( -name '*.cpp' -o -name '*.h' \) -print)
if [ "${1:-}" = --fix ]; then
    clang-format -i "${files[@]}"
    exit 0
fi
if ! clang-format --dry-run -Werror "${files[@]}" 2> /tmp/check-format.$$; then
    grep -o '^[^:]*:[0-9]*:[0-9]*: error' /tmp/check-format.$$ | cut -d: -f1 | sort -u | sed 's/$/: not laid out as .clang-format says (scripts\/check-format.sh --fix)/'
    rm -f /tmp/check-format.$$
    exit 1
fi
rm -f /tmp/check-format.$$
echo "check-format: ${#files[@]} files laid out as .clang-format says"
