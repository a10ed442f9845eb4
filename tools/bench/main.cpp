// velthra-bench: how fast the real game runs on this machine.
//
// It starts the game the way the game starts (the same functions in the same
// order as SDL_main, in a folder of its own that links to the game's data),
// loads the real data through the staged loading and the splash, and then
// plays fixed scenes for a set number of frames each. The game's clock is fed
// a fixed step per frame, and the random numbers a fixed seed, so every run
// simulates the same game; only the wall clock measures.
//
//   velthra-bench [--size WxH] [--frames N] [--rules-frames N] [--only TEXT]
//                 [--game DIR] [--set CVAR=VALUE ...] [--blur-reduction N] [--parts]
//                 [--shots DIR] [--compare DIR] [--frame-sums FILE]
//   velthra-bench --floor WxH     an empty SDL + OpenGL window: its memory
//   velthra-bench [--frames N] --fill WxH    one screen fill, timed
//
// Output: a "bench" line, a "fill" line (one screen fill, the yardstick), one
// "scene" line per scene (and a "parts" line with --parts, a "picture" line
// with --compare), then "startup", "load" and "memory" lines and "note"
// lines; after the kind (and a scene's quoted name) come "key value" pairs. The code is in
// bench.cpp (the game's run), environment.cpp (the folder, the empty window,
// pictures) and measure.cpp (clocks, memory, percentiles); scripts/bench.sh
// gathers the output into tables.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "bench.h"
#include "environment.h"
#include "measure.h"

namespace {

bool ParseSize(const char* text, int& width, int& height) {
    return text && std::sscanf(text, "%dx%d", &width, &height) == 2 && width >= 64 && height >= 64;
}

void Usage() {
    std::fprintf(stderr, "usage: velthra-bench [--size WxH] [--frames N] [--rules-frames N] [--only TEXT] "
                         "[--game DIR] [--set CVAR=VALUE] [--blur-reduction N] [--parts] "
                         "[--shots DIR] [--compare DIR] [--frame-sums FILE]\n       velthra-bench --floor WxH\n"
                         "       velthra-bench [--frames N] --fill WxH\n");
    std::exit(2);
}

}  // namespace

int main(int argc, char** argv) {
    const double mainMs = WallMs() - ProcessAgeMs();
    S_Options options;
    options.self = SelfPath(argv[0]);
    for (int i = 1; i < argc; i++) {
        const std::string arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (arg == "--floor") {
            int width = 0, height = 0;
            if (!ParseSize(value, width, height))
                Usage();
            return RunFloor(width, height);
        }
        if (arg == "--fill") {
            int width = 0, height = 0;
            if (!ParseSize(value, width, height))
                Usage();
            return RunFill(width, height, options.frames, options.warmup);
        }
        if (arg == "--parts") {
            options.parts = true;
            continue;
        }
        if (!value)
            Usage();
        if (arg == "--size") {
            if (!ParseSize(value, options.width, options.height))
                Usage();
        } else if (arg == "--frames") {
            options.frames = std::max(1, std::atoi(value));
        } else if (arg == "--rules-frames") {
            options.rulesFrames = std::max(1, std::atoi(value));
        } else if (arg == "--only") {
            options.only = value;
        } else if (arg == "--game") {
            options.game = value;
        } else if (arg == "--shots") {
            options.shots = value;
        } else if (arg == "--compare") {
            options.compare = value;
        } else if (arg == "--frame-sums") {
            options.sums = value;
        } else if (arg == "--blur-reduction") {
            options.blurReduction = std::atoi(value);
        } else if (arg == "--set") {
            const char* equals = std::strchr(value, '=');
            if (!equals)
                Usage();
            options.cvars.push_back({std::string(value, equals), equals + 1});
        } else {
            Usage();
        }
        i++;
    }

    const std::string run = PrepareRunFolder(options.game);
    if (chdir(run.c_str()) != 0) {
        std::perror("velthra-bench: chdir");
        return 1;
    }
    CBench bench(options, mainMs);
    bench.StartUp();
    bench.LoadUntilTheMenu();
    bench.RunScenes();
    const S_Floor floor = MeasureFloor(options.self, options.width, options.height);
    bench.Report(floor);
    bench.ShutDown();

    std::error_code ignored;
    std::filesystem::remove_all(run, ignored);
    // Like the game's own exit: the loop is left, nothing is saved.
    std::exit(0);
}
