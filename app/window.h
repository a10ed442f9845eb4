// The SDL video set-up, the OpenGL window and its fixed state, the extension
// probe, and the per-frame switches between the 3D and the 2D matrix scheme.
#pragma once

#include <SDL.h>

#include <string>

extern SDL_Surface* Screen;
extern const SDL_VideoInfo* video_info;

bool SetupOpengl(unsigned flags);  // ends the process on failure
bool CreateWindowGL(int width, int height, int bpp, unsigned flags);
void ReshapeGL(int width, int height);
bool InitGL();
bool IsExtensionSupported(const char* name);
// The whole-word search of IsExtensionSupported on a given extension string.
bool ExtensionListed(const char* extensions, const char* name);
void EnableGL3d();
void EnableGL2d();
void DisableGL2d();
void initGLEW();  // nothing to do: the entry points are used directly
void drawDefaultObj();
void SetUpIcon(const char* file);
// Flips a surface top to bottom in place; false if it cannot be locked.
bool SDL_InvertSurface(SDL_Surface* surface);

// Defined by the application's start-up code; called by SetupOpengl.
bool Initialize();
