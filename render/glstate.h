// OpenGL state of the window: the perspective, the fixed start-up state, the
// extension probe, the switches between the 3D and the 2D matrix scheme, and
// the few display settings the game changes every frame (gamma, wire-frame).
#pragma once

#include <SDL.h>

void ReshapeGL(int width, int height);  // viewport and a 45 degree perspective
// A resized window: clears the accumulation buffer, then ReshapeGL. The 2D
// pass keeps drawing at Resolution's size.
void ResizeGL(int width, int height);
// The fixed start-up state: black clear colour, depth test LEQUAL, smooth
// shading; always true.
bool InitGL();
// Whether the driver lists `name` as a whole word; each answer also leaves an
// "EXT Supported" or "EXT Unsupported!" line in the console.
bool IsExtensionSupported(const char* name);
// The whole-word search of IsExtensionSupported on a given extension string.
bool ExtensionListed(const char* extensions, const char* name);
// The 3D scheme: depth test on, the perspective pushed and left current
// until DisableGL2d pops it at the end of the 2D pass.
void EnableGL3d();
// The frame's 3D pass opens with colour and depth cleared, the current
// matrix at identity and EnableGL3d, and closes by handing the commands to
// the driver (glFlush).
void BeginGL3d();
void EndGL3d();
// The 2D scheme: pixels with the origin at the top left over Resolution's
// size, depth test off, polygons filled even in wire-frame mode.
void EnableGL2d();
void DisableGL2d();  // pops the perspective EnableGL3d pushed
// Extension entry points come from the checked table in render/glext.h
// (GLext_LoadEntryPoints, called by Initialize); this has nothing left to do.
void initGLEW();
void drawDefaultObj();  // the axes marker drawn for a model that did not load
// Flips a surface top to bottom in place; false if it cannot be locked.
bool SDL_InvertSurface(SDL_Surface* surface);

// All three channels; a round trip to the X server, so only a gamma other
// than the last one applied here is passed on. Returns whether it was.
bool SetGamma(float gamma);
void SetWireframe(bool on);  // polygon mode of both faces
// Start-up state: no gamma applied yet, so the next SetGamma passes its value on.
void GLState_Reset();
