#include "app/cmdline.h"

#include <cstdio>
#include <cstring>

#include "common/appstatus.h"
#include "common/log.h"

namespace {
const char* const HELP_LINES[] = {
    "(switch name) (arg)            (summery)\n",
    "-help                           switch enables this menu\n",
    "-vlog                           enables verbos loging\n",
    "-menuxm        [menu name]      uses custom menu\n",
    "-menu          [1 or 0]         start game with menu\n",
    "-world         [map name]       load a map at startup\n\n",
};

// Into the console as ever, and to standard output too: the log is not open
// yet, and a player who typed -help in a terminal is looking there.
void PrintHelp() {
    char title[128];
    std::snprintf(title, sizeof title, "SWITCH HELP: %s V%s\nCreated by Dorvane\n\n", GAME_NAME, GAME_VERSION);
    Log("%s", title);
    std::fputs(title, stdout);
    for (const char* line : HELP_LINES) {
        Log("%s", line);
        std::fputs(line, stdout);
    }
    std::fflush(stdout);
}
}  // namespace

void CCmdLine::Proccess(int argc, char** argv) {
    // A switch's value is not consumed: it is examined as a switch as well,
    // so "-menuxm -vlog" still turns verbose logging on.
    for (int i = 0; i < argc; i++) {
        const char* arg = argv[i];
        // A value-taking switch given last has no value; it is ignored.
        const char* next = i + 1 < argc ? argv[i + 1] : nullptr;
        if (std::strcmp(arg, "-help") == 0) {
            PrintHelp();
        } else if (std::strcmp(arg, "-vlog") == 0) {
            AppStatus.verboseLog = true;
            Log("using verbose logging.\n");
        } else if (std::strcmp(arg, "-menuxm") == 0) {
            if (next) {
                Log("using custom menu: %s\n", next);
                AppStatus.menuFile = next;
            }
        } else if (std::strcmp(arg, "-world") == 0) {
            if (next) {
                Log("loading world through cmdline: %s\n", next);
                AppStatus.startWithMenu = false;
                AppStatus.levelFile = next;
            }
        } else if (std::strcmp(arg, "-menu") == 0) {
            // The value's text is not looked at: "-menu 0" turns the menu on too.
            AppStatus.startWithMenu = next != nullptr;
        }
    }
}
