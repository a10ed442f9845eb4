// Every console variable the game registers, in registration order.
// Two descriptions repeat another variable's text; that is how they ship.
#include "common/cvar.h"

#define CVAR_DEF(var, def, kind, desc) const S_Cvar var = {kind, #var, def, desc, def}

CVAR_DEF(showfps, "0", CVAR_SAVED, "shows your rendered fps (frames per second)");
CVAR_DEF(fullscreen, "1", CVAR_SAVED, "enables or disables fullscreen mode");
CVAR_DEF(volume, "1", CVAR_SAVED, "change the sound and music volume");
CVAR_DEF(m_menu, "0", CVAR_TEMP, "enables or disables the main menu");
CVAR_DEF(m_res, "1", CVAR_READONLY, "what pre-set resolution your monitor is on");
CVAR_DEF(wireframe, "0", CVAR_TEMP, "enables or disables wireframe mode");
CVAR_DEF(r_vertexbuffer, "0", CVAR_READONLY, "checks if vertex arrays are available");
CVAR_DEF(r_hlsl, "0", CVAR_READONLY, "checks if your system hardware supports shaders");
CVAR_DEF(r_fbo, "0", CVAR_READONLY, "returns 1 if your systems supports frame buffer objects");
CVAR_DEF(brightness, "1", CVAR_SAVED, "changes the overall brightness of the screen");
CVAR_DEF(screenwidth, "640", CVAR_SAVED, "alters the screen width");
CVAR_DEF(screenheight, "480", CVAR_SAVED, "alters the screen height");
CVAR_DEF(screenbpp, "32", CVAR_SAVED, "alters the screen bpp");
CVAR_DEF(debugbox, "0", CVAR_TEMP, "enables model bounding box");
CVAR_DEF(con_red, "0", CVAR_SAVED, "changes console red hue");
CVAR_DEF(con_green, "0", CVAR_SAVED, "changes console green hue");
CVAR_DEF(con_blue, "0", CVAR_SAVED, "changes console blue hue");
CVAR_DEF(con_alpha, "0.9", CVAR_SAVED, "changes console alpha");
CVAR_DEF(r_blur, "0", CVAR_SAVED, "enables full screen bluring");
CVAR_DEF(r_blurpower, "25", CVAR_SAVED, "changes console blue hue");
CVAR_DEF(r_blurzoom, "0.02", CVAR_SAVED, "changes console alpha");
CVAR_DEF(r_particles, "0", CVAR_SAVED, "enables or disables particle effects");
CVAR_DEF(r_highscore, "0", CVAR_READONLY, "the players current highscore");
CVAR_DEF(skyscroll, "0.1", CVAR_TEMP, "changes the scrolling speed of the sky");
CVAR_DEF(r_maxfps, "60", CVAR_SAVED, "limits the frames drawn per second (0 for no limit)");

const std::vector<const S_Cvar*>& Cvar_Table() {
    static const std::vector<const S_Cvar*> table = {
        &showfps,     &fullscreen,  &volume,     &m_menu,      &m_res,        &wireframe,   &r_vertexbuffer,
        &r_hlsl,      &r_fbo,       &brightness, &screenwidth, &screenheight, &screenbpp,   &debugbox,
        &con_red,     &con_green,   &con_blue,   &con_alpha,   &r_blur,       &r_blurpower, &r_blurzoom,
        &r_particles, &r_highscore, &skyscroll,  &r_maxfps,
    };
    return table;
}
