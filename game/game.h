// The game session driver: staged loading of the game's assets, the level
// sequence, the paddle, the music switch and the per-frame cvar effects.
#pragma once

#include <SDL.h>

#include <string>

class CConsole;

class CGame {
public:
    void Init();  // once per process
    void Reset(const std::string& world);
    void LoadMedia(int phase);
    void Run3d();
    void ProcessGame();
    void setCamera();
    void controlCamera();
    void Run2d(const SDL_Event& event);
    void UpdateCvars(CConsole& console);
    void DisplayFPS();
    void Cleanup();

private:
    float paddle[3] = {0.0f, 0.0f, 7.0f};
};

// One stage of asset loading; each stage moves the loading bar.
void PreCacheData(int phase);
// Lets CGame::Init run again (start-up state).
void Game_Reset();
