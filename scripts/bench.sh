#!/usr/bin/env bash
# How fast the game runs here: builds velthra-bench (tools/bench), runs it
# under Xvfb once per window size, and prints one table of every scene, then
# start-up, loading and memory, then the goals at 800 x 600.
#
# Usage: scripts/bench.sh [WIDTHxHEIGHT ...]    (default: 640x480 800x600 1024x768)
# Environment: BUILD_DIR (default build-bench beside the sources),
#              BENCH_ARGS (more switches for velthra-bench, e.g. "--frames 600"),
#              REFERENCE (default BUILD_DIR/reference): where a folder per size
#              holds the reference pictures (scripts/bench-reference.sh makes
#              them); each scene's last frame is compared with its picture.
# Needs the build packages and xvfb (scripts/install-deps.sh installs both).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build-bench}
sizes=("$@")
[ ${#sizes[@]} -gt 0 ] || sizes=(640x480 800x600 1024x768)
for size in "${sizes[@]}"; do
    [[ $size =~ ^[0-9]+x[0-9]+$ ]] || { echo "bench.sh: not a size: $size (WIDTHxHEIGHT)" >&2; exit 2; }
done
command -v xvfb-run >/dev/null || { echo "bench.sh: xvfb-run is missing (scripts/install-deps.sh)" >&2; exit 1; }

echo "building velthra-bench in $build ..." >&2
cmake -S "$root" -B "$build" >/dev/null
cmake --build "$build" -j"$(nproc)" --target velthra-bench >/dev/null

results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
reference=${REFERENCE:-$build/reference}
for size in "${sizes[@]}"; do
    echo "running $size ..." >&2
    compare=()
    if [ -d "$reference/$size" ]; then
        compare=(--compare "$reference/$size")
    else
        echo "bench.sh: no reference pictures in $reference/$size (scripts/bench-reference.sh)" >&2
    fi
    # shellcheck disable=SC2086 # BENCH_ARGS is a list of switches
    ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 ${size}x24" \
        "$build/tools/bench/velthra-bench" --size "$size" "${compare[@]}" ${BENCH_ARGS:-} >"$results/$size.txt"
done

# Each line of the benchmark is a kind, then "key value" pairs; a scene's
# name is the quoted text after "scene".
awk -v sizes="${sizes[*]}" '
function value(key,   i) { for (i = 1; i < NF; i++) if ($i == key) return $(i + 1); return "" }
FNR == 1 { size = FILENAME; sub(/.*\//, "", size); sub(/\.txt$/, "", size) }
/^bench / { renderer[size] = $0; sub(/.*renderer "/, "", renderer[size]); sub(/".*/, "", renderer[size])
            step = value("step_ms"); reduction[size] = value("blur_reduction") }
/^(scene|fill) / { name = $0; sub(/^[a-z]+ "/, "", name); sub(/".*/, "", name); rest = $0; sub(/^[a-z]+ "[^"]*" /, "", rest)
            n = split(rest, f, " "); for (i = 1; i < n; i += 2) s[size, name, f[i]] = f[i + 1]
            if ($1 == "fill") { s[size, name, "of_fill"] = "1.000"; fillName = name }
            if (!(name in seen)) { seen[name] = 1; order[++scenes] = name } }
/^picture / { name = $0; sub(/^picture "/, "", name); sub(/".*/, "", name); rest = $0; sub(/^picture "[^"]*" /, "", rest)
              if (rest ~ /^differing_pixels /) { split(rest, f, " "); rest = f[2] " of " f[4] " pixels differ" }
              picture[size, name] = rest; pictures = 1 }
/^startup / { first[size] = value("first_frame_ms"); menu[size] = value("menu_ms") }
/^load / { phases[size] = ""; for (i = 2; i < NF; i += 2) if ($i ~ /_ms$/)
           phases[size] = phases[size] (phases[size] == "" ? "" : " ") $(i + 1) }
/^memory / { floor_[size] = value("floor_mib"); bare[size] = value("window_only_mib"); menuMib[size] = value("menu_mib")
             playMib[size] = value("play_mib"); heapFree[size] = value("menu_heap_free_mib") }
/^note / { sub(/^note /, ""); notes[size] = notes[size] "- " size ": " $0 "\n" }
END {
    count = split(sizes, list, " ")
    printf "Renderer: %s; frame step %s ms of game time; blur summed at 1/%s resolution.\n\n", renderer[list[1]], step, reduction[list[1]]
    # "of one fill": the frame rate of the scene over that of one screen fill
    # (clear, a full-screen quad textured from 256 x 256, swap) in the same run.
    printf "| scene | size | frames | fps | of one fill | median ms | 95th ms | max ms | CPU ms/frame |%s\n", pictures ? " last frame vs reference |" : ""
    printf "| --- | --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: |%s\n", pictures ? " --- |" : ""
    for (k = 1; k <= scenes; k++)
        for (j = 1; j <= count; j++) {
            z = list[j]; if (!((z, order[k], "fps") in s)) continue
            ratio = ((z, order[k], "of_fill") in s) ? s[z, order[k], "of_fill"] : "-"
            printf "| %s | %s | %s | %s | %s | %s | %s | %s | %s |", order[k], z, s[z, order[k], "frames"], s[z, order[k], "fps"], ratio,
                   s[z, order[k], "median_ms"], s[z, order[k], "p95_ms"], s[z, order[k], "max_ms"], s[z, order[k], "cpu_ms_per_frame"]
            if (pictures) printf " %s |", ((z, order[k]) in picture) ? picture[z, order[k]] : "-"
            printf "\n"
        }
    print ""
    print "| size | to first frame ms | to main menu ms | loading phases 0-10, ms |"
    print "| --- | ---: | ---: | --- |"
    for (j = 1; j <= count; j++)
        printf "| %s | %s | %s | %s |\n", list[j], first[list[j]], menu[list[j]], phases[list[j]]
    print ""
    print "| size | RSS empty window MiB (drawing / not yet) | RSS menu MiB | RSS after play MiB | above the empty window MiB | heap kept free in the menu MiB |"
    print "| --- | ---: | ---: | ---: | ---: | ---: |"
    for (j = 1; j <= count; j++) {
        z = list[j]; top = (playMib[z] > menuMib[z]) ? playMib[z] : menuMib[z]
        printf "| %s | %s / %s | %s | %s | %.1f | %s |\n", z, floor_[z], bare[z], menuMib[z], playMib[z], top - floor_[z], heapFree[z]
    }
    z = "800x600"
    if ((z, "menu, blur on", "fps") in s) {
        print ""
        print "Goals at 800x600:"
        on = s[z, "menu, blur on", "fps"]; copies = s[z, "menu, blur on, copies", "fps"]
        printf "- menu, blur on: %s fps (goal 100): %s\n", on, (on >= 100) ? "met" : "NOT met"
        if (copies > 0)
            printf "- menu, blur on vs the copies: %.1f times (goal 3.5): %s\n", on / copies, (on / copies >= 3.5) ? "met" : "NOT met"
        for (k = 1; k <= scenes; k++)
            if (order[k] ~ /^play .*blur off/)
                printf "- %s: %s fps, %s of one fill (goal 300 fps): %s\n", order[k], s[z, order[k], "fps"], s[z, order[k], "of_fill"],
                       (s[z, order[k], "fps"] >= 300) ? "met" : "NOT met"
        if ((z, fillName, "fps") in s)
            printf "- one screen fill, the yardstick: %s fps\n", s[z, fillName, "fps"]
        same = 0; all = 0
        for (k = 1; k <= scenes; k++)
            if ((z, order[k]) in picture) { all++; if (picture[z, order[k]] == "identical") same++ }
        if (all > 0)
            printf "- last frames identical to the reference: %d of %d: %s\n", same, all, (same == all) ? "met" : "NOT met"
        r = "rules only (no drawing)"
        if ((z, r, "fps") in s)
            printf "- rules alone: %.4f ms per frame (goal under 0.5): %s\n", 1000 / s[z, r, "fps"], (1000 / s[z, r, "fps"] < 0.5) ? "met" : "NOT met"
        printf "- start to first frame: %s ms (goal under 500): %s\n", first[z], (first[z] < 500) ? "met" : "NOT met"
        top = (playMib[z] > menuMib[z]) ? playMib[z] : menuMib[z]
        printf "- memory above the empty window: %.1f MiB (goal 40 at most): %s\n", top - floor_[z], (top - floor_[z] <= 40) ? "met" : "NOT met"
    }
    notesText = ""
    for (j = 1; j <= count; j++) notesText = notesText notes[list[j]]
    if (notesText != "") { print ""; printf "Notes:\n%s", notesText }
}' $(for size in "${sizes[@]}"; do echo "$results/$size.txt"; done)
