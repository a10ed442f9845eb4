// The running game's statistics, shared by the session driver, the ball,
// the bricks, the HUD, the console's cheats and the menus.
#pragma once

#include <string>

struct S_Game_Stats {
    bool ballLaunched = false;
    float ballStartX = 0.0f;
    float ballStartZ = 0.0f;
    float paddleX = 0.0f;
    float paddleZ = 0.0f;
    int level = 1;  // the next level file to load
    int score = 0;
    int extraLifePoints = 0;  // above 10000 they turn into a life
    int lives = 3;
    bool skipLevel = false;
    bool restart = false;
    bool secondRound = false;
    std::string playerName;
    bool newGame = false;
};

extern S_Game_Stats Game_Stats;

void GameStats_Reset();  // a game not yet started
