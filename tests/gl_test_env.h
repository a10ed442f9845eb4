// One hidden OpenGL window on the real driver, a fixture with a scratch
// folder and its own log.txt, pixel read-back and a Targa writer.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

#include "test_support.h"

constexpr int GLTEST_SIZE = 576;  // square, larger than the blur's 512 x 512 copy

// Opens the window on first call; every call sets Resolution and GLext anew. False without an X server.
bool GLTest_Window();
// Full viewport, the game's y-down 2D projection, nothing enabled, white colour, black back buffer, no FBO.
void GLTest_ResetState();
// y up, origin at the window's centre, units = pixels: for models.
void GLTest_CentredProjection();
void GLTest_LinkGameData();  // the runnable folder's data seen from the scratch folder

struct S_Rgb {
    int r = 0, g = 0, b = 0;
};
std::ostream& operator<<(std::ostream& out, const S_Rgb& p);
S_Rgb GLTest_Pixel(int x, int y);  // back buffer, y counted from the TOP
// Any pixel near the colour within `reach` pixels: lines fall on rows by the driver's rules.
bool FindColour(int x, int y, int reach, int r, int g, int b);
::testing::AssertionResult RgbNear(const char* text, const char*, const char*, const char*, const S_Rgb& p, int r,
                                   int g, int b);
// EXPECT_RGB(GLTest_Pixel(x, y), r, g, b) << "why"; within 8 per channel.
#define EXPECT_RGB(pixel, r, g, b) EXPECT_PRED_FORMAT4(RgbNear, pixel, r, g, b)

// Start-up state with the cvars, an empty texture cache, the window reset, and a scratch folder with log.txt.
class GLTest : public ShellTest {
protected:
    void SetUp() override;
    void TearDown() override;

private:
    ScratchDir scratch_;
};

struct S_Texel {
    uint8_t r, g, b, a;
};
// Uncompressed Targa; texel(x, row), row 0 being the file's first (the picture's bottom).
std::string TgaFile(int width, int height, int bpp, const std::function<S_Texel(int, int)>& texel);
std::string TgaFill(int width, int height, S_Texel colour);  // 24 bits, one colour
