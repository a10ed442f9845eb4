#include "app/window.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cstdlib>
#include <cstring>

#include "app/initialize.h"
#include "app/quit.h"
#include "common/appstatus.h"
#include "common/cmd.h"
#include "common/cvar.h"
#include "common/log.h"
#include "common/utils.h"

SDL_Surface* Screen = nullptr;
const SDL_VideoInfo* video_info = nullptr;

bool SetupOpengl(unsigned flags) {
    VerboseLog(" -- attempting to create SDL_Video ... \n");
    if (SDL_Init(SDL_INIT_VIDEO) < 0) {
        Log("Unable to open SDL: %s\n", SDL_GetError());
        std::exit(1);
    }
    SDL_EnableUNICODE(1);
    video_info = SDL_GetVideoInfo();
    std::atexit(SDL_Quit);

    if (!CreateWindowGL(Resolution.width, Resolution.height, Resolution.bpp, flags)) {
        Log("Unable to open screen surface: %s\n", SDL_GetError());
        std::exit(1);
    }
    SDL_WM_SetCaption(GAME_NAME, nullptr);
    if (!InitGL()) {
        Log("Can't init GL: %s\n", SDL_GetError());
        std::exit(1);
    }
    if (!Initialize()) {
        Log("App init failed: %s\n", SDL_GetError());
        std::exit(1);
    }
    system_h();
    return true;
}

void Window_SetGLAttributes() {
    SDL_GL_SetAttribute(SDL_GL_ACCUM_RED_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_GREEN_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_BLUE_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_ALPHA_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    // Vertical sync holds frames to the screen's refresh where the driver
    // honours it (a software driver under a virtual X server does not: the
    // loop's own limit, Frame_Pace, covers that). "r_maxfps 0" asks for it
    // off, so that nothing limits the frame rate.
    SDL_GL_SetAttribute(SDL_GL_SWAP_CONTROL, Cvar_GetInt(r_maxfps) != 0 ? 1 : 0);
}

bool CreateWindowGL(int width, int height, int bpp, unsigned flags) {
    VerboseLog(" -- trying to create window \n");
    Window_SetGLAttributes();
    if (Cvar_GetInt(fullscreen) != 0)
        flags |= SDL_FULLSCREEN;
    Screen = SDL_SetVideoMode(width, height, bpp, flags);
    if (!Screen)
        return false;
    ReshapeGL(Resolution.width, Resolution.height);
    return true;
}

void SetUpIcon(const char* file) {
    VerboseLog(" -- attempting to setup SDL window ICON ... \n");
    SDL_Surface* icon = SDL_LoadBMP(file);
    if (!icon) {
        Log("Unable to load icon: %s\n", SDL_GetError());
        return;
    }
    if (icon->w % 8 != 0) {
        Log("Icon width must be a multiple of 8\n");
        SDL_FreeSurface(icon);
        return;
    }
    if (!icon->format->palette) {
        Log("Icon file must have a palette.\n");
        SDL_FreeSurface(icon);
        return;
    }
    Uint8* pixels = static_cast<Uint8*>(icon->pixels);
    SDL_SetColorKey(icon, SDL_SRCCOLORKEY, pixels[0]);
    size_t maskLength = size_t(icon->w / 8) * size_t(icon->h);
    Uint8* mask = static_cast<Uint8*>(std::malloc(maskLength));
    if (!mask) {
        Log("malloc() failed while loading icon: %s\n", SDL_GetError());
        SDL_FreeSurface(icon);
        return;
    }
    std::memset(mask, 0, maskLength);
    for (int y = 0; y < icon->h; y++) {
        for (int x = 0; x < icon->w; x++) {
            if (pixels[y * icon->pitch + x] != pixels[0])
                mask[(y * icon->w + x) / 8] |= Uint8(0x80 >> (x % 8));
        }
    }
    VerboseLog(" -- attempting to apply SDL window ICON ... ");
    SDL_WM_SetIcon(icon, mask);
    VerboseLog(" success!\n");
    std::free(mask);
    SDL_FreeSurface(icon);
}

void Window_SwapBuffers() { SDL_GL_SwapBuffers(); }

void Window_HideCursor() { SDL_ShowCursor(SDL_DISABLE); }

bool Window_PollEvent(SDL_Event& event) { return SDL_PollEvent(&event) != 0; }

void Window_WaitEvent(void (*whileWaiting)()) {
    // SDL 1.2's own wait is this loop, 10 ms a turn, but it cannot be told to
    // stop: a quit asked for by a signal must end the wait too, and the
    // caller has work to do meanwhile (the music's refill).
    constexpr Uint32 WAIT_STEP_MS = 10;
    while (Quit_Signal() == 0) {
        SDL_PumpEvents();
        SDL_Event pending;
        if (SDL_PeepEvents(&pending, 1, SDL_PEEKEVENT, SDL_ALLEVENTS) != 0)
            return;  // an event (or an error, which waiting would not mend)
        if (whileWaiting)
            whileWaiting();
        SDL_Delay(WAIT_STEP_MS);
    }
}

bool Window_PushQuit() {
    SDL_Event quit;
    quit.type = SDL_QUIT;
    if (SDL_PushEvent(&quit) < 0) {
        Log("SDL_QUIT event can't be pushed: %s\n", SDL_GetError());
        return false;
    }
    return true;
}

void Window_Reset() {
    Screen = nullptr;
    video_info = nullptr;
}
