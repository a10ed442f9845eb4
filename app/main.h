// The application's spine: start-up in a fixed order, the event loop, and
// shutdown. The frame and the staged loading live in app/frame.h.
#pragma once

#include <SDL.h>

class CGame;

int SDL_main(int argc, char** argv);  // never returns
// Shutdown: the game's resources (CGame::Cleanup), then the blur's framebuffer.
void Deinitialize(CGame& game);
// Ends the loop the orderly way, through SDL's quit event; if the event cannot
// be posted, logs why and ends the process with status 1.
void TerminateApplication();
