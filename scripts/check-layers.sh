#!/usr/bin/env bash
# Keeps the house in order, by the layer table of the root CMakeLists.txt
# (VELTHRA_LAYER_TABLE: each folder and its layer, floor < services <
# modules < shell):
#  1. every folder that holds the game's sources is in the table;
#  2. includes point down: a file may include headers of its own layer or of
#     the layers below it;
#  3. no circle of includes between two folders;
#  4. rules apart from drawing: the files of game/, console/, menu/ and
#     particles/ that decide make no OpenGL, GLU, SDL or OpenAL call. Drawing
#     lives in *_draw.cpp files and render/ helpers; SDL key names and events
#     stay in input/.
# Usage: scripts/check-layers.sh [SOURCE_ROOT]   (exit 1 on any finding)
set -uo pipefail
root=${1:-$(cd "$(dirname "$0")/.." && pwd)}
cd "$root" || exit 2

names=(floor services modules shell)
declare -A layer=()
while read -r folder name; do
    for i in "${!names[@]}"; do
        [ "${names[$i]}" = "$name" ] && layer[$folder]=$i
    done
    [ -n "${layer[$folder]:-}" ] || { echo "CMakeLists.txt: folder $folder has an unknown layer \"$name\""; exit 1; }
done < <(sed -n '/^set(VELTHRA_LAYER_TABLE/,/^)/p' CMakeLists.txt | sed -e '1d' -e '$d' -e 's/#.*//' |
         tr -s ' \t\n' '\n' | grep -v '^$' | paste - -)
[ ${#layer[@]} -gt 0 ] || { echo "CMakeLists.txt: no VELTHRA_LAYER_TABLE"; exit 1; }

status=0
# Folders of the game's own sources: everything but the tests, tools, fuzz
# harnesses and the scripts' own helper.
for dir in $(find . -mindepth 2 -maxdepth 2 \( -name '*.cpp' -o -name '*.h' \) -printf '%h\n' | sed 's#^\./##' | sort -u); do
    case "$dir" in tests|tools|fuzz|scripts|build*) continue ;; esac
    if [ -z "${layer[$dir]:-}" ]; then
        echo "$dir/: holds sources but is not in the layer table of CMakeLists.txt"
        status=1
    fi
done

files=$(for dir in "${!layer[@]}"; do find "$dir" -name '*.cpp' -o -name '*.h'; done 2>/dev/null | sort)
edges=""
for file in $files; do
    mine=${file%%/*}
    while IFS= read -r inc; do
        theirs=${inc%%/*}
        [ "$inc" != "$theirs" ] && [ -n "${layer[$theirs]:-}" ] || continue
        [ "$theirs" = "$mine" ] && continue
        edges+="$mine $theirs"$'\n'
        if [ "${layer[$theirs]}" -gt "${layer[$mine]}" ]; then
            echo "$file: includes \"$inc\" (${names[${layer[$theirs]}]}) from the ${names[${layer[$mine]}]} layer"
            status=1
        fi
    done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"\([^"]*\)".*/\1/p' "$file")
done

# tsort names the folders of a circle on standard error.
if ! loop=$(sort -u <<< "$edges" | tsort 2>&1 >/dev/null) || [ -n "$loop" ]; then
    echo "folders include each other in a circle:"
    sed -n 's/^tsort: //p' <<< "$loop" | grep -v 'input contains a loop' | sed 's/^/  /'
    status=1
fi

# Our own names that look like library calls.
allowed='^(glPrint|SDL_checkKeys|SDL_main)$'
for file in $files; do
    case "$file" in
        game/*|console/*|menu/*|particles/*) ;;
        *) continue ;;
    esac
    case "$file" in
        *_draw.cpp) continue ;;
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

[ $status -eq 0 ] && echo "check-layers: every folder in one layer, includes point down and make no circle, rules files make no GL/SDL/AL call"
exit $status
