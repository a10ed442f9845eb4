// The SDL video set-up and the OpenGL window. The GL state helpers it uses
// live in render/glstate.h.
#pragma once

#include <SDL.h>

#include <string>

#include "render/glstate.h"

extern SDL_Surface* Screen;
extern const SDL_VideoInfo* video_info;

bool SetupOpengl(unsigned flags);  // ends the process on failure
// The buffers the game asks SDL for before a video mode is set.
void Window_SetGLAttributes();
bool CreateWindowGL(int width, int height, int bpp, unsigned flags);
void SetUpIcon(const char* file);
