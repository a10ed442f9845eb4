// The menu's background bursts: now and then a one-shot particle effect
// starts at a random place of the screen and is drawn until it ends. One
// burst at a time, shared by every effect that Menu_Draw offers.
#pragma once

#include <string>

struct S_MenuBurst {
    bool running = false;
    int x = 0, y = 0;  // screen pixels of the running burst
};

extern S_MenuBurst g_MenuBurst;

// A particle is one unit across; the menus draw their bursts at this many
// screen pixels per unit (Menu_Draw scales the 2D pass), so a burst reads as
// a glow rather than a few dots. The burst's place, picked in pixels, is
// handed to the effect in those units so it still lands where it was picked.
constexpr float MENU_BURST_SCALE = 24.0f;

// One roll of the dice (1 in 10 starts a burst when none runs), then, while a
// burst runs, `file` drawn once at its place; an ended effect ends the burst.
void DrawRandomParticles(const std::string& file);
// Start-up state: no burst running.
void MenuBursts_Reset();
