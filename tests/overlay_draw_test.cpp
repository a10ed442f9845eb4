// The HUD and the widgets' text on the real driver: where the lines land and
// when the blur checkbox's " slower" note shows in red.
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

class GLOverlay : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        Font_Reset();
        // Lit cells: 83 ('s' of set 0) and 172 ('L' of set 1); every other glyph is dark.
        ASSERT_TRUE(LoadCellFont([](int cell) { return cell == 83 || cell == 172; }));
        _mtoggle = "options";
    }
    void TearDown() override {
        KillFont();
        Font_Reset();
        GLTest::TearDown();
    }
};

} // namespace

TEST_F(GLOverlay, HudLinesStartOneHundredFiftyLeftOfTheRightEdgeLivesBelowScore) {
    Resolution.width = 500;
    Game_Stats.lives = 3;
    Game_Stats.score = 1234;
    Game_HUD();
    EXPECT_TRUE(PixelLit(358, 38)) << "the L of \"Lives\" at (350, 30)";
    EXPECT_FALSE(PixelLit(349, 38));
    EXPECT_FALSE(PixelLit(358, 18)) << "the score's line above holds no L";
}

TEST_F(GLOverlay, SlowerNoteShowsInRedWhileHoveredOrCheckedWithoutFramebufferObjects) {
    // " slower" after a box at (100, y): the blank at 134, the s at 144.
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
