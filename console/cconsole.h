// The drop-down console: the line being typed, its history, the scroll
// position and the background. The output lines themselves live in AppStatus
// (common/console.h) so that Log, Con_Print and the commands reach them
// without this object; the console only adds the lines typed into it.
//
// One object exists; the main loop hands it every key-down event and draws
// it each frame while AppStatus.consoleVisible is set. draw() only reads and
// draws: the one piece of state a frame changes (the cursor's blink phase)
// is stepped by NextCursorShown(), which needs no window.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <deque>
#include <string>

class CGame;

struct S_ConColor {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
};

class CConsole {
public:
    // Unscrolled, empty, blending on, no background picture until Init.
    CConsole();
    void Init();  // the background picture "conback.tga"
    // One key event; only key-down events are read, others are ignored.
    void getInput(SDL_Event* event);
    void draw(const CGame& game);  // the game is not read
    // The line goes into the output and the history, then runs as a setting
    // when its first word names a cvar (a saved one changed is written to
    // prefs.cfg at once), else as a command.
    void bumpConsole();  // submits the typed line
    // Cmd_RunCommand: true when a command ran or showed its help.
    bool Con_exeCmd(const std::string& line);
    void SetColor(float r, float g, float b, float a);  // stored; drawing ignores it
    // The line being typed, at most 101 characters.
    std::string getConLine();

    // Read by the drawing and by tests.
    const std::deque<std::string>& History() const { return history; }
    int32_t ScrollLines() const { return scrollLines; }
    int32_t ScrollPixels() const { return scrollPixels; }
    S_ConColor Colour() const { return colour; }
    bool BlendEnabled() const { return blendEnabled; }
    int32_t BackgroundTexture() const { return backgroundTexture; }

    // The layout of draw(), in 2D pixels for a screen screenHeight tall.
    static long PromptY(long screenHeight);
    static long ScrollMarkY(long screenHeight);
    long OutputLineY(int index, long screenHeight) const;
    // Whether this frame's prompt shows the "|" cursor; flips the phase, so
    // the cursor blinks at half the frame rate, starting shown.
    static bool NextCursorShown();

private:
    std::string inputLine;
    std::deque<std::string> history;  // submitted lines, newest first
    int32_t scrollLines;              // output lines scrolled off the bottom
    int32_t scrollPixels;             // vertical offset of the output while scrolled
    S_ConColor colour;
    bool blendEnabled;
    int32_t backgroundTexture;  // -1: none
};

// Verbose-logs a rule and prints it, between two empty lines, to the console.
void Con_Bump();
// Back to start-up state: the history recall position and the cursor phase,
// which are shared by every console object.
void Console_Reset();
