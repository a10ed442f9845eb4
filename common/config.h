// Loading and saving the console variables, and keeping the screen-size
// variables, the resolution preset "m_res" and the hardware-capability
// variables consistent. The player's settings are "data/prefs.cfg" on disk;
// the packaged defaults are "data/default.cfg" inside "assets.zip".
#pragma once

#include <string>

void Cvar_Init();  // register the table, then load prefs.cfg or, failing that, default.cfg
// Sets the saved cvars named in data/<fileName>: prefs.cfg from disk, any
// other name from "assets.zip". A line is "name value" (the value keeps a
// carriage return); the last line of a name wins, other kinds of cvar and
// unknown names are skipped. False only for a prefs.cfg over the size limit;
// a missing or unreadable file sets nothing and still gives true.
bool Cvar_Load(const std::string& fileName);
// Cvar_Resolution, then every saved cvar as "name value" into prefs.cfg in
// registration order: the save at shutdown. A failed write leaves the old
// file and is told once (SaveFile_Write).
void Cvar_Save();
// The same file while the game runs, for a setting just changed: the size
// comes from the preset in "m_res" as in Cvar_Save, but Resolution and the
// size cvars are left alone (a new size takes effect at the next start).
void Cvar_SaveWhileRunning();
// What either save writes now.
std::string Cvar_SettingsText();
void Cvar_Resolution();  // apply the preset in "m_res" to Resolution and the size cvars
void Cvar_Dynamic();     // derive "m_res" from Resolution
void Cvar_Go();          // publish the OpenGL capabilities

struct S_ResolutionPreset {
    int width;
    int height;
};
// Presets 1 to 7; the seventh has no way back (Cvar_Dynamic does not know it).
extern const S_ResolutionPreset RESOLUTION_PRESETS[7];
