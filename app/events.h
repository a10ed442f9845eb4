// The main loop's event table: one SDL event in, the input records, focus
// flags, launch rule and loop flag updated.
#pragma once

#include <SDL.h>

void HandleEvent(const SDL_Event& event);
// The launch rule of the space key and of every mouse press.
void LaunchBall();
