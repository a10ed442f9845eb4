// The skybox: one picture on all faces, the scroll rule, the faces seen from
// inside, and the overlapping release.
#include <GL/gl.h>
#include <GL/glu.h>
#include <gtest/gtest.h>

#include "app/appstatus.h"
#include "app/timer.h"
#include "console/cvar.h"
#include "gl_test_env.h"
#include "platform/clock.h"
#include "render/texture.h"
#include "scene/skybox.h"

namespace {

uint64_t g_FakeMicroseconds = 0;
void FakeClock(UnsignedWide* out) {
    out->lo = uint32_t(g_FakeMicroseconds & 0xFFFFFFFFu);
    out->hi = uint32_t(g_FakeMicroseconds >> 32);
}

// One frame of the given length on the driven clock.
void Frame(double seconds) {
    Timer.start();
    g_FakeMicroseconds += uint64_t(seconds * 1e6);
    Timer.update();
}

class SceneSkybox : public ::testing::Test {
protected:
    void SetUp() override {
        AppStatus = S_AppStatus();
        RegisterDefaultCvars();
        Texture_Reset();
        Skybox = CSkybox();
        Skybox_ResetScroll();
        g_FakeMicroseconds = 1000000;
        SetMicrosecondsSource(FakeClock);
    }
    void TearDown() override {
        SetMicrosecondsSource(nullptr);
        Skybox_ResetScroll();
        Skybox = CSkybox();
        Texture_Reset();
        Cvar_Clear();
    }

    // From the centre of a 100-unit box, 90 degrees of view, so one face
    // fills the window exactly.
    static void LookFromInside(float dx, float dy, float dz, float ux, float uy, float uz) {
        GLTest_ResetState();
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        gluPerspective(90.0, 1.0, 1.0, 1000.0);
        gluLookAt(0, 0, 0, dx, dy, dz, ux, uy, uz);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
};

} // namespace

TEST_F(SceneSkybox, AllSixFacesTakeTheBImage) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    WriteBytes("data/textures/sky/stars_b.tga", SolidColourTga(16, 16, 24, MakeTexel(0, 0, 255)));
    WriteBytes("data/textures/sky/stars_f.tga", SolidColourTga(16, 16, 24, MakeTexel(255, 0, 0)));
    EXPECT_EQ(Skybox.Load("sky/stars_", ".tga"), 1);
    const unsigned int b = CTexture::CheckPreLoaded("data/textures/sky/stars_b.tga");
    ASSERT_NE(b, 0u);
    for (int face = 0; face < CSkybox::FACES; face++)
        EXPECT_EQ(Skybox.textures[face], b) << face;
    EXPECT_EQ(CTexture::Count(), 1) << "read once";
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/sky/stars_f.tga"), 0u);

    DefaultTexture();
    CSkybox other;
    EXPECT_EQ(other.Load("sky/none_", ".tga"), 1);
    for (int face = 0; face < CSkybox::FACES; face++)
        EXPECT_EQ(other.textures[face], g_DefaultTex) << "a missing face shows the fallback";
    const std::string log = folder.Log();
    size_t warnings = 0;
    for (size_t at = log.find("WARNING! could not load texture data/textures/sky/none_b.tga"); at != std::string::npos;
         at = log.find("WARNING! could not load texture data/textures/sky/none_b.tga", at + 1))
        warnings++;
    EXPECT_EQ(warnings, 6u);
    glDeleteTextures(1, &g_DefaultTex);
}

TEST_F(SceneSkybox, ScrollAdvancesBySkyscrollTimesTheFrameTime) {
    Cvar_Set("skyscroll", "0.4");
    Frame(0.25);
    EXPECT_NEAR(Skybox_AdvanceScroll(), 0.1f, 1e-6f);
    Frame(0.5);
    EXPECT_NEAR(Skybox_AdvanceScroll(), 0.3f, 1e-6f);
    Cvar_Set("skyscroll", "0");
    Frame(1.0);
    EXPECT_NEAR(Skybox_AdvanceScroll(), 0.3f, 1e-6f) << "0 keeps the last offset";
    EXPECT_NEAR(Skybox_ScrollOffset(), 0.3f, 1e-6f);
    Cvar_Set("skyscroll", "-1");
    Frame(0.1);
    EXPECT_NEAR(Skybox_AdvanceScroll(), 0.2f, 1e-6f);
}

