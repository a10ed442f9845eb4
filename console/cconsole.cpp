#include "console/cconsole.h"

#include "common/appstatus.h"
#include "common/cmd.h"
#include "common/config.h"
#include "common/console.h"
#include "common/cvar.h"
#include "common/log.h"
#include "input/input.h"
#include "render/texture.h"

namespace {
// Shared by every console object and never rewound: each "up" recalls one
// line further back for the rest of the run, even after new lines are
// submitted. That is how the console has always behaved.
size_t ilogz = 0;
bool blink = false;  // false: the next prompt shows the cursor

constexpr size_t MAX_INPUT_LINE = 100;  // the typed line may end one longer
constexpr int32_t UNSCROLLED_PIXELS = 60;
constexpr int32_t LINE_PIXELS = 20;
}  // namespace

CConsole::CConsole() : scrollLines(0), scrollPixels(UNSCROLLED_PIXELS), blendEnabled(true), backgroundTexture(-1) {}

void CConsole::Init() { backgroundTexture = int32_t(GetTexture("conback.tga", 1)); }

void CConsole::getInput(SDL_Event* event) {
    if (!event || event->type != SDL_KEYDOWN)
        return;
    const SDL_KeyboardEvent& keyEvent = event->key;
    if (AppStatus.consoleVisible) {
        const std::string key = Keys_KeyName(keyEvent.keysym.sym);
        const char ch = getCharValue(keyEvent);
        if (key == "up" && ilogz < history.size())
            inputLine = history[ilogz++];
        if (key == "page up") {
            scrollLines++;
            scrollPixels -= LINE_PIXELS;
        }
        if (key == "page down") {
            scrollPixels += LINE_PIXELS;
            scrollLines--;
            if (scrollLines < 0) {
                scrollLines = 0;
                scrollPixels = UNSCROLLED_PIXELS;
            }
        }
        if (key == "space")
            inputLine += ' ';
        if (key == "backspace" && !inputLine.empty())
            inputLine.pop_back();
        if (key == "return" && !inputLine.empty())
            bumpConsole();
        // Cut before the new character goes on: the line may reach 101.
        if (inputLine.size() > MAX_INPUT_LINE)
            inputLine.pop_back();
        // Printable characters only: keys like pause give a zero byte, which
        // would hide the rest of the line, and keypad enter or ctrl+letter a
        // control code, for which the font has no glyph.
        if (SDL_checkKeys(key) && ch >= ' ' && ch != '\x7f')
            inputLine += ch;
    }
    if (keyEvent.keysym.sym == SDLK_BACKQUOTE)
        AppStatus.consoleVisible = !AppStatus.consoleVisible;
}

void CConsole::bumpConsole() {
    Con_PushLine(inputLine.c_str());
    history.push_front(inputLine);
    // Bounded like the output lines; recall never reaches that far back in practice.
    if (history.size() > MAX_CONSOLE_LINES)
        history.pop_back();
    if (Cvar_Check(inputLine)) {
        const std::string before = Cvar_SettingsText();
        Cvar_Run(inputLine);
        // A changed setting goes to the disk at once, so a crash later in the
        // session cannot lose it; a query or a refused line writes nothing.
        if (Cvar_SettingsText() != before)
            Cvar_SaveWhileRunning();
    } else {
        Con_exeCmd(inputLine);
    }
    inputLine.clear();
}

bool CConsole::Con_exeCmd(const std::string& line) { return Cmd_RunCommand(line); }

void CConsole::SetColor(float r, float g, float b, float a) { colour = S_ConColor{r, g, b, a}; }

std::string CConsole::getConLine() { return inputLine; }

long CConsole::PromptY(long screenHeight) { return screenHeight / 2 - LINE_PIXELS; }

long CConsole::ScrollMarkY(long screenHeight) { return screenHeight / 2 - 2 * LINE_PIXELS; }

long CConsole::OutputLineY(int index, long screenHeight) const {
    if (scrollLines > 0)
        return screenHeight / 2 - scrollPixels - long(LINE_PIXELS) * index;
    return screenHeight / 2 - 2 * LINE_PIXELS - long(LINE_PIXELS) * index;
}

bool CConsole::NextCursorShown() {
    const bool shown = !blink;
    blink = !blink;
    return shown;
}

void Con_Bump() {
    VerboseLog("  =================================\n");
    Con_Print("%s", "");
    Con_Print(" =================================");
    Con_Print("%s", "");
}

void Console_Reset() {
    ilogz = 0;
    blink = false;
}
