// The main loop's event table: one SDL event in, the input records, focus
// flags, launch rule and loop flag updated.
#pragma once

#include <SDL.h>

class CConsole;

// Every key-down also reaches the console when one is given (the main loop
// always gives it; tests of the other rows may not).
void HandleEvent(const SDL_Event& event, CConsole* console = nullptr);
// The launch rule of the space key and of every mouse press.
void LaunchBall();
