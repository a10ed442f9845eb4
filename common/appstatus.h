// Application-wide status records shared by every subsystem: the status of
// the application itself, the screen size and gamma, the OpenGL extension
// flags and the loop flags. They are plain globals on purpose: the whole
// game runs on one thread and each record has a single owner that writes it.
#pragma once

#include <deque>
#include <string>

struct S_AppStatus {
    bool active = true;  // window not iconified; the loop sleeps when false
    bool mouseFocus = true;
    bool inputFocus = true;
    bool verboseLog = false;               // "-vlog"
    int consoleLineCount = 0;              // lines added by Log since the banner
    std::deque<std::string> consoleLines;  // newest first
    bool consoleVisible = false;
    std::string menuFile = "menu.xml";
    std::string levelFile = "lvl1.xml";
    bool startWithMenu = true;
    bool useVertexBuffers = true;
    std::string version = "1.0.4";
    std::string operatingSystem;
    std::string architecture;
};
extern S_AppStatus AppStatus;

struct S_Resolution {
    int width = 0;
    int height = 0;
    int bpp = 32;
    float gammaRed = 1.0f;
    float gammaGreen = 1.0f;
    float gammaBlue = 1.0f;
};
extern S_Resolution Resolution;

// Which OpenGL extensions the driver offers; filled once by Initialize.
struct S_GLext {
    bool vertexBufferObjects = false;  // GL_ARB_vertex_buffer_object
    bool frameBufferObjects = false;   // GL_EXT_framebuffer_object
    bool shaders = false;              // all four ARB shader extensions
    bool rectangleTextures = false;    // GL_ARB_texture_rectangle
};
extern S_GLext GLext;

extern const char* const GAME_NAME;     // "VELTHRA"
extern const char* const GAME_VERSION;  // "1.0.4"

extern bool isProgramLooping;
extern bool done;
extern bool g_MediaLoaded;
extern bool g_SplashScreen;
extern bool g_First_Run;
extern int g_PreLoadingStuff;

// Every record and flag above back to its start-up value.
void AppStatus_Reset();
