// Console lines as a player submits them: every line of the bytes goes, with
// the game's cvar table and built-in commands registered as at start-up,
// first to Cvar_Run and then to Cmd_RunCommand. None of the commands ends the
// process ("quit" only ends the main loop, which does not run here) or reads
// a file, and "dump" writes dump.txt into the scratch folder. The console's
// buffer keeps its bound however many lines are logged.
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/reset.h"
#include "common/appstatus.h"
#include "common/cmd.h"
#include "common/console.h"
#include "common/cvar.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    for (const S_Cvar* cvar : Cvar_Table())
        Cvar_Register(*cvar);
    Cmd_Init_Commands();
    isProgramLooping = true;

    const std::string text(reinterpret_cast<const char*>(data), size);
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        const std::string line = text.substr(start, end - start);
        Cvar_Run(line);
        Cmd_RunCommand(line);
        FUZZ_CHECK(AppStatus.consoleLines.size() <= MAX_CONSOLE_LINES);
        start = end + 1;
    }

    App_ResetAll();
    return 0;
}
