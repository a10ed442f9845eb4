#include "common/config.h"

#include <utility>
#include <vector>

#include "common/appstatus.h"
#include "common/archive.h"
#include "common/cvar.h"
#include "common/log.h"
#include "common/savefile.h"
#include "common/utils.h"

const S_ResolutionPreset RESOLUTION_PRESETS[7] = {
    {640, 480}, {800, 600}, {1024, 768}, {1280, 800}, {1440, 900}, {1680, 1050}, {1920, 1600},
};

namespace {
const char* const CONFIG_DIR = "data/";
const char* const USER_CONFIG = "prefs.cfg";
const char* const DEFAULT_CONFIG = "default.cfg";
}  // namespace

void Cvar_Init() {
    VerboseLog(" -- attempting to REGISTER CVARS -- ");
    for (const S_Cvar* cvar : Cvar_Table())
        Cvar_Register(*cvar);
    VerboseLog(" -- success\n");

    // Only one file is read: prefs.cfg, when present, wins whole.
    // A prefs.cfg refused as too large counts as none: the defaults load.
    if (FileExists(std::string(CONFIG_DIR) + USER_CONFIG) && Cvar_Load(USER_CONFIG)) {
        g_First_Run = false;
    } else {
        g_First_Run = true;
        Cvar_Load(DEFAULT_CONFIG);
    }
}

bool Cvar_Load(const std::string& fileName) {
    std::string path = CONFIG_DIR + fileName;
    std::string text;
    if (fileName == USER_CONFIG) {
        if (FileTooLarge(path))
            return false;
        text = ReadDataFile(path);
    } else {
        text = readZipFile("assets.zip", path);
    }

    // name = text before the first blank, value = everything after it,
    // carriage returns included; a line without a blank is both.
    std::vector<std::pair<std::string, std::string>> pairs;
    size_t start = 0;
    for (;;) {
        size_t end = text.find('\n', start);
        std::string line = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        size_t blank = line.find(' ');
        if (blank == std::string::npos)
            pairs.emplace_back(line, line);
        else
            pairs.emplace_back(line.substr(0, blank), line.substr(blank + 1));
        if (end == std::string::npos)
            break;
        start = end + 1;
    }

    for (const S_Cvar& cvar : CVAR) {
        if (cvar.type != CVAR_SAVED)
            continue;
        for (const auto& [name, value] : pairs)
            if (name == cvar.name)
                Cvar_Set(name, value);
    }
    return true;
}

void Cvar_Save() {
    Cvar_Resolution();
    // The text is now what the running game's cvars say.
    Cvar_SaveWhileRunning();
}

void Cvar_SaveWhileRunning() { SaveFile_Write(std::string(CONFIG_DIR) + USER_CONFIG, Cvar_SettingsText(), "settings"); }

std::string Cvar_SettingsText() {
    // The screen size Cvar_Resolution would store, without storing it: the
    // running game keeps the size its window was made with.
    const int preset = Cvar_GetInt(m_res);
    const bool known = preset >= 1 && preset <= 7;
    const int width = known ? RESOLUTION_PRESETS[preset - 1].width : Resolution.width;
    const int height = known ? RESOLUTION_PRESETS[preset - 1].height : Resolution.height;
    std::string text;
    for (const S_Cvar& cvar : CVAR) {
        if (cvar.type != CVAR_SAVED)
            continue;
        std::string value = cvar.value;
        if (cvar.name == screenwidth.name)
            value = IntToString(width);
        else if (cvar.name == screenheight.name)
            value = IntToString(height);
        else if (cvar.name == screenbpp.name)
            value = "32";
        text += cvar.name + " " + value + "\n";
    }
    return text;
}

void Cvar_Resolution() {
    int preset = Cvar_GetInt(m_res);
    if (preset >= 1 && preset <= 7) {
        Resolution.width = RESOLUTION_PRESETS[preset - 1].width;
        Resolution.height = RESOLUTION_PRESETS[preset - 1].height;
    }
    Cvar_Set(screenwidth, IntToString(Resolution.width));
    Cvar_Set(screenheight, IntToString(Resolution.height));
    Cvar_Set(screenbpp, "32");
}

void Cvar_Dynamic() {
    Cvar_Set(m_res, "0");
    // Six presets only: 1920 x 1600 is deliberately not recognised.
    for (int i = 0; i < 6; i++) {
        if (Resolution.width == RESOLUTION_PRESETS[i].width && Resolution.height == RESOLUTION_PRESETS[i].height) {
            Cvar_Set(m_res, IntToString(i + 1));
            return;
        }
    }
}

void Cvar_Go() {
    Cvar_Set(r_vertexbuffer, GLext.vertexBufferObjects ? "1" : "0");
    Cvar_Set(r_hlsl, GLext.shaders ? "1" : "0");
    Cvar_Set(r_fbo, GLext.frameBufferObjects ? "1" : "0");
}
