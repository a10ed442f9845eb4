#!/usr/bin/env bash
# Keeps the house in order:
#  1. includes point down: a file may include headers of its own layer or of
#     the layers below it (floor < services < modules < shell);
#  2. rules apart from drawing: the files of game/, console/, menu/ and
#     particles/ that decide make no OpenGL, GLU, SDL or OpenAL call. Drawing
#     lives in *_draw.cpp files and render/ helpers; SDL key names and events
#     stay in menu/input.*.
# Usage: scripts/check-layers.sh [SOURCE_ROOT]   (exit 1 on any finding)
set -uo pipefail
root=${1:-$(cd "$(dirname "$0")/.." && pwd)}
cd "$root" || exit 2

# The layer of a source or header, by its path without extension.
layer_of() {
    local f=${1%.*}
    case "$f" in
        app/appstatus|app/archive|app/log|app/timer|app/utils) echo 0 ;;
        platform/clock) echo 0 ;;
        console/config|console/console|console/cvar|console/cvartable) echo 0 ;;
        game/gamestats) echo 0 ;;
        render/*|scene/*|sound/*) echo 1 ;;
        game/*|menu/*|particles/*|console/*) echo 2 ;;
        app/*|platform/*) echo 3 ;;
        *) echo -1 ;;
    esac
}
names=(floor services modules shell)

status=0
files=$(find app console game scene menu render particles sound platform \
             -name '*.cpp' -o -name '*.h' 2>/dev/null | sort)

for file in $files; do
    mine=$(layer_of "$file")
    [ "$mine" -ge 0 ] || continue
    while IFS= read -r inc; do
        theirs=$(layer_of "$inc")
        [ "$theirs" -ge 0 ] || continue
        if [ "$theirs" -gt "$mine" ]; then
            echo "$file: includes \"$inc\" (${names[$theirs]}) from the ${names[$mine]} layer"
            status=1
        fi
    done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"\([^"]*\)".*/\1/p' "$file")
done

# Our own names that look like library calls.
allowed='^(glPrint|SDL_checkKeys|SDL_main)$'
for file in $files; do
    case "$file" in
        game/*|console/*|menu/*|particles/*) ;;
        *) continue ;;
    esac
    case "$file" in
        *_draw.cpp|menu/input.h|menu/input.cpp) continue ;;
    esac
    # Comments and string literals are not calls.
    found=$(sed -e 's://.*$::' -e 's/"\([^"\\]\|\\.\)*"/""/g' "$file" |
            grep -noE '\b(gl|glu|alc?)[A-Z][A-Za-z0-9_]*[[:space:]]*\(|\bSDL_[A-Za-z0-9_]+[[:space:]]*\(' |
            sed 's/[[:space:]]*($//')
    while IFS= read -r hit; do
        [ -n "$hit" ] || continue
        name=${hit#*:}
        [[ "$name" =~ $allowed ]] && continue
        echo "$file:${hit%%:*}: calls $name in a file that holds rules"
        status=1
    done <<< "$found"
done

[ $status -eq 0 ] && echo "check-layers: includes point down, rules files make no GL/SDL/AL call"
exit $status
