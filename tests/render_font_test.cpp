// The bitmap font: lists, glyph cells, sets, colours and the y cut; and where
// the HUD's lines and the blur checkbox's red " slower" note land.
#include <GL/gl.h>

#include "app/appstatus.h"
#include "console/cvar.h"
#include "game/gamestats.h"
#include "game/scores.h"
#include "gl_test_env.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "render/font.h"

namespace {

class GLFont : public GLTest {
protected:
    // The only lit cells: 33 ('A' in set 0), 162 ('B' in set 1), 83 ('s' in set 0) and 172 ('L' in set 1).
    void SetUp() override {
        GLTest::SetUp();
        Font_Reset();
        AppStatus.verboseLog = true;
        ASSERT_TRUE(LoadCellFont([](int cell) { return cell == 33 || cell == 162 || cell == 83 || cell == 172; }));
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

TEST_F(GLFont, HudLinesStartOneHundredFiftyLeftOfTheRightEdgeLivesBelowScore) {
    Resolution.width = 500;
    Game_Stats.lives = 3;
    Game_Stats.score = 1234;
    Game_HUD();
    EXPECT_TRUE(PixelLit(358, 38)) << "the L of \"Lives\" at (350, 30)";
    EXPECT_FALSE(PixelLit(349, 38));
    EXPECT_FALSE(PixelLit(358, 18)) << "the score's line above holds no L";
}

TEST_F(GLFont, SlowerNoteShowsInRedWhileHoveredOrCheckedWithoutFramebufferObjects) {
    // " slower" after a box at (100, y): the blank at 134, the s at 144.
    _mtoggle = "options";
    GLext.frameBufferObjects = false;
    Cvar_Set("r_blur", "1");
    CCheckBox checked(100, 100, "r_blur", "options");
    MouseAt(0, 0);
    checked.Draw();
    EXPECT_RGB(GLTest_Pixel(152, 108), 255, 0, 0);
    float colour[4];
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_TRUE(colour[0] == 1.0f && colour[1] == 1.0f && colour[2] == 1.0f) << "white again after the note";

    Cvar_Set("r_blur", "0");
    CCheckBox unchecked(100, 200, "r_blur", "options");
    unchecked.Draw();
    EXPECT_RGB(GLTest_Pixel(152, 208), 0, 0, 0);
    MouseAt(116, 216);
    unchecked.Draw();
    EXPECT_RGB(GLTest_Pixel(152, 208), 255, 0, 0) << "hovered";

    GLext.frameBufferObjects = true;
    Cvar_Set("r_blur", "1");
    CCheckBox supported(100, 300, "r_blur", "options");
    MouseAt(116, 316);
    supported.Draw();
    EXPECT_RGB(GLTest_Pixel(152, 308), 0, 0, 0);
}
