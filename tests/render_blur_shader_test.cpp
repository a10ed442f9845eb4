// The blur's shader path against the copies it stands in for, on a real game
// frame: the real data, a level in play, the ball in flight with its trail.
#include <GL/gl.h>
#include <GL/glext.h>

#include <cmath>
#include <functional>
#include <vector>

#include "app/frame.h"
#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "console/cconsole.h"
#include "game/ball.h"
#include "game/brick.h"
#include "game/game.h"
#include "gl_test_env.h"
#include "render/blur.h"
#include "render/blur_shader.h"
#include "render/glext.h"
#include "render/glstate.h"
#include "scene/objects.h"
#include "scene/skybox.h"

namespace {

using Picture = std::vector<unsigned char>;  // RGBA rows of the whole window, bottom first

Picture ReadScreen() {
    Picture pixels(size_t(GLTEST_SIZE) * GLTEST_SIZE * 4);
    glFinish();
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, GLTEST_SIZE, GLTEST_SIZE, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

struct S_Difference {
    double meanAbsolute = 0.0;  // levels of 255, over the red, green and blue channels
    double psnr = 99.0;         // dB; 99 for identical pictures
    int largest = 0;
};

S_Difference Compare(const Picture& a, const Picture& b) {
    S_Difference d;
    double sum = 0.0, squares = 0.0;
    for (size_t i = 0; i < a.size(); i++) {
        if (i % 4 == 3)
            continue;  // the window's alpha is never shown
        const int e = std::abs(int(a[i]) - int(b[i]));
        sum += e, squares += double(e) * e, d.largest = std::max(d.largest, e);
    }
    const double count = double(a.size()) * 0.75;
    d.meanAbsolute = sum / count;
    if (squares > 0.0)
        d.psnr = 10.0 * std::log10(255.0 * 255.0 * count / squares);
    return d;
}

class GLBlurShader : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        GLTest_LinkGameData();
        GLext.shaders = true;  // Mesa lists all four shader extensions
        GLext_LoadEntryPoints();
        ASSERT_TRUE(GLext_HaveShaderObjects()) << "the whole group, texture unit switch included";
        Cvar_Set("r_blur", "1");
        Cvar_Set("r_particles", "1");
        InitFBO();
        ASSERT_NE(fbo, 0u);
        CaptureAPlayFrame();
    }
    void TearDown() override {  // the shell's reset takes the rest
        DestroyInitFBO();
        Skybox.Cleanup();
        ObjectReset();
        GLTest::TearDown();
    }

    // Level 1 as the game draws it into the blur's framebuffer: the sky, the
    // field, eight bricks, the paddle, and the ball in flight with its trail.
    void CaptureAPlayFrame() {
        for (int phase : {2, 3, 4, 5})  // models, sky, fallback texture, particles
            PreCacheData(phase);
        Game_Stats.level = 1;
        game.Reset("lvl1.xml");
        ASSERT_EQ(CBrick::Count(), 8);
        Cvar_Set("m_menu", "0");
        g_MediaLoaded = Game_Stats.ballLaunched = true;
        Game_Stats.ballStartZ = 0.0f;
        Ball.SetPosition(2.5f, -4.0f);
        ReshapeGL(GLTEST_SIZE, GLTEST_SIZE);
        BeginFBO();
        Draw3D(nullptr, game, SDL_Event{}, CConsole{});
        EndFBO();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();  // EnableGL3d's push, which the frame's 2D pass pops
    }

    // DrawFBO over the captured scene, one way or the other, as the frame's 2D
    // pass starts it. `underneath`: the screen already holds a picture and
    // blending is left on, as a particle burst that ended may leave it.
    static Picture Blurred(bool shaders, bool underneath = false) {
        BlurShader_Enable(shaders);
        GLTest_ResetState();
        if (underneath) {
            glColor3f(0.2f, 0.5f, 0.9f);
            glRectf(0, 0, GLTEST_SIZE / 2, GLTEST_SIZE);
            glColor3f(1, 1, 1);
            glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
            glEnable(GL_BLEND);
            glAlphaFunc(GL_GREATER, 0.0f);
            glEnable(GL_ALPHA_TEST);
        }
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();  // popped by DisableGL2d, as EnableGL3d's push is in the game
        EnableGL2d();
        DrawFBO();
        DisableGL2d();
        return ReadScreen();
    }

