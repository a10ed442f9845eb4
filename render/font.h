// The bitmap font: one square image of 16 x 16 glyph cells, their corners
// worked out once, and glPrint, which draws all text of the game with them,
// each text in one draw.
// Glyphs are 16 x 16 units and the pen advances 10, so neighbours overlap by
// 6 units. Cell k shows character k + 32 in set 0 and k - 96 in set 1.
#pragma once

#include <string>

#include "common/log.h"  // VELTHRA_PRINTF

extern unsigned int fontNum;  // the font image's texture
extern int loop;              // glyph counter of BuildFont

// Loads the image through the texture cache and builds the glyphs. A missing
// picture fails only while there is no fallback texture; after DefaultTexture
// the font is built on the fallback.
bool FontLoad(const std::string& fileName);
// The glyphs of fontNum (which it binds), again on every call: cell k, left
// to right and top row first, is a 16 x 16 quad that moves the pen 10 units
// right.
void BuildFont();
void KillFont();  // forgets the glyphs: glPrint draws nothing until the next BuildFont
// x, y: top-left corner in 2D pixels. set: 0 or 1 (above 1 means 1).
// mode: 2 keeps the caller's colour, 3 is red, anything else white.
// Nothing is drawn below the screen (y greater than its height).
void glPrint(long x, long y, int set, int mode, const char* format, ...) VELTHRA_PRINTF(5, 6);

// Test/start-up reset: forgets the font without touching OpenGL.
void Font_Reset();
