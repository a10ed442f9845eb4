// The console drawn on the real driver: its tinted, blended background over
// the top half of the configured screen, the blinking prompt and the output
// lines stacked upward from it, scrolled or not.
#include <GL/gl.h>

#include "common/appstatus.h"
#include "common/console.h"
#include "common/cvar.h"
#include "console/cconsole.h"
#include "game/game.h"
#include "gl_test_env.h"
#include "render/draw2d.h"
#include "render/font.h"

namespace {

class GLConsoleDraw : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        Font_Reset();
        // The only glyphs are ']', '|' and '^', each a solid white cell.
        ASSERT_TRUE(LoadCellFont([](int cell) { return cell + 32 == ']' || cell + 32 == '|' || cell + 32 == '^'; }));
        // The settings ask for a 400 x 200 screen inside the 576 x 576 window.
        const char* settings[][2] = {{"screenwidth", "400"}, {"screenheight", "200"}, {"con_red", "1"},
                                     {"con_green", "0"},     {"con_blue", "0"},       {"con_alpha", "0.5"}};
        for (const auto& setting : settings)
            Cvar_Set(setting[0], setting[1]);
        AppStatus.consoleVisible = true;
        Con_ResetBuffer();  // the log's lines of the set-up
        GLTest_ResetState();
    }
    void TearDown() override {
        KillFont();
        Font_Reset();
        GLTest::TearDown();
    }
    void DrawOver(bool blue) {
        GLTest_ResetState();
        if (blue) {
            SetDrawColor(0, 0, 1, 1);
            DisplayBlank(0, 0, GLTEST_SIZE, GLTEST_SIZE);
        }
        console.draw(CGame());
    }

    CConsole console;
};

}  // namespace

TEST_F(GLConsoleDraw, BackgroundIsTintedAndBlendedOverTheTopHalfOfTheConfiguredScreen) {
    GLint depthBefore = 0, depthAfter = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depthBefore);

    // No picture yet: an untextured rectangle in the console colour.
    DrawOver(true);
    EXPECT_RGB(GLTest_Pixel(200, 50), 128, 0, 128) << "half red over blue";
    EXPECT_RGB(GLTest_Pixel(200, 105), 0, 0, 255) << "the background ends at half of screenheight";
    EXPECT_RGB(GLTest_Pixel(450, 50), 0, 0, 255) << "and at screenwidth";

    // A green picture tinted red is black, still blended at half strength.
    WriteFile("data/textures/conback.tga", TgaFill(8, 8, S_Texel{0, 255, 0, 255}));
    console.Init();
    DrawOver(true);
    EXPECT_RGB(GLTest_Pixel(200, 50), 0, 0, 128);
    EXPECT_RGB(GLTest_Pixel(200, 105), 0, 0, 255);

    EXPECT_FALSE(glIsEnabled(GL_BLEND) || glIsEnabled(GL_ALPHA_TEST) || glIsEnabled(GL_TEXTURE_2D)) << "state restored";
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depthAfter);
    EXPECT_EQ(depthAfter, depthBefore);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(GLConsoleDraw, PromptBlinksAndLinesStackUpwardFromItScrolledOrNot) {
    // The window is 576 high: the prompt sits at 268 whatever screenheight says.
    Con_Print("oldest");
    Con_Print("middle");
    Con_Print("|||");  // newest
    DrawOver(false);
    EXPECT_TRUE(PixelLit(5, 276) && PixelLit(22, 276)) << "prompt; the cursor shows on the first frame";
    EXPECT_TRUE(PixelLit(5, 256) && PixelLit(5, 236) && PixelLit(5, 216)) << "three lines above the prompt";
    EXPECT_FALSE(PixelLit(5, 196));
    EXPECT_FALSE(PixelLit(300, 256)) << "no scroll mark while unscrolled";
    DrawOver(false);
    EXPECT_TRUE(PixelLit(5, 276) && !PixelLit(22, 276)) << "and not on the second";

    SDL_Event pageUp = KeyEvent(SDLK_PAGEUP);
    console.getInput(&pageUp);
    DrawOver(false);
    EXPECT_TRUE(PixelLit(300, 256) && !PixelLit(300, 276)) << "87 '^' mark the scrolled view";
    EXPECT_TRUE(PixelLit(5, 236) && PixelLit(5, 216)) << "the older lines stay in place";
    EXPECT_FALSE(PixelLit(5, 196)) << "the newest line is scrolled off, not shifted up";

    console.getInput(&pageUp);
    DrawOver(false);
    EXPECT_TRUE(PixelLit(5, 236) && !PixelLit(5, 216)) << "one more line scrolled off";
    EXPECT_FALSE(PixelLit(22, 276)) << "no cursor this frame, and the newest line is not drawn over the prompt";
}
