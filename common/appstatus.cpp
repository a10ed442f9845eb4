#include "common/appstatus.h"

S_AppStatus AppStatus;
S_Resolution Resolution;
S_GLext GLext;

const char* const GAME_NAME = "VELTHRA";
const char* const GAME_VERSION = "1.0.4";

bool isProgramLooping = false;
bool done = false;
bool g_MediaLoaded = false;
bool g_SplashScreen = false;
bool g_First_Run = false;
int g_PreLoadingStuff = 0;

void AppStatus_Reset() {
    AppStatus = S_AppStatus();
    Resolution = S_Resolution();
    GLext = S_GLext();
    isProgramLooping = false;
    done = false;
    g_MediaLoaded = false;
    g_SplashScreen = false;
    g_First_Run = false;
    g_PreLoadingStuff = 0;
}
