// The bitmap font: one square image of 16 x 16 glyph cells turned into 256
// display lists, and glPrint, which draws all text of the game with them.
// Glyphs are 16 x 16 units and the pen advances 10, so neighbours overlap by
// 6 units. Cell k shows character k + 32 in set 0 and k - 96 in set 1.
#pragma once

#include <string>

#include "common/log.h"  // VELTHRA_PRINTF

extern unsigned int fontNum;  // the font image's texture
extern unsigned int base;     // first of the 256 glyph lists
extern int loop;              // glyph counter of BuildFont

// Loads the image through the texture cache and builds the lists.
bool FontLoad(const std::string& fileName);
void BuildFont();
void KillFont();
// x, y: top-left corner in 2D pixels. set: 0 or 1 (above 1 means 1).
// mode: 2 keeps the caller's colour, 3 is red, anything else white.
// Nothing is drawn below the screen (y greater than its height).
void glPrint(long x, long y, int set, int mode, const char* format, ...) VELTHRA_PRINTF(5, 6);

// Test/start-up reset: forgets the font without touching OpenGL.
void Font_Reset();
