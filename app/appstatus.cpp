#include "app/appstatus.h"

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
