#include "common/cmd.h"

#include <cstdio>

#include "common/appstatus.h"
#include "common/console.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/utils.h"

std::vector<S_Cmd_List> CMD;

void Con_Unkown(const std::string& line) { Log("Unkown Command!  %s", line.c_str()); }

namespace {
// The command word of a line: its first whitespace-delimited word, with any
// leading '/' and '?' skipped and cut at the next one, so quit, /quit, ?quit
// and quit? all name quit. A word made only of those characters names nothing.
std::string CommandName(const std::string& line) { return NameWord(line, " \t\r\n\v\f"); }
}  // namespace

void Cmd_AddCommand(const std::string& name, void (*function)(), const std::string& description) {
    S_Cmd_List command;
    command.name = name;
    command.enabled = 1;
    command.description = description;
    command.function = function;
    CMD.push_back(command);
    Con_Print("registed command:%s", name.c_str());
}

bool Cmd_Init_Commands() {
    VerboseLog(" -- attempting to INIT commands ...");
    Cmd_AddCommand("quit", Cmd_Quitgame_f, "this quits the game");
    Cmd_AddCommand("clear", Cmd_ClearConsole_f, "clears the console data");
    Cmd_AddCommand("dump", Cmd_DumpConsole_f, "dumps console text into an external file");
    Cmd_AddCommand("version", Cmd_PrintVersion_f, "prints the version number and hardware info to the console");
    Cmd_AddCommand("baller", Cmd_Cheat_f, "gives you 999 lives");
    Cmd_AddCommand("skip", Cmd_SkipLevel_f, "skips the current level");
    VerboseLog(" success\n");
    return true;
}

bool Cmd_RunCommand(const std::string& line) {
    const std::string name = CommandName(line);
    if (!name.empty()) {
        for (const S_Cmd_List& command : CMD) {
            if (command.name != name)
                continue;
            if (line[0] == '?') {
                Con_Print("name: %s  description: %s", command.name.c_str(), command.description.c_str());
                return true;
            }
            // A record registered without a handler fails like a throwing one.
            bool ran = command.function != nullptr;
            try {
                if (ran)
                    command.function();
            } catch (...) {
                ran = false;
            }
            if (!ran)
                Log("ERROR, couldn't run func %s", line.c_str());
            return ran;
        }
    }
    Con_Unkown(line);
    return false;
}

void Cmd_Reset() { CMD.clear(); }

void Cmd_Quitgame_f() { isProgramLooping = false; }

void Cmd_ClearConsole_f() {
    // The count keeps growing on purpose: it counts lines ever added.
    AppStatus.consoleLines.clear();
}

void Cmd_DumpConsole_f() {
    FILE* dump = std::fopen("dump.txt", "w");
    if (!dump)
        return;  // silently: there is nowhere better to report it
    std::fputs("-- Console Dump -----------------\n", dump);
    for (const std::string& line : AppStatus.consoleLines) {
        std::fputs(line.c_str(), dump);
        std::fputc('\n', dump);
    }
    std::fputs("\n-- ex dmp -----------------------", dump);
    std::fclose(dump);
}

void Cmd_PrintVersion_f() {
    // Deliberately empty: the command exists, but prints nothing.
}

void Cmd_Cheat_f() { Game_Stats.lives = 999; }

void Cmd_SkipLevel_f() { Game_Stats.skipLevel = true; }

void system_h() { VerboseLog(" -- attempting to retrive system info ... \n"); }
