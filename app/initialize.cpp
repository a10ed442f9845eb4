#include "app/initialize.h"

#include <SDL.h>

#include "common/appstatus.h"
#include "common/config.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/utils.h"
#include "render/blur.h"
#include "render/glext.h"
#include "render/glstate.h"

bool Initialize() {
    Log(" - Initializing . . .\n");
    // Unconditional, after the command line: whatever "-menuxm", "-menu" and
    // "-world" stored is replaced here, so those switches only leave their log
    // lines (GLStartup.InitializeOverridesTheMenuAndWorldSwitches).
    AppStatus.active = true;
    AppStatus.mouseFocus = true;
    AppStatus.inputFocus = true;
    AppStatus.useVertexBuffers = true;
    AppStatus.menuFile = "menu.xml";
    AppStatus.levelFile = "lvl1.xml";
    AppStatus.startWithMenu = true;
    AppStatus.version = GAME_VERSION;
    AppStatus.operatingSystem = GetOS();
    AppStatus.architecture = GetArch();
    Game_Stats.level = 1;

    Resolution.gammaRed = Resolution.gammaGreen = Resolution.gammaBlue = 1.0f;
    SetGamma(1.0f);

    GLext.vertexBufferObjects = IsExtensionSupported("GL_ARB_vertex_buffer_object");
    GLext.rectangleTextures = IsExtensionSupported("GL_ARB_texture_rectangle");
    GLext.frameBufferObjects = IsExtensionSupported("GL_EXT_framebuffer_object");
    if (GLext.frameBufferObjects && g_First_Run)
        Cvar_Set(r_blur, "1");
    GLext.shaders = IsExtensionSupported("GL_ARB_fragment_shader") && IsExtensionSupported("GL_ARB_vertex_shader") &&
                    IsExtensionSupported("GL_ARB_shader_objects") &&
                    IsExtensionSupported("GL_ARB_shading_language_100");
    if (!GLext.vertexBufferObjects)
        AppStatus.useVertexBuffers = false;
    // A driver that lists an extension but hands out no entry points for it
    // falls back as if the extension were missing.
    GLext_LoadEntryPoints();

    InitFBO();
    Cvar_Go();
    return true;
}
