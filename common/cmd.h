// Console commands: the ordered list CMD, filled once at start-up with the
// six built-ins, and the interpreter the console and the menus hand lines to.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct S_Cmd_List {
    std::string name;
    int32_t enabled = 1;  // set on registration; nothing reads it
    std::string description;
    void (*function)() = nullptr;
};

extern std::vector<S_Cmd_List> CMD;

// Appends a record without a duplicate check (a lookup takes the first of a
// name) and prints "registed command:<name>" to the console.
void Cmd_AddCommand(const std::string& name, void (*function)(), const std::string& description);
bool Cmd_Init_Commands();  // registers the six built-ins below, in that order; always true
// True when a command ran or its help ("?name") was shown.
bool Cmd_RunCommand(const std::string& line);
void Cmd_Reset();  // empties CMD (start-up state)
// Reports, through Log, a line that names no command. Beside the interpreter
// rather than the console's text buffer: the log writes into that buffer,
// and this writes through the log.
void Con_Unkown(const std::string& line);

// The built-in handlers, in registration order.
void Cmd_Quitgame_f();      // quit: ends the main loop after this frame
void Cmd_ClearConsole_f();  // clear: empties the lines, keeps their count
void Cmd_DumpConsole_f();   // dump: the lines into dump.txt, newest first
void Cmd_PrintVersion_f();  // version: intentionally does nothing
void Cmd_Cheat_f();         // baller: 999 lives
void Cmd_SkipLevel_f();     // skip: the game driver moves to the next level

// Only traces that system information is being gathered; not a command.
void system_h();
