// The HUD of play: lives and score at the right edge, following the screen width.
#include "common/appstatus.h"
#include "common/gamestats.h"
#include "common/scores.h"
#include "render/font.h"

void Game_HUD() {
    glPrint(Resolution.width - 150, 30, 1, 0, "Lives %d", Game_Stats.lives);
    glPrint(Resolution.width - 150, 10, 1, 0, "Score %d", Game_Stats.score);
}
