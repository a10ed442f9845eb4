// Loading and saving the console variables, and keeping the screen-size
// variables, the resolution preset "m_res" and the hardware-capability
// variables consistent. The player's settings are "data/prefs.cfg" on disk;
// the packaged defaults are "data/default.cfg" inside "assets.zip".
#pragma once

#include <string>

void Cvar_Init();  // register the table, then load prefs.cfg or, failing that, default.cfg
bool Cvar_Load(const std::string& fileName);
void Cvar_Save();
void Cvar_Resolution();  // apply the preset in "m_res" to Resolution and the size cvars
void Cvar_Dynamic();     // derive "m_res" from Resolution
void Cvar_Go();          // publish the OpenGL capabilities

struct S_ResolutionPreset {
    int width;
    int height;
};
// Presets 1 to 7; the seventh has no way back (Cvar_Dynamic does not know it).
extern const S_ResolutionPreset RESOLUTION_PRESETS[7];
