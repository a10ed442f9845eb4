// The SDL video set-up and the OpenGL window. The GL state helpers it uses
// live in render/glstate.h.
#pragma once

#include <SDL.h>

#include <string>

#include "render/glstate.h"

extern SDL_Surface* Screen;
extern const SDL_VideoInfo* video_info;

bool SetupOpengl(unsigned flags);  // ends the process on failure
// The buffers the game asks SDL for before a video mode is set, and vertical
// sync unless "r_maxfps" is 0.
void Window_SetGLAttributes();
bool CreateWindowGL(int width, int height, int bpp, unsigned flags);
void SetUpIcon(const char* file);

// The main loop's calls to SDL: the back buffer shown, the system pointer
// hidden (the menus draw their own), the next pending event taken (false
// when none is), a sleep until an event arrives (it stays queued) or a
// signal asks to quit (Quit_Signal), which calls `whileWaiting` (when not
// null) every 10 ms or so.
void Window_SwapBuffers();
void Window_HideCursor();
bool Window_PollEvent(SDL_Event& event);
void Window_WaitEvent(void (*whileWaiting)());
// Posts SDL's quit event, which ends the loop; false, logged with SDL's
// reason, when it cannot be posted.
bool Window_PushQuit();
// No window known: Screen and video_info forgotten (the window itself is
// left as it is).
void Window_Reset();
