#include "game/gamestats.h"

S_Game_Stats Game_Stats;
