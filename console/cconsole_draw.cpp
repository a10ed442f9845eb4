#include <string>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/utils.h"
#include "console/cconsole.h"
#include "render/console_blend.h"
#include "render/draw2d.h"
#include "render/font.h"

void CConsole::draw(const CGame& /*game*/) {
    // The background covers the top half of the screen size the settings
    // ask for; the text below follows the window's real height.
    const long width = Cvar_GetInt(screenwidth);
    const long halfHeight = Cvar_GetInt(screenheight) / 2;
    const bool textured = backgroundTexture != -1;

    ConsoleBlend_Begin(blendEnabled, textured);
    SetDrawColor(Cvar_GetFloat(con_red), Cvar_GetFloat(con_green), Cvar_GetFloat(con_blue), Cvar_GetFloat(con_alpha));
    if (textured)
        DisplayImage(0, 0, width, halfHeight, unsigned(backgroundTexture));
    else
        DisplayBlank(0, 0, width, halfHeight);
    ConsoleBlend_End(blendEnabled, textured);

    const long height = Resolution.height;
    if (NextCursorShown())
        glPrint(0, PromptY(height), 0, 0, "]%s|", inputLine.c_str());
    else
        glPrint(0, PromptY(height), 0, 0, "]%s", inputLine.c_str());

    if (scrollLines > 0)
        glPrint(0, ScrollMarkY(height), 0, 0, "%s", std::string(87, '^').c_str());

    // Lines above the top are still issued; glPrint only drops those below.
    const int count = int(AppStatus.consoleLines.size());
    for (int i = scrollLines; i < count; i++)
        glPrint(0, OutputLineY(i, height), 0, 0, "]%s", AppStatus.consoleLines[size_t(i)].c_str());
}
