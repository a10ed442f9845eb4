// The frame: Draw with its 3D and 2D passes, the staged loading with its bar
// and splash screen, and the whole pass of the main loop that draws, which
// the game's loop and the benchmark both run.
#pragma once

#include <SDL.h>

class CConsole;
class CGame;
class CTimer;

// One pass of the loop that draws, in its order: the timer, Draw, the swap,
// one loading step, the end of the input frame (a click lasts one frame),
// then the music's refill. `event` is the last event handled; the menus read
// it.
void Frame_Run(CGame& game, CConsole& console, const SDL_Event& event);
// Called by the game's loop after each Frame_Run: where vertical sync does not
// already hold frames back, sleeps so that frames start no more often than
// "r_maxfps" a second (0 or less: no limit). The loading frames are not held
// back. The timer measures the sleep with the frame, so the rules see the real
// time between frames. The benchmark does not call it.
void Frame_Pace();
// The frame; the game and the console are handed over as copies, one a frame.
void Draw(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void Draw3D(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void Draw2D(SDL_Surface* surface, CGame game, SDL_Event event, CConsole console);
void LoadMedia(CGame& game, CTimer& timer);
void LoadingBar();
void DrawBar(int progress);
// Back to the state before the first frame: load phase 0, game not
// initialised, loading bar not placed, no splash time, no frame paced.
void Frame_Reset();
