#include "app/events.h"

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/timer.h"
#include "common/utils.h"
#include "console/cconsole.h"
#include "input/input.h"
#include "menu/menu.h"
#include "render/glstate.h"

namespace {
// The ball waits behind the pause screen; the next frame switches to the menu music.
void Pause() { Menu_Screen("pause"); }

void ActiveEvent(const SDL_ActiveEvent& active) {
    bool gain = active.gain != 0;
    if (active.state & SDL_APPACTIVE) {
        // Back from being iconified: the time away is no frame time, or the
        // ball, the particles and the splash would jump by all of it.
        if (gain && !AppStatus.active)
            Timer.start();
        AppStatus.active = gain;
    }
    if (active.state & SDL_APPMOUSEFOCUS)
        AppStatus.mouseFocus = gain;
    if (active.state & SDL_APPINPUTFOCUS)
        AppStatus.inputFocus = gain;
    // Alt-Tab, a notification taking the keyboard or the window iconified
    // must not cost lives: play stops as with Escape, and coming back does
    // not resume it (the player resumes from the pause screen). Set here,
    // not in a frame: an iconified window draws none until it is back.
    const bool lost = !gain && (active.state & (SDL_APPACTIVE | SDL_APPINPUTFOCUS)) != 0;
    if (lost && g_MediaLoaded && !Menu_Visible())
        Pause();
}

void Escape() {
    if (Menu_Visible()) {
        // The pause screen is left only through its own buttons.
        if (Menu_Screen_Get() != "pause")
            Menu_Screen("main");
    } else {
        Pause();
    }
}

void KeyDown(const SDL_Event& event, CConsole* console) {
    Input_KeyDown(event);
    if (console) {
        SDL_Event copy = event;
        console->getInput(&copy);
    }
    if (Keys_GrabInput(SDLK_ESCAPE))
        Escape();
    if (Keys_GrabInput(SDLK_SPACE))
        LaunchBall();
    SDL_Keys.keyReleased = false;
}

}  // namespace

void LaunchBall() {
    if (!Menu_Visible() && !AppStatus.consoleVisible)
        Game_Stats.ballLaunched = true;
}

void HandleEvent(const SDL_Event& event, CConsole* console) {
    switch (event.type) {
    case SDL_ACTIVEEVENT:
        ActiveEvent(event.active);
        break;
    case SDL_KEYDOWN:
        KeyDown(event, console);
        break;
    case SDL_KEYUP:
        Input_KeyUp(event);
        break;
    case SDL_MOUSEMOTION:
        Input_MouseMotion(event);
        break;
    case SDL_MOUSEBUTTONDOWN:
        LaunchBall();
        Input_MouseButtonDown(event);
        break;
    case SDL_MOUSEBUTTONUP:
        Input_MouseButtonUp();
        break;
    case SDL_QUIT:
        isProgramLooping = false;
        break;
    case SDL_VIDEORESIZE:
        // The perspective follows the window; Resolution (all 2D work) does not.
        ResizeGL(event.resize.w, event.resize.h);
        break;
    default:
        break;  // types above 16 and those not in the table are ignored
    }
}