    // What DrawFBO leaves for the rest of the frame to draw with.
    static std::vector<double> State() {
        std::vector<double> state;
        for (GLenum cap : {GL_DEPTH_TEST, GL_TEXTURE_2D, GL_BLEND})
            state.push_back(glIsEnabled(cap));
        for (GLenum name : {GL_BLEND_SRC, GL_BLEND_DST, GL_TEXTURE_BINDING_2D, GL_CURRENT_PROGRAM}) {
            GLint v = 0;
            glGetIntegerv(name, &v);
            state.push_back(v);
        }
        GLfloat c[4];
        glGetFloatv(GL_CURRENT_COLOR, c);
        state.insert(state.end(), c, c + 4);
        return state;
    }

    static void ExpectEquivalent(const char* what, bool underneath = false) {
        const Picture copies = Blurred(false, underneath);
        const std::vector<double> afterCopies = State();
        const S_Difference d = Compare(copies, Blurred(true, underneath));
        EXPECT_TRUE(BlurShader_Ready()) << "the shaders drew " << what;
        EXPECT_EQ(State(), afterCopies) << what << ": the copies' state, and no program left bound";
        EXPECT_LE(d.meanAbsolute, 2.0) << what;
        EXPECT_GE(d.psnr, 35.0) << what;
    }

    CGame game;
};

int g_Compiles = 0;
void APIENTRY CompileNothing(GLhandleARB) { g_Compiles++; }
GLenum APIENTRY Unsupported(GLenum) { return GL_FRAMEBUFFER_UNSUPPORTED_EXT; }

}  // namespace

TEST_F(GLBlurShader, APlayFrameLooksTheSameAsWithTheCopies) {
    Cvar_Set("r_blurpower", "0");
    const Picture plain = Blurred(false);
    EXPECT_EQ(Compare(plain, Blurred(true)).largest, 0) << "no copies: the captured scene alone, untouched";
    // Not a dark or flat picture: the comparison has something to compare.
    Cvar_Set("r_blurpower", "25");
    ASSERT_GT(Compare(plain, Picture(plain.size(), 0)).meanAbsolute, 10.0) << "the frame shows the field";
    ASSERT_GT(Compare(plain, Blurred(false)).meanAbsolute, 10.0) << "and the blur changes it a lot";
    ExpectEquivalent("level 1, 25 copies, zoom 0.02");
    ExpectEquivalent("25 copies over a blended picture", true);

    // The offsets and the alpha ramp follow the settings.
    Cvar_Set("r_blurpower", "60.9");  // truncated to 60
    Cvar_Set("r_blurzoom", "-0.004");
    ExpectEquivalent("60 copies, zoom -0.004");
    Cvar_Set("r_blurpower", "1");
    ExpectEquivalent("one copy, the scene alone");
}

TEST_F(GLBlurShader, WithoutShadersOrWhenTheDriverRefusesThemTheCopiesAreDrawn) {
    const Picture copies = Blurred(false);
    const S_GLProcs real = glProc;
    // `logged`: the first of the two warnings, or null when nothing is logged.
    const struct {
        const char* what;
        std::function<void()> refuse;
        const char* logged;
    } refusals[] = {
        {"no shader extensions", [] { GLext.shaders = false; }, nullptr},
        {"an entry point missing", [] { glProc.ActiveTextureARB = nullptr; }, nullptr},
        {"a shader that does not compile", [] { glProc.CompileShaderARB = CompileNothing; }, "does not compile"},
        {"an incomplete target", [] { glProc.CheckFramebufferStatusEXT = Unsupported; }, "target is incomplete"},
    };
    for (const auto& refusal : refusals) {
        SCOPED_TRACE(refusal.what);
        BlurShader_Destroy();
        AppStatus.consoleLines.clear();
        refusal.refuse();
        g_Compiles = 0;
        EXPECT_EQ(Compare(copies, Blurred(true)).largest, 0) << "the copies, drawn instead";
        EXPECT_FALSE(BlurShader_Ready());
        const std::vector<std::string> lines = ConsoleLinesOldestFirst();
        EXPECT_EQ(lines.size(), refusal.logged ? 2u : 0u);
        if (refusal.logged && lines.size() == 2u) {
            EXPECT_NE(lines[0].find(refusal.logged), std::string::npos) << lines[0];
            EXPECT_EQ(lines[1], " -- WARNING: blur shader unavailable, drawing the blur with copies");
        }
        const int compiles = g_Compiles;
        Blurred(true);
        EXPECT_EQ(g_Compiles, compiles) << "not tried again every frame";
        EXPECT_EQ(ConsoleLinesOldestFirst(), lines) << "nor logged again";
        glProc = real;
        GLext.shaders = true;
    }
}
