// The bitmap font: lists, glyph cells, sets, colours and the y cut.
#include <GL/gl.h>

#include "app/appstatus.h"
#include "gl_test_env.h"
#include "render/font.h"

namespace {

class GLFont : public GLTest {
protected:
    // The only lit cells are 33 ('A' in set 0) and 162 ('B' in set 1).
    void SetUp() override {
        GLTest::SetUp();
        Font_Reset();
        AppStatus.verboseLog = true;
        ASSERT_TRUE(LoadCellFont([](int cell) { return cell == 33 || cell == 162; }));
    }
    void TearDown() override {
        KillFont();
        Font_Reset();
        GLTest::TearDown();
    }
};

} // namespace

TEST_F(GLFont, LoadBuildsTwoHundredFiftySixListsAndKillDeletesThem) {
    EXPECT_TRUE(glIsList(base) && glIsList(base + 255));
    EXPECT_NE(ReadFile("log.txt").find(" -- attempting to load Font.tga ... success!\n"), std::string::npos);
    KillFont();
    EXPECT_FALSE(glIsList(base) || glIsList(base + 255));
    Font_Reset();
    EXPECT_FALSE(FontLoad("Missing.tga"));
    EXPECT_EQ(base, 0u) << "no lists without a picture";
}

TEST_F(GLFont, GlyphsComeFromTheirCellsAndAdvanceTenUnits) {
    glPrint(100, 100, 0, 0, "%s", "AAAAA");
    EXPECT_FALSE(PixelLit(99, 108));
    EXPECT_TRUE(PixelLit(100, 108));
    EXPECT_TRUE(PixelLit(155, 108)) << "the fifth glyph starts at 140 and is 16 wide";
    EXPECT_FALSE(PixelLit(156, 108));
    EXPECT_FALSE(PixelLit(120, 99));
    EXPECT_TRUE(PixelLit(120, 115));
    EXPECT_FALSE(PixelLit(120, 116));
    // 'B' is the dark cell 34 in set 0, cell 162 in set 1 and in any set above.
    const int sets[] = {0, 1, 7};
    for (int i = 0; i < 3; i++) {
        glPrint(200 + 100 * i, 200, sets[i], 0, "B");
        EXPECT_EQ(PixelLit(208 + 100 * i, 208), sets[i] != 0) << "set " << sets[i];
    }
}

TEST_F(GLFont, DrawsAtTheScreenHeightButNotBelowAndColoursByMode) {
    Resolution.height = 300;  // a smaller logical screen, so y = height is visible
    glPrint(100, 300, 0, 0, "A");
    glPrint(200, 301, 0, 0, "A");
    EXPECT_TRUE(PixelLit(108, 308)) << "y = height draws";
    EXPECT_FALSE(PixelLit(208, 309)) << "y = height + 1 draws nothing";
    const S_Rgb colours[] = {{255, 255, 255}, {255, 255, 255}, {0, 255, 0}, {255, 0, 0}, {255, 255, 255}};
    for (int mode = 0; mode < 5; mode++) {
        glColor3f(0, 1, 0);  // the caller's colour, kept only by mode 2
        glPrint(20 + 40 * mode, 100, 0, mode, "A");
        EXPECT_RGB(GLTest_Pixel(28 + 40 * mode, 108), colours[mode].r, colours[mode].g, colours[mode].b)
            << "mode " << mode;
    }
}
