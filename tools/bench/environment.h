// What the benchmark needs around the game: the folder the game runs in,
// the memory of an empty window, pictures of frames, the process's age.
#pragma once

#include <string>

// This executable's path (for running it again as a child).
std::string SelfPath(const char* argv0);

// A new folder under /tmp for the game to run in: the game's data folders
// and archive linked in from `game`, and nobody's settings, scores or log,
// so every run starts as a first run. Ends the process when `game` holds
// no game.
std::string PrepareRunFolder(const std::string& game);

// Resident memory of an empty window with the game's attributes.
struct S_Floor {
    double drawn = 0.0;  // after drawing
    double open = 0.0;   // with the window open, nothing drawn yet
};
// The child's side (velthra-bench --floor WxH): prints "drawn open".
int RunFloor(int width, int height);
// Runs `self --floor WxH` and reads its answer; zeros when it fails.
S_Floor MeasureFloor(const std::string& self, int width, int height);

// The back buffer (Resolution's size) as a binary PPM, top row first.
void SaveBackBuffer(const std::string& path);

// How long the process had run when this was called, from the kernel's
// record of its start (in clock ticks, so to the nearest 10 ms or so).
double ProcessAgeMs();
