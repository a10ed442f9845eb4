// The bitmap font: lists, glyph cells, sets, colours and the y cut.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include "app/appstatus.h"
#include "gl_test_env.h"
#include "render/font.h"
#include "render/texture.h"

namespace {

// A 256 x 256 font whose only lit cells are 33 ('A' in set 0) and 162
// ('B' in set 1). Cell k sits at column k % 16 and row k / 16 counted from
// the TOP of the picture; Targa rows run from the bottom.
std::string FontFile() {
    return TgaFile(256, 256, 32, [](int x, int fileRow) {
        int cell = ((255 - fileRow) / 16) * 16 + x / 16;
        S_Texel t;
        bool lit = cell == 33 || cell == 162;
        t.r = t.g = t.b = lit ? 255 : 0;
        t.a = lit ? 255 : 0;
        return t;
    });
}

bool Lit(const S_Rgb& p) { return p.r + p.g + p.b > 300; }

class RenderFont : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(GLTest_Window());
        Texture_Reset();
        Font_Reset();
        AppStatus = S_AppStatus();
        GLTest_ResetState();
    }
    void TearDown() override {
        KillFont();
        if (fontNum)
            glDeleteTextures(1, &fontNum);
        Font_Reset();
        Texture_Reset();
        Resolution.height = GLTEST_SIZE;
        GLTest_ResetState();
    }
};

} // namespace

TEST_F(RenderFont, LoadBuildsTwoHundredFiftySixListsAndKillDeletesThem) {
    TestFolder folder;
    AppStatus.verboseLog = true;
    EXPECT_FALSE(FontLoad("Missing.tga"));
    EXPECT_EQ(fontNum, 0u);
    EXPECT_EQ(base, 0u) << "no lists without a picture";
    WriteBytes("data/textures/Font.tga", FontFile());
    ASSERT_TRUE(FontLoad("Font.tga"));
    EXPECT_NE(fontNum, 0u);
    ASSERT_NE(base, 0u);
    EXPECT_TRUE(glIsList(base));
    EXPECT_TRUE(glIsList(base + 255));
    EXPECT_EQ(loop, 256) << "the glyph counter is a global left at its end";
    const std::string log = folder.Log();
    EXPECT_NE(log.find(" -- attempting to load Missing.tga ... ERROR: could not load font: Missing.tga"),
              std::string::npos) << log;
    EXPECT_NE(log.find(" -- attempting to load Font.tga ... success!\n"), std::string::npos) << log;
    KillFont();
    EXPECT_FALSE(glIsList(base));
    EXPECT_FALSE(glIsList(base + 255));
}

TEST_F(RenderFont, GlyphsComeFromTheirCellsInBothSets) {
    TestFolder folder;
    WriteBytes("data/textures/Font.tga", FontFile());
    ASSERT_TRUE(FontLoad("Font.tga"));

    glPrint(100, 100, 0, 0, "A");
    EXPECT_TRUE(Lit(GLTest_Pixel(108, 108)));
    glPrint(200, 100, 0, 0, "B");
    EXPECT_FALSE(Lit(GLTest_Pixel(208, 108))) << "set 0 'B' is cell 34, dark";
    glPrint(300, 100, 1, 0, "B");
    EXPECT_TRUE(Lit(GLTest_Pixel(308, 108))) << "set 1 'B' is cell 162";
    glPrint(400, 100, 7, 0, "B");
    EXPECT_TRUE(Lit(GLTest_Pixel(408, 108))) << "sets above 1 are set 1";
    // Negative sets are not corrected: set -1 moves the base down by 128,
    // so code 193 lands on cell 33.
    glPrint(500, 100, -1, 0, "\xC1");
    EXPECT_TRUE(Lit(GLTest_Pixel(508, 108)));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
}

TEST_F(RenderFont, FiveCharactersCoverFiftySixUnits) {
    TestFolder folder;
    WriteBytes("data/textures/Font.tga", FontFile());
    ASSERT_TRUE(FontLoad("Font.tga"));
    glPrint(100, 200, 0, 0, "%s", "AAAAA");
    EXPECT_FALSE(Lit(GLTest_Pixel(99, 208)));
    EXPECT_TRUE(Lit(GLTest_Pixel(100, 208)));
    EXPECT_TRUE(Lit(GLTest_Pixel(155, 208))) << "last glyph starts at 140 and is 16 wide";
    EXPECT_FALSE(Lit(GLTest_Pixel(156, 208)));
    EXPECT_FALSE(Lit(GLTest_Pixel(120, 199)));
    EXPECT_TRUE(Lit(GLTest_Pixel(120, 215)));
    EXPECT_FALSE(Lit(GLTest_Pixel(120, 216)));
}

TEST_F(RenderFont, DrawsAtTheScreenHeightButNotOneBelow) {
    TestFolder folder;
    WriteBytes("data/textures/Font.tga", FontFile());
    ASSERT_TRUE(FontLoad("Font.tga"));
    // A smaller logical screen inside the window, so y = height is visible.
    Resolution.height = 300;
    glPrint(100, 300, 0, 0, "A");
    EXPECT_TRUE(Lit(GLTest_Pixel(108, 308))) << "y equal to the height draws";
    glPrint(200, 301, 0, 0, "A");
    EXPECT_FALSE(Lit(GLTest_Pixel(208, 309))) << "y = height + 1 draws nothing";
    glPrint(300, -8, 0, 0, "A");
    EXPECT_TRUE(Lit(GLTest_Pixel(308, 2))) << "text above the top is still drawn";
}

TEST_F(RenderFont, ModeTwoKeepsTheCallersColourAndModeThreeIsRed) {
    TestFolder folder;
    WriteBytes("data/textures/Font.tga", FontFile());
    ASSERT_TRUE(FontLoad("Font.tga"));
    struct Case {
        int mode;
        int r, g, b;
    };
    const Case cases[] = {{0, 255, 255, 255}, {1, 255, 255, 255}, {2, 0, 255, 0}, {3, 255, 0, 0}, {4, 255, 255, 255}};
    int x = 20;
    for (const Case& c : cases) {
        glColor3f(0, 1, 0);  // the caller's colour, kept only by mode 2
        glPrint(x, 300, 0, c.mode, "A");
        EXPECT_RGB(GLTest_Pixel(x + 8, 308), c.r, c.g, c.b, 8) << "mode " << c.mode;
        x += 40;
    }
}
