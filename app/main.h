// The application's spine: start-up in a fixed order, the event loop, and
// shutdown. The frame and the staged loading live in app/frame.h.
#pragma once

#include <SDL.h>

class CGame;

int SDL_main(int argc, char** argv);  // never returns
void Deinitialize(CGame& game);
void TerminateApplication();
