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
    // Starts a level: paddle centred, ball resting. A name waiting in
    // "r_highscore" is recorded (not on a new game), then name and score are
    // cleared. Past level 10 the second round begins; a due restart loads
    // lvl1.xml instead of `world`. Builds the bricks and moves
    // Game_Stats.level one ahead.
    void Reset(const std::string& world);
    void LoadMedia(int phase);  // PreCacheData: phases 1 to 7, any other does nothing
    // UpdateSession, then during play the sky box round the camera (100 units
    // a side) and the level.
    void Run3d();
    // Applies "volume" every frame; during play MovePaddle, the paddle and
    // the ball (on the paddle until launched, else Bounce).
    void ProcessGame();
    // The camera of the frame: up into the sky while a menu shows, behind the
    // paddle during play. controlCamera then applies it.
    void setCamera();
    void controlCamera();
    // The 2D pass: the music switch, the bursts and version (menus) or the
    // HUD (play), then the menus, the cursor and the frame rate.
    void Run2d(const SDL_Event& event);
    // "brightness" as gamma (0.3 at least), "wireframe", and the con_ colour
    // read as whole numbers into the console (which stores it only).
    void UpdateCvars(CConsole& console);
    // "Frame Rate  N" at (10, 10) while "showfps" is 1 or more. GetFPS
    // measures from its last call, so once a frame.
    void DisplayFPS();
    // Models, sounds and channels, textures, widgets, bricks and the font;
    // needs the OpenGL and OpenAL contexts.
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
    // The rules of ProcessGame before it draws: a held arrow key moves the
    // pointer (not while the console is down), the paddle follows the
    // pointer and, while the ball rests, the ball's start follows the paddle.
    void MovePaddle();
    float PaddleX() const { return paddle[0]; }  // world x of the paddle's centre

private:
    float paddle[3] = {0.0f, 0.0f, 7.0f};
};

// One stage of asset loading; each stage moves the loading bar.
void PreCacheData(int phase);
// Paddle x per mouse pixel for a screen height; 0 for a height the table
// does not know (the paddle then stays where it is).
double PaddleFactor(int screenHeight);
// Pointer pixels that a frame of `seconds` moves while an arrow key is held
// (direction -1 left, 1 right): the paddle crosses from wall to wall in one
// second at every screen height and frame rate. 0 where PaddleFactor is 0.
double PaddleKeyStep(int direction, double seconds, int screenHeight);
// Which music a frame switches to: the menu's while a menu shows, the game's
// during play; each switch happens once per change of mode.
enum class MusicSwitch { None, ToMenu, ToGame };
MusicSwitch Game_MusicSwitch(bool menuShowing);
void DisplayVersion();  // "v<version>" 80 pixels from the right edge, 25 down
// Start-up state: CGame::Init may run again, no music marked as playing.
void Game_Reset();

extern float ncatch;  // moved by CGame::KeyUp/KeyDown; read by nothing
