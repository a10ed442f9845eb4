#include "common/gamestats.h"

S_Game_Stats Game_Stats;

void GameStats_Reset() { Game_Stats = S_Game_Stats(); }
