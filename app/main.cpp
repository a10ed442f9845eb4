#include "app/main.h"

#include <cstdlib>
#include <cstring>
#include <ctime>

#include "app/cmdline.h"
#include "app/events.h"
#include "app/frame.h"
#include "app/quit.h"
#include "app/window.h"
#include "common/appstatus.h"
#include "common/cmd.h"
#include "common/config.h"
#include "common/cvar.h"
#include "common/log.h"
#include "common/scores.h"
#include "common/timer.h"
#include "common/utils.h"
#include "console/cconsole.h"
#include "game/game.h"
#include "menu/menu.h"
#include "render/blur.h"
#include "sound/openal.h"
#include "sound/sound.h"

namespace {
ALCdevice* g_device = nullptr;
ALCcontext* g_context = nullptr;

// A corrupt settings file must not ask SDL for a 0 x 0 or absurd window.
int SaneDimension(int value, int fallback) { return value >= 64 && value <= 16384 ? value : fallback; }
}  // namespace

void Deinitialize(CGame& game) {
    game.Cleanup();
    DestroyInitFBO();
}

void TerminateApplication() {
    if (!Window_PushQuit())
        std::exit(1);
}

int SDL_main(int argc, char** argv) {
    Timer.start();
    g_device = nullptr;
    g_context = nullptr;
    Screen = nullptr;
    InitEndian();

    CCmdLine cmdline;
    CConsole console;
    CGame game;

    cmdline.Proccess(argc, argv);
    Cvar_Init();
    Resolution.width = SaneDimension(Cvar_GetInt(screenwidth), 640);
    Resolution.height = SaneDimension(Cvar_GetInt(screenheight), 480);
    Resolution.bpp = 32;
    Scores_Load();
    Cvar_Dynamic();
    std::srand(unsigned(std::time(nullptr)));
    InitErrorLog();
    SetupOpengl(SDL_OPENGL);
    Quit_InstallSignals();
    Quit_WatchDisplay();
    if (initOpenAL(&g_device, &g_context) <= 0) {
        Log("FAILED TO INIT OPEN AL\n");
        std::exit(1);
    }
    console.Init();
    Cmd_Init_Commands();
    Menu_Load();
    Con_Bump();

    isProgramLooping = true;
    g_MediaLoaded = false;
    SDL_Event event{};
    // A signal ends the loop as the quit event does, between two passes.
    while (isProgramLooping && !done && Quit_Signal() == 0) {
        VerboseLog(" --- in programming loop \n");
        if (Window_PollEvent(event)) {
            HandleEvent(event, &console);
            continue;
        }
        if (AppStatus.active) {
            Frame_Run(game, console, event);
            Frame_Pace();
        } else {
            // Sleeps until something happens, the music going on; the event
            // stays queued for the next pass.
            Window_WaitEvent([] { SoundSystem.Update(); });
        }
    }

    if (const int signal = Quit_Signal())
        Log("Quitting on signal %d (%s)\n", signal, strsignal(signal));
    Quit_SaveFiles();
    Deinitialize(game);
    CloseErrorLog();
    deinitOpenAL(g_device, g_context);
    std::exit(0);
}
