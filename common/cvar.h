// Console variables: named text values held in one ordered list, CVAR.
// Lookups take the first record whose name matches exactly; the order is the
// registration order, which is also the order of the lines in prefs.cfg.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum : int32_t {
    CVAR_SAVED = 1,     // read from and written to the settings file
    CVAR_TEMP = 2,      // settable from the console, never saved
    CVAR_READONLY = 4,  // the console refuses it; the program sets it
    CVAR_CHEAT = 8,     // the console refuses it; no variable uses it
};

struct S_Cvar {
    int32_t type;
    std::string name;
    std::string value;
    const char* description;
    std::string defaultValue;
};

extern std::vector<S_Cvar> CVAR;

void Cvar_Register(const S_Cvar& cvar);                            // appends a copy, no duplicate check
void Cvar_Set(const std::string& name, const std::string& value);  // ignores the kind
std::string Cvar_Get(const std::string& name);                     // "" for an unknown name
bool Cvar_Check(const std::string& line);                          // does the raw first word name a cvar?
bool Cvar_Run(const std::string& line);                            // the console's query / assignment
void Cvar_Clear();                                                 // empties CVAR (start-up state)

// The code's own reads and writes of its settings name them by their table
// record below, so a misspelt name does not compile. They read the live value
// (the record's own value is only the compiled default). The console, the
// settings files and the menus meet names as text and use the two above.
std::string Cvar_GetString(const S_Cvar& cvar);
int Cvar_GetInt(const S_Cvar& cvar);      // StringToInt of the live value
float Cvar_GetFloat(const S_Cvar& cvar);  // StringToFloat of the live value
void Cvar_Set(const S_Cvar& cvar, const std::string& value);

// A menu is showing ("m_menu" is non-zero), so the game is not being played:
// the one place the events, the input, the game and the menus ask it.
bool Menu_Visible();

// The 25 registered variables, each with its compiled default.
extern const S_Cvar showfps, fullscreen, volume, m_menu, m_res, wireframe, r_vertexbuffer, r_hlsl, r_fbo, brightness,
    screenwidth, screenheight, screenbpp, debugbox, con_red, con_green, con_blue, con_alpha, r_blur, r_blurpower,
    r_blurzoom, r_particles, r_highscore, skyscroll, r_maxfps;

// The table above in registration order.
const std::vector<const S_Cvar*>& Cvar_Table();
