// The bitmap font's loading, and the blur checkbox's red " slower" note.
#include <GL/gl.h>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "gl_test_env.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "render/font.h"

namespace {

bool PixelLit(int x, int y) {  // brighter than mid-grey, as a lit glyph is
    const S_Rgb p = GLTest_Pixel(x, y);
    return p.r + p.g + p.b > 300;
}

class GLFont : public GLTest {
protected:
    // The only lit cells: 33 ('A') and 83 ('s'), both in set 0.
    void SetUp() override {
        GLTest::SetUp();
        Font_Reset();
        AppStatus.verboseLog = true;
        WriteFile("data/textures/Font.tga", TgaFile(256, 256, 32, [](int x, int row) {
                      const int cell = (255 - row) / 16 * 16 + x / 16;
                      const uint8_t v = cell == 33 || cell == 83 ? 255 : 0;
                      return S_Texel{v, v, v, v};
                  }));
        ASSERT_TRUE(FontLoad("Font.tga"));
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