TEST_F(SceneSkybox, EveryFaceIsSeenFromInsideAndTwoOfThemScroll) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    // Bottom half of the picture (first file rows) and left half red, the
    // rest blue: a shift by half in s or t swaps the colours at a point.
    WriteBytes("data/textures/sky/q_b.tga", TgaFile(16, 16, 24, [](int x, int row) {
                   return (row < 8) == (x < 8) ? MakeTexel(255, 0, 0) : MakeTexel(0, 0, 255);
               }));
    Skybox.Load("sky/q_", ".tga");
    Cvar_Set("skyscroll", "0");
    Frame(0.0);

    struct View {
        const char* name;
        float d[3], u[3];
    };
    const View views[] = {
        {"high z", {0, 0, 1}, {0, 1, 0}}, {"low z", {0, 0, -1}, {0, 1, 0}},
        {"low x", {-1, 0, 0}, {0, 1, 0}}, {"high x", {1, 0, 0}, {0, 1, 0}},
        {"top", {0, 1, 0}, {0, 0, -1}},   {"bottom", {0, -1, 0}, {0, 0, -1}},
    };
    const int quarter = GLTEST_SIZE / 4;
    S_Rgb before[6];
    for (int i = 0; i < 6; i++) {
        LookFromInside(views[i].d[0], views[i].d[1], views[i].d[2], views[i].u[0], views[i].u[1], views[i].u[2]);
        Skybox.Draw_Skybox(0, 0, 0, 100, 100, 100);
        before[i] = GLTest_Pixel(quarter, quarter);
        EXPECT_TRUE(Near(before[i], 255, 0, 0, 8) || Near(before[i], 0, 0, 255, 8))
            << views[i].name << " face is drawn facing inwards: " << ToText(before[i]);
    }
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));

    // Half a picture of scroll.
    Cvar_Set("skyscroll", "1");
    Frame(0.5);
    Skybox_AdvanceScroll();
    Cvar_Set("skyscroll", "0");
    for (int i = 0; i < 6; i++) {
        LookFromInside(views[i].d[0], views[i].d[1], views[i].d[2], views[i].u[0], views[i].u[1], views[i].u[2]);
        Skybox.Draw_Skybox(0, 0, 0, 100, 100, 100);
        S_Rgb after = GLTest_Pixel(quarter, quarter);
        const bool scrolls = i == 1 || i == 5;
        EXPECT_EQ(after.r != before[i].r, scrolls) << views[i].name << ": " << ToText(before[i]) << " -> " << ToText(after);
    }
}

TEST_F(SceneSkybox, CleanupDeletesOverlappingRunsOfSixNames) {
    ASSERT_TRUE(GLTest_Window());
    GLuint names[3];
    glGenTextures(3, names);
    for (GLuint name : names) {
        glBindTexture(GL_TEXTURE_2D, name);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, "\xff\xff\xff\xff");
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    // Faces 3 to 5 are reached only by the later, overlapping runs.
    Skybox.textures[0] = Skybox.textures[1] = Skybox.textures[2] = names[0];
    Skybox.textures[3] = names[1];
    Skybox.textures[4] = Skybox.textures[5] = names[2];
    Skybox.Cleanup();
    for (GLuint name : names)
        EXPECT_FALSE(glIsTexture(name)) << name;
    for (int i = CSkybox::FACES; i < CSkybox::FACES + 5; i++)
        EXPECT_EQ(Skybox.textures[i], 0u) << "the overrun reads zeros only";
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}
