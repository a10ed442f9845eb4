#include "app/main.h"

#include <cstdlib>
#include <ctime>

#include "common/appstatus.h"
#include "app/cmdline.h"
#include "app/events.h"
#include "common/log.h"
#include "common/timer.h"
#include "common/utils.h"
#include "app/window.h"
#include "console/cconsole.h"
#include "common/cmd.h"
#include "common/config.h"
#include "common/cvar.h"
#include "game/game.h"
#include "common/gamestats.h"
#include "common/scores.h"
#include "input/input.h"
#include "menu/menu.h"
#include "render/blur.h"
#include "render/draw2d.h"
#include "render/font.h"
#include "render/glext.h"
#include "render/texture.h"
#include "sound/openal.h"
#include "sound/sound.h"

namespace {
ALCdevice* g_device = nullptr;
ALCcontext* g_context = nullptr;

// Loading and splash state; App_Reset puts it back.
int phase = 0;                    // the next PreCacheData phase
bool initialised = false;         // CGame::Init has run
bool barPlaced = false;           // the loading bar's place is fixed at its first draw
int barX = 0, barY = 0;
double splashTime = 0.0;          // seconds of splash shown so far
bool splashLooked = false;        // the splash picture is looked up once
unsigned int splash = 0;

// A corrupt settings file must not ask SDL for a 0 x 0 or absurd window.
int SaneDimension(int value, int fallback) {
    return value >= 64 && value <= 16384 ? value : fallback;
}
} // namespace

void Draw3D(SDL_Surface*, CGame game, SDL_Event, CConsole) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    EnableGL3d();
    if (g_MediaLoaded) {
        game.setCamera();
        game.controlCamera();
        game.Run3d();
        game.ProcessGame();
    }
    glFlush();
}

void Draw2D(SDL_Surface*, CGame game, SDL_Event event, CConsole console) {
    EnableGL2d();
    DrawFBO();
    SDL_ShowCursor(SDL_DISABLE);
    if (g_MediaLoaded) {
        game.Run2d(event);
        // Over the menus, under the loading bar and splash.
        if (AppStatus.consoleVisible)
            console.draw(game);
    }
    LoadingBar();
    DisableGL2d();
}

void Draw(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console) {
    game.UpdateCvars(console);
    BeginFBO();
    Draw3D(surface, game, event, console);
    EndFBO();
    Draw2D(surface, game, event, console);
    VerboseLog(" --- done drawing \n");
}

void App_Reset() {
    phase = 0;
    initialised = false;
    barPlaced = false;
    barX = barY = 0;
    splashTime = 0.0;
    splashLooked = false;
    splash = 0;
}

void LoadMedia(CGame& game, CTimer&) {
    game.LoadMedia(phase);
    if (phase <= 9) {
        phase++;
    } else {
        if (!initialised) {
            initialised = true;
            game.Init();
            g_SplashScreen = true;
        }
    }
}

void DrawBar(int progress) {
    // Placed once, at the first call: a later resolution change does not move it.
    if (!barPlaced) {
        barPlaced = true;
        barX = Resolution.width / 6;
        barY = Resolution.height / 2;
    }
    if (g_PreLoadingStuff > 2)  // the font is loaded by then
        glPrint(barX, barY - 30, 0, 0, "Loading . . .");
    SetDrawColor(1.0f, 0.0f, 0.0f, 1.0f);
    DisplayBlank(barX, barY, (Resolution.width / 15) * progress, 30);
}

void LoadingBar() {
    if (!g_SplashScreen) {  // the game is not initialised yet
        DrawBlackBackground();
        DrawBar(g_PreLoadingStuff);
    }
    if (g_SplashScreen) {
        if (splashTime < 3.0) {
            if (!splashLooked) {
                splashLooked = true;
                splash = FindTexture("splashscreen.tga");
                SoundSystem.Play(snd_SplashScreen, false);
            }
            SetDrawColor(1.0f, 1.0f, 1.0f, 1.0f);
            DisplayImage(0, 0, Resolution.width, Resolution.height, splash);
        } else {
            g_MediaLoaded = true;
        }
        splashTime += Timer.get_ticks();
    }
}

void Deinitialize(CGame& game) {
    game.Cleanup();
    DestroyInitFBO();
}

void TerminateApplication() {
    SDL_Event quit;
    quit.type = SDL_QUIT;
    if (SDL_PushEvent(&quit) < 0) {
        Log("SDL_QUIT event can't be pushed: %s\n", SDL_GetError());
        std::exit(1);
    }
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
    while (isProgramLooping && !done) {
        VerboseLog(" --- in programming loop \n");
        if (SDL_PollEvent(&event)) {
            HandleEvent(event, &console);
            continue;
        }
        if (AppStatus.active) {
            Timer.update();
            Draw(Screen, game, event, console);
            SDL_GL_SwapBuffers();
            LoadMedia(game, Timer);
            Input_EndFrame();
        } else {
            // Sleeps until something happens; the event stays queued for the next pass.
            SDL_WaitEvent(nullptr);
        }
    }

    Scores_Save();
    Cvar_Save();
    Deinitialize(game);
    CloseErrorLog();
    deinitOpenAL(g_device, g_context);
    std::exit(0);
}
