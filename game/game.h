// The game session driver: staged loading of the game's assets, the level
// sequence with its second round, game over and the fresh game of the main
// menu, the paddle, the music switch and the per-frame cvar effects.
//
// Run3d and ProcessGame both decide and draw; what they decide lives in
// UpdateSession and MovePaddle, which need no window, so a test can drive a
// whole session with chosen inputs.
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

    // Kept for a free camera and paddle tuning; nothing calls them.
    void MouseInput();
    void KeyUp();
    void KeyDown();
    void KeyLeft();
    void KeyRight();

    // The rules of Run3d before it draws: level change, the name typed on
    // "gameover", game over, and the fresh game while "main" shows.
    void UpdateSession();
    // The rules of ProcessGame before it draws: the paddle from the mouse
    // and, while the ball rests, the ball's start on the paddle.
    void MovePaddle();
    float PaddleX() const { return paddle[0]; }

private:
    float paddle[3] = {0.0f, 0.0f, 7.0f};
};

// One stage of asset loading; each stage moves the loading bar.
void PreCacheData(int phase);
// Paddle x per mouse pixel for a screen height; 0 for a height the table
// does not know (the paddle then stays where it is).
double PaddleFactor(int screenHeight);
// Which music a frame switches to: the menu's while a menu shows, the game's
// during play; each switch happens once per change of mode.
enum class MusicSwitch { None, ToMenu, ToGame };
MusicSwitch Game_MusicSwitch(bool menuShowing);
void DisplayVersion();
// Start-up state: CGame::Init may run again, no music marked as playing.
void Game_Reset();

extern float ncatch;  // moved by CGame::KeyUp/KeyDown; read by nothing
