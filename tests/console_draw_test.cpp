// The console drawn on the real driver: its tinted, blended background over
// the top half of the configured screen, the blinking prompt and the output
// lines stacked upward from it, scrolled or not.
#include <GL/gl.h>

#include "app/appstatus.h"
#include "console/cconsole.h"
#include "console/console.h"
#include "console/cvar.h"
#include "gl_test_env.h"
#include "game/game.h"
#include "render/draw2d.h"
#include "render/font.h"

namespace {

bool Lit(int x, int y) {
    const S_Rgb p = GLTest_Pixel(x, y);
    return p.r + p.g + p.b > 300;
}

class GLConsoleDraw : public GLTest {
protected:
    // A font whose only glyphs are ']', '|' and '^', each a solid white cell.
    void SetUp() override {
        GLTest::SetUp();
        Console_Reset();
        Font_Reset();
        WriteFile("data/textures/Font.tga", TgaFile(256, 256, 32, [](int x, int row) {
                      const int code = (255 - row) / 16 * 16 + x / 16 + 32;
                      const uint8_t v = code == ']' || code == '|' || code == '^' ? 255 : 0;
                      return S_Texel{v, v, v, v};
                  }));
        ASSERT_TRUE(FontLoad("Font.tga"));
        // The settings ask for a 400 x 200 screen inside the 576 x 576 window.
        Cvar_Set("screenwidth", "400");
        Cvar_Set("screenheight", "200");
        Cvar_Set("con_red", "1");
        Cvar_Set("con_green", "0");
        Cvar_Set("con_blue", "0");
        Cvar_Set("con_alpha", "0.5");
        AppStatus.consoleVisible = true;
        Con_ResetBuffer();  // the log's lines of the set-up
        GLTest_ResetState();
    }
    void TearDown() override {
        KillFont();
        Font_Reset();
        Console_Reset();
        GLTest::TearDown();
    }

    void PageUp() {
        SDL_Event e{};
        e.type = e.key.type = SDL_KEYDOWN;
        e.key.keysym.sym = SDLK_PAGEUP;
        console.getInput(&e);
    }
    void BlueScreen() {
        GLTest_ResetState();
        SetDrawColor(0, 0, 1, 1);
        DisplayBlank(0, 0, GLTEST_SIZE, GLTEST_SIZE);
    }

    CConsole console;
};

} // namespace

TEST_F(GLConsoleDraw, BackgroundIsTintedAndBlendedOverTheTopHalfOfTheConfiguredScreen) {
    GLint depthBefore = 0, depthAfter = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depthBefore);

    // No picture yet: an untextured rectangle in the console colour.
    BlueScreen();
    console.draw(CGame());
    EXPECT_RGB(GLTest_Pixel(200, 50), 128, 0, 128) << "half red over blue";
    EXPECT_RGB(GLTest_Pixel(200, 105), 0, 0, 255) << "the background ends at half of screenheight";
    EXPECT_RGB(GLTest_Pixel(450, 50), 0, 0, 255) << "and at screenwidth";

    // A green picture tinted red is black, still blended at half strength.
    WriteFile("data/textures/conback.tga", TgaFill(8, 8, S_Texel{0, 255, 0, 255}));
    console.Init();
    EXPECT_NE(console.BackgroundTexture(), -1);
    BlueScreen();
    console.draw(CGame());
    EXPECT_RGB(GLTest_Pixel(200, 50), 0, 0, 128);
    EXPECT_RGB(GLTest_Pixel(200, 105), 0, 0, 255);

    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_ALPHA_TEST));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depthAfter);
    EXPECT_EQ(depthAfter, depthBefore);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(GLConsoleDraw, PromptBlinksAndLinesStackUpwardFromItScrolledOrNot) {
    // The window is 576 high: the prompt sits at 268 whatever screenheight says.
    Con_Print("oldest");
    Con_Print("middle");
    Con_Print("|||");  // newest
    console.draw(CGame());
    EXPECT_TRUE(Lit(5, 276)) << "prompt";
    EXPECT_TRUE(Lit(22, 276)) << "the cursor shows on the first frame";
    EXPECT_TRUE(Lit(5, 256) && Lit(5, 236) && Lit(5, 216)) << "three lines above the prompt";
    EXPECT_FALSE(Lit(5, 196));
    EXPECT_FALSE(Lit(300, 256)) << "no scroll mark while unscrolled";

    GLTest_ResetState();
    console.draw(CGame());
    EXPECT_TRUE(Lit(5, 276));
    EXPECT_FALSE(Lit(22, 276)) << "and not on the second";

    PageUp();
    GLTest_ResetState();
    console.draw(CGame());
    EXPECT_TRUE(Lit(300, 256)) << "87 '^' mark the scrolled view";
    EXPECT_FALSE(Lit(300, 276));
    EXPECT_TRUE(Lit(5, 236) && Lit(5, 216)) << "the older lines stay in place";
    EXPECT_FALSE(Lit(5, 196)) << "the newest line is scrolled off, not shifted up";

    PageUp();
    GLTest_ResetState();
    console.draw(CGame());
    EXPECT_TRUE(Lit(5, 236));
    EXPECT_FALSE(Lit(5, 216));
    EXPECT_FALSE(Lit(22, 276)) << "no cursor this frame, and the newest line is not drawn over the prompt";
}
