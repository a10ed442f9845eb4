#include "app/frame.h"

#include <malloc.h>

#include "app/window.h"
#include "common/appstatus.h"
#include "common/clock.h"
#include "common/cvar.h"
#include "common/framemark.h"
#include "common/log.h"
#include "common/timer.h"
#include "console/cconsole.h"
#include "game/game.h"
#include "input/input.h"
#include "render/blur.h"
#include "render/draw2d.h"
#include "render/font.h"
#include "render/glstate.h"
#include "render/texture.h"
#include "sound/sound.h"

namespace {
// Loading and splash state; Frame_Reset puts it back.
int phase = 0;             // the next PreCacheData phase
bool initialised = false;  // CGame::Init has run
bool barPlaced = false;    // the loading bar's place is fixed at its first draw
int barX = 0, barY = 0;
double splashTime = 0.0;    // seconds of splash shown so far
bool splashLooked = false;  // the splash picture is looked up once
unsigned int splash = 0;
// Frame pacing: when the next frame may start, on the monotonic clock
// (microseconds; 0 before the first paced frame).
uint64_t paceSlot = 0;
}  // namespace

void Frame_Run(CGame& game, CConsole& console, const SDL_Event& event) {
    Timer.update();
    Draw(Screen, game, event, console);
    FrameMark(E_FramePart::Swap);
    Window_SwapBuffers();
    FrameMark(E_FramePart::End);
    LoadMedia(game, Timer);
    Input_EndFrame();
    SoundSystem.Update();
}

void Draw3D(SDL_Surface*, CGame game, SDL_Event, CConsole) {
    BeginGL3d();
    if (g_MediaLoaded) {
        game.setCamera();
        game.controlCamera();
        game.Run3d();
        FrameMark(E_FramePart::PaddleBall);
        game.ProcessGame();
    }
    EndGL3d();
}

void Draw2D(SDL_Surface*, CGame game, SDL_Event event, CConsole console) {
    EnableGL2d();
    DrawFBO();
    FrameMark(E_FramePart::Pass2d);
    Window_HideCursor();
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
    FrameMark(E_FramePart::Start3d);
    game.UpdateCvars(console);
    BeginFBO();
    Draw3D(surface, game, event, console);
    EndFBO();
    FrameMark(E_FramePart::Blur);
    Draw2D(surface, game, event, console);
    VerboseLog(" --- done drawing \n");
}

void Frame_Pace() {
    const int limit = Cvar_GetInt(r_maxfps);
    const uint64_t now = MonotonicMicroseconds();
    // The loading frames each carry a load step: holding them back would
    // only delay the menu.
    if (limit <= 0 || !g_SplashScreen || paceSlot == 0) {
        paceSlot = now;
        return;
    }
    // Rounded up, so that the rate never exceeds the limit.
    const uint64_t next = paceSlot + (1000000u + uint64_t(limit) - 1) / uint64_t(limit);
    if (now >= next) {
        // A frame that overran its share starts the schedule again from now:
        // the frames after it are not hurried to make up for it.
        paceSlot = now;
        return;
    }
    // Sleeping to the slot, not for a fixed time, keeps the rate whatever the
    // frame cost, and a late wake-up only shortens the next frame's share.
    SleepUntilMicroseconds(next);
    paceSlot = next;
}

void Frame_Reset() {
    phase = 0;
    initialised = false;
    barPlaced = false;
    barX = barY = 0;
    splashTime = 0.0;
    splashLooked = false;
    splash = 0;
    paceSlot = 0;
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
            if (!g_MediaLoaded) {
                // Never shown again: its texels (2 MiB at 1024 x 512) go,
                // and so does what loading left free in the heap.
                ReleaseTexture("splashscreen.tga");
                splash = 0;
                malloc_trim(0);
            }
            g_MediaLoaded = true;
        }
        splashTime += Timer.get_ticks();
    }
}
