// What the benchmark needs around the game: the folder the game runs in,
// the memory of an empty window, one screen fill for comparison, pictures
// of frames, the process's age.
#pragma once

#include <string>
#include <vector>

#include "measure.h"

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

// The back buffer (Resolution's size) as RGB bytes, top row first.
std::vector<unsigned char> ReadBackBuffer();
// A picture as a binary PPM; false when the file cannot be written.
bool SavePicture(const std::string& path, int width, int height, const std::vector<unsigned char>& rgb);
// A binary PPM as written by SavePicture; false when it is missing or not one.
bool LoadPicture(const std::string& path, int& width, int& height, std::vector<unsigned char>& rgb);
// How many pixels of two RGB pictures of one size differ in any channel.
long DifferingPixels(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b);

// The yardstick for a drawn frame: clear colour and depth, one full-screen
// quad textured from a 256 x 256 picture (linear filters, no depth test, no
// blending), swap; in a window like the game's. The child's side
// (velthra-bench --frames N --fill WxH): `warmup` untimed frames, then
// `frames` timed ones; prints "frames seconds cpu_ms median_ms p95_ms max_ms".
int RunFill(int width, int height, int frames, int warmup);
// Runs the child and reads its answer; frames 0 when it fails.
S_SceneResult MeasureFill(const std::string& self, int width, int height, int frames);

// How long the process had run when this was called, from the kernel's
// record of its start (in clock ticks, so to the nearest 10 ms or so).
double ProcessAgeMs();
