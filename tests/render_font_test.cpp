// The bitmap font: glyphs, cells, sets, colours and the y cut; and where
// the HUD's lines and the blur checkbox's red " slower" note land.
#include <GL/gl.h>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/scores.h"
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

}  // namespace

TEST_F(GLFont, LoadBuildsTheGlyphsKillForgetsThemAndNoPictureBuildsNone) {
    EXPECT_NE(ReadFile("log.txt").find(" -- attempting to load Font.tga ... success!\n"), std::string::npos);
    glPrint(100, 100, 0, 0, "A");
    EXPECT_TRUE(PixelLit(108, 108));
    KillFont();
    glPrint(200, 100, 0, 0, "A");
    EXPECT_FALSE(PixelLit(208, 108)) << "killed";
    Font_Reset();
    EXPECT_FALSE(FontLoad("Missing.tga"));
    glPrint(300, 100, 0, 0, "A");
    EXPECT_FALSE(PixelLit(308, 108)) << "no glyphs without a picture";
}

TEST_F(GLFont, GlyphsComeFromTheirCellsAndAdvanceTenUnits) {
    // Five glyphs 16 wide, 10 apart: lit from x 100 to 155 (the fifth starts at 140) and y 100 to 115.
    glPrint(100, 100, 0, 0, "%s", "AAAAA");
    const struct {
        int x, y;
        bool lit;
    } probes[] = {{99, 108, false}, {100, 108, true}, {155, 108, true}, {156, 108, false},
                  {120, 99, false}, {120, 115, true}, {120, 116, false}};
    for (const auto& p : probes)
        EXPECT_EQ(PixelLit(p.x, p.y), p.lit) << "(" << p.x << ", " << p.y << ")";
    // 'B' is the dark cell 34 in set 0, cell 162 in set 1 and in any set above.
    for (int set : {0, 1, 7}) {
        glPrint(200 + 40 * set, 200, set, 0, "B");
        EXPECT_EQ(PixelLit(208 + 40 * set, 208), set != 0) << "set " << set;
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
    const struct {
        bool framebuffers;
        const char* blur;
        bool hovered, red;
    } cases[] = {
        {false, "1", false, true}, {false, "0", false, false}, {false, "0", true, true}, {true, "1", true, false}};
    int y = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "r_blur " << c.blur << (c.hovered ? ", hovered" : "")
                                        << (c.framebuffers ? ", with framebuffer objects" : ""));
        y += 100;
        GLext.frameBufferObjects = c.framebuffers;
        Cvar_Set("r_blur", c.blur);
        CCheckBox box(100, y, "r_blur", "options");
        MouseAt(c.hovered ? 116 : 0, c.hovered ? y + 16 : 0);
        box.Draw();
        EXPECT_RGB(GLTest_Pixel(152, y + 8), c.red ? 255 : 0, 0, 0);
        if (c.red) {
            float colour[4];
            glGetFloatv(GL_CURRENT_COLOR, colour);
            EXPECT_TRUE(colour[0] == 1.0f && colour[1] == 1.0f && colour[2] == 1.0f) << "white again after the note";
        }
    }
}
