// The zoom blur through both capture paths, and its fall-back.
#include <GL/gl.h>
#include <GL/glext.h>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "gl_test_env.h"
#include "render/blur.h"

namespace {

constexpr int Q = GLTEST_SIZE / 4;  // right edge of the red band on the screen

class GLBlur : public GLTest {
protected:
    void TearDown() override {
        DestroyInitFBO();
        GLTest::TearDown();
    }
    // The scene: a red band over the left quarter of the current viewport, on black.
    static void DrawScene() {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(0, 1, 1, 0, -1, 1);
        glColor3f(1, 0, 0);
        glRectf(0, 0, 0.25f, 1);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glColor3f(1, 1, 1);
    }
    // Prepares one capture path; false for the copy path, forced.
    static void UsePath(bool framebuffer) {
        GLTest_Window();
        ASSERT_TRUE(GLext.frameBufferObjects) << "Mesa offers framebuffer objects";
        GLext.frameBufferObjects = framebuffer;
        InitFBO();
        GLTest_ResetState();
    }
};

}  // namespace

TEST_F(GLBlur, OffDrawsTheSceneStraightOnAndOnShowsTheCapturedSceneThroughBothPaths) {
    for (bool framebuffer : {true, false}) {
        SCOPED_TRACE(framebuffer ? "framebuffer path" : "copy path");
        Cvar_Set("r_blur", "1");
        UsePath(framebuffer);
        EXPECT_EQ(Cvar_Get("r_blur"), "1") << "the capture is complete";
        EXPECT_EQ(fbo != 0, framebuffer);
        Cvar_Set("r_blur", "0");
        BeginFBO();
        DrawScene();
        EndFBO();
        DrawFBO();
        EXPECT_RGB(GLTest_Pixel(Q - 4, 300), 255, 0, 0) << "off: the scene, at full size, on the screen";
        EXPECT_RGB(GLTest_Pixel(Q + 4, 300), 0, 0, 0) << "and no blurred copies";

        Cvar_Set("r_blur", "1");
        glClearColor(0, 0, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        glClearColor(0, 0, 0, 0);
        BeginFBO();
        GLint viewport[4];
        glGetIntegerv(GL_VIEWPORT, viewport);
        EXPECT_EQ(viewport[2], framebuffer ? GLTEST_SIZE : 512) << "the copy path grabs 512 x 512";
        DrawScene();
        EndFBO();
        // Into the texture, not the screen (the copy path grabs and wipes).
        EXPECT_RGB(GLTest_Pixel(Q / 2, 300), 0, 0, framebuffer ? 255 : 0);

        auto drawWithPower = [](const char* power) {
            Cvar_Set("r_blurpower", power);
            GLTest_ResetState();
            DrawFBO();
        };
        drawWithPower("0");
        EXPECT_RGB(GLTest_Pixel(8, 300), 255, 0, 0) << "the captured scene over the whole screen";
        EXPECT_RGB(GLTest_Pixel(Q - 6, 300), 255, 0, 0);
        EXPECT_RGB(GLTest_Pixel(Q + 6, 300), 0, 0, 0);

        drawWithPower("25");
        EXPECT_GT(GLTest_Pixel(Q + 6, 300).r, 20) << "zoomed copies spread the red past its edge";
        EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE - 5, 300), 0, 0, 0);
        // Copy i (offset 0.02 i, alpha 0.1 - 0.004 i) is red at x = 201.5 / 576 for i >= 17: 8 + 7 + ... + 1 = 36.
        EXPECT_NEAR(GLTest_Pixel(201, 300).r, 36, 6);

        // A damaged setting is bounded: it draws what 100 copies draw.
        drawWithPower("100");
        const S_Rgb hundred = GLTest_Pixel(Q + 40, 300);
        drawWithPower("1e30");
        EXPECT_RGB(GLTest_Pixel(Q + 40, 300), hundred.r, hundred.g, hundred.b);
        drawWithPower("nan");
        EXPECT_RGB(GLTest_Pixel(Q + 6, 300), 0, 0, 0) << "not a number: no copies";
        DestroyInitFBO();
    }
}

TEST_F(GLBlur, IncompleteFramebufferSwitchesTheBlurOffWithItsMessage) {
    Cvar_Set("r_blur", "1");
    Resolution.width = Resolution.height = 0;  // a zero-sized attachment is never complete
    InitFBO();
    EXPECT_EQ(Cvar_Get("r_blur"), "0");
    EXPECT_FALSE(GLext.frameBufferObjects) << "the copy path from now on";
    EXPECT_EQ(fbo, 0u);
    GLint bound = -1;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &bound);
    EXPECT_EQ(bound, 0);
    EXPECT_EQ(AppStatus.consoleLines.front().rfind("Error! FBO", 0), 0u) << AppStatus.consoleLines.front();
}
