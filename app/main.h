// The application's spine: start-up in a fixed order, the event loop, the
// frame, the staged loading with its bar and splash screen, and shutdown.
#pragma once

#include <SDL.h>

class CConsole;
class CGame;
class CTimer;

int SDL_main(int argc, char** argv);  // never returns
// The frame; the game and the console are handed over as copies, one a frame.
void Draw(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void Draw3D(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void Draw2D(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void LoadMedia(CGame& game, CTimer& timer);
void LoadingBar();
void DrawBar(int progress);
void Deinitialize(CGame& game);
void TerminateApplication();
// Back to the state before the first frame: load phase 0, game not
// initialised, loading bar not placed, no splash time.
void App_Reset();
