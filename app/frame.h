// The frame: Draw with its 3D and 2D passes, the staged loading with its bar
// and splash screen, and the whole pass of the main loop that draws, which
// the game's loop and the benchmark both run.
#pragma once

#include <SDL.h>

class CConsole;
class CGame;
class CTimer;

// One pass of the loop that draws, in its order: the timer, Draw, the swap,
// one loading step, then the end of the input frame (a click lasts one
// frame). `event` is the last event handled; the menus read it.
void Frame_Run(CGame& game, CConsole& console, const SDL_Event& event);
// The frame; the game and the console are handed over as copies, one a frame.
void Draw(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void Draw3D(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void Draw2D(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void LoadMedia(CGame& game, CTimer& timer);
void LoadingBar();
void DrawBar(int progress);
// Back to the state before the first frame: load phase 0, game not
// initialised, loading bar not placed, no splash time.
void Frame_Reset();
