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

// One roll of the dice (1 in 10 starts a burst when none runs), then, while a
// burst runs, `file` drawn once at its place; an ended effect ends the burst.
void DrawRandomParticles(const std::string& file);
// Start-up state: no burst running.
void MenuBursts_Reset();
