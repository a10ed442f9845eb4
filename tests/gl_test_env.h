// Shared ground for the render and scene tests: one hidden OpenGL window for
// every test that needs the real driver (created on first use, never in a
// test that does not ask), a scratch working folder with its own log.txt,
// and byte-exact writers for Targa and model files.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// The window is square and larger than the blur's 512 x 512 copy.
constexpr int GLTEST_SIZE = 576;

// Opens the window on first call; on every call sets Resolution to its size,
// refills GLext from the driver and fetches the extension entry points.
// False when no window could be made (no X server).
bool GLTest_Window();
// A known state for drawing: full viewport, y-down pixel projection like the
// game's 2D mode, model-view identity, no texturing, blending, alpha test,
// depth test or culling, white colour, black cleared back buffer, no
// framebuffer object bound.
void GLTest_ResetState();
// Projection with y up and the origin at the centre, units = pixels; for
// models, which are drawn with back-face culling.
void GLTest_CentredProjection();

struct S_Rgb {
    int r = 0, g = 0, b = 0;
};
// Back-buffer pixel, x from the left and y from the TOP, like the 2D mode.
S_Rgb GLTest_Pixel(int x, int y);
bool Near(const S_Rgb& p, int r, int g, int b, int tolerance = 8);
std::string ToText(const S_Rgb& p);
// Any pixel near the colour within `reach` pixels of (x, y): lines fall on
// pixel rows by the driver's own rules.
bool FindColour(int x, int y, int reach, int r, int g, int b);
// For EXPECT_RGB: the failure message shows the colour that was read.
::testing::AssertionResult RgbNear(const char* pixelText, const char*, const char*, const char*,
                                   const char*, const S_Rgb& p, int r, int g, int b, int tolerance);
// EXPECT_RGB(GLTest_Pixel(x, y), r, g, b, tolerance) << "why";
#define EXPECT_RGB(pixel, r, g, b, tolerance) EXPECT_PRED_FORMAT5(RgbNear, pixel, r, g, b, tolerance)

// A fresh folder made the working directory, with data/textures/ and
// data/models/, and log.txt opened in it; the destructor closes the log,
// returns to the previous folder and deletes this one.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    std::string Log() const;  // log.txt as written so far
    const std::string& path() const { return path_; }

private:
    std::string path_;
    std::string previous_;
};

void WriteBytes(const std::string& path, const std::string& bytes);  // makes the folders
// The cvar list as the game registers it, with the compiled defaults.
void RegisterDefaultCvars();

struct S_Texel {
    uint8_t r = 0, g = 0, b = 0, a = 255;
};
// The 18-byte Targa header; every byte can be overridden for bad files.
struct S_TgaHeader {
    uint8_t idLength = 0, colourMapType = 0, imageType = 2;
    uint8_t colourMap[5] = {0, 0, 0, 0, 0};
    uint16_t originX = 0, originY = 0;
    uint16_t width = 0, height = 0;
    uint8_t bpp = 24, descriptor = 0;
};
S_Texel MakeTexel(int r, int g, int b, int a = 255);
std::string TgaHeaderBytes(const S_TgaHeader& header);
// A whole uncompressed file; texel(x, row) with row 0 the FIRST row in the
// file (the bottom of the picture). Written blue, green, red[, alpha].
std::string TgaFile(int width, int height, int bpp, const std::function<S_Texel(int, int)>& texel);
std::string SolidColourTga(int width, int height, int bpp, S_Texel colour);
