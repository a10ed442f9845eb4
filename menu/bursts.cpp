#include "menu/bursts.h"

#include <cstdlib>

#include "common/appstatus.h"
#include "particles/particles.h"

S_MenuBurst g_MenuBurst;

namespace {

// rand() mod size; a screen size of 0 (no window yet) would divide by zero,
// so such an axis takes 0. The draw still happens to keep the sequence.
int RandomBelow(int size) {
    const int r = std::rand();
    return size > 0 ? r % size : 0;
}

}  // namespace

void DrawRandomParticles(const std::string& file) {
    const int r = std::rand() % 10;
    if (r == 1 && !g_MenuBurst.running) {
        g_MenuBurst.x = RandomBelow(Resolution.width);
        g_MenuBurst.y = RandomBelow(Resolution.height);
        g_MenuBurst.running = true;
    }
    // Whichever effect is offered while the burst runs is the one drawn.
    if (g_MenuBurst.running && ParticleDraw(file, float(g_MenuBurst.x) / MENU_BURST_SCALE,
                                            float(g_MenuBurst.y) / MENU_BURST_SCALE, 0.0f, false))
        g_MenuBurst.running = false;
}

void MenuBursts_Reset() { g_MenuBurst = S_MenuBurst(); }
