// The zoom blur through both capture paths, its fall-back and its files.
#include <GL/gl.h>
#include <GL/glext.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "app/appstatus.h"
#include "console/cvar.h"
#include "gl_test_env.h"
#include "render/blur.h"
#include "render/draw2d.h"
#include "render/glext.h"

namespace {

class RenderBlur : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(GLTest_Window());
        AppStatus = S_AppStatus();
        RegisterDefaultCvars();
        GLTest_ResetState();
    }
    void TearDown() override {
        DestroyInitFBO();
        GLTest_Window();  // Resolution and GLext back to the driver's truth
        GLTest_ResetState();
        Cvar_Clear();
    }

    // The scene: a red band over the left quarter of whatever viewport is
    // current, on black.
    static void DrawScene() {
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(0, 1, 1, 0, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDisable(GL_TEXTURE_2D);
        glColor3f(1, 0, 0);
        glBegin(GL_QUADS);
        glVertex2f(0, 0);
        glVertex2f(0.25f, 0);
        glVertex2f(0.25f, 1);
        glVertex2f(0, 1);
        glEnd();
        glPopMatrix();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
    }

    static void ClearScreen(float r, float g, float b) {
        glClearColor(r, g, b, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glClearColor(0, 0, 0, 0);
    }

    static GLint Binding() {
        GLint bound = -1;
        glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &bound);
        return bound;
    }

    static void Viewport(GLint v[4]) { glGetIntegerv(GL_VIEWPORT, v); }
};

constexpr int Q = GLTEST_SIZE / 4;  // right edge of the red band on screen

} // namespace

TEST_F(RenderBlur, OffMeansTheSceneGoesStraightToTheScreenOnBothPaths) {
    for (bool framebuffer : {true, false}) {
        SCOPED_TRACE(framebuffer ? "framebuffer path" : "copy path");
        GLTest_Window();
        GLext.frameBufferObjects = GLext.frameBufferObjects && framebuffer;
        Cvar_Set("r_blur", "0");
        InitFBO();
        EXPECT_EQ(Cvar_Get("r_blur"), "0");
        EXPECT_EQ(Binding(), 0) << "nothing stays bound after set-up";

        GLTest_ResetState();
        BeginFBO();
        GLint viewport[4];
        Viewport(viewport);
        EXPECT_EQ(viewport[2], GLTEST_SIZE);
        EXPECT_EQ(Binding(), 0);
        DrawScene();
        EndFBO();
        EXPECT_RGB(GLTest_Pixel(Q / 2, 300), 255, 0, 0, 0) << "the scene is on the screen";
        EXPECT_RGB(GLTest_Pixel(Q + 4, 300), 0, 0, 0, 0);
        DrawFBO();
        EXPECT_RGB(GLTest_Pixel(Q / 2, 300), 255, 0, 0, 0);
        EXPECT_RGB(GLTest_Pixel(Q + 4, 300), 0, 0, 0, 0) << "no blur copies";
        DestroyInitFBO();
    }
}

TEST_F(RenderBlur, FramebufferPathCapturesTheSceneAndDrawsItBackBlurred) {
    ASSERT_TRUE(GLext.frameBufferObjects) << "Mesa offers framebuffer objects";
    Cvar_Set("r_blur", "1");
    InitFBO();
    ASSERT_NE(fbo, 0u);
    ASSERT_NE(depthBuffer, 0u);
    ASSERT_NE(img, 0u);
    EXPECT_EQ(Cvar_Get("r_blur"), "1");
    EXPECT_TRUE(GLext.frameBufferObjects);
    EXPECT_EQ(Binding(), 0);

    ClearScreen(0, 0, 1);
    BeginFBO();
    EXPECT_EQ(Binding(), GLint(fbo));
    DrawScene();
    EndFBO();
    EXPECT_EQ(Binding(), 0);
    EXPECT_RGB(GLTest_Pixel(Q / 2, 300), 0, 0, 255, 0) << "the scene went to the texture, not the screen";

    Cvar_Set("r_blurpower", "0");
    DrawFBO();
    EXPECT_RGB(GLTest_Pixel(Q / 2, 300), 255, 0, 0, 0) << "the captured picture over the whole screen";
    EXPECT_RGB(GLTest_Pixel(Q + 3, 300), 0, 0, 0, 0) << "power 0: no copies";
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE - 5, 5), 0, 0, 0, 0);

    Cvar_Set("r_blurpower", "25");
    Cvar_Set("r_blurzoom", "0.02");
    ClearScreen(0, 0, 0);
    DrawFBO();
    EXPECT_RGB(GLTest_Pixel(Q / 2, 300), 255, 0, 0, 0);
    S_Rgb edge = GLTest_Pixel(Q + 3, 300);
    EXPECT_GT(edge.r, 20) << "the zoomed copies spread red past the edge: " << ToText(edge);
    EXPECT_EQ(edge.g, 0);
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE - 5, 300), 0, 0, 0, 0);
    // Worked by hand for 25 copies, spread 0.02: copy i (offset 0.02 i,
    // alpha 0.1 - 0.004 i) shows red at screen x = 201.5 / 576 only for
    // i >= 17, so eight fading copies add 8 + 7 + ... + 1 = 36 of red.
    // Copies that brightened instead of fading would saturate.
    S_Rgb far = GLTest_Pixel(201, 300);
    EXPECT_NEAR(far.r, 36, 6) << ToText(far);

    unsigned int texture = img;
    DestroyInitFBO();
    EXPECT_FALSE(glIsTexture(texture));
    EXPECT_EQ(fbo, 0u);
}

TEST_F(RenderBlur, CopyPathGrabsA512SquareAndScalesItUp) {
    GLext.frameBufferObjects = false;
    Cvar_Set("r_blur", "1");
    InitFBO();
    EXPECT_EQ(fbo, 0u);
    ASSERT_NE(img, 0u);
    EXPECT_EQ(Cvar_Get("r_blur"), "1") << "no framebuffer support is no reason to switch off";

    BeginFBO();
    GLint viewport[4];
    Viewport(viewport);
    EXPECT_EQ(viewport[2], 512);
    EXPECT_EQ(viewport[3], 512);
    DrawScene();
    EndFBO();
    Viewport(viewport);
    EXPECT_EQ(viewport[2], GLTEST_SIZE);
    EXPECT_RGB(GLTest_Pixel(64, 300), 0, 0, 0, 0) << "copied and wiped";
    GLint width = 0;
    glBindTexture(GL_TEXTURE_2D, img);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 512);

    Cvar_Set("r_blurpower", "0");
    GLTest_ResetState();
    DrawFBO();
    // The band was 128 of 512 pixels; on the 576 screen it is 144 wide.
    EXPECT_RGB(GLTest_Pixel(8, 300), 255, 0, 0, 0);
    EXPECT_RGB(GLTest_Pixel(Q - 6, 300), 255, 0, 0, 8);
    EXPECT_RGB(GLTest_Pixel(Q + 6, 300), 0, 0, 0, 8);
    EXPECT_RGB(GLTest_Pixel(400, 300), 0, 0, 0, 0);

    Cvar_Set("r_blurpower", "25");
    GLTest_ResetState();
    DrawFBO();
    EXPECT_GT(GLTest_Pixel(Q + 6, 300).r, 20) << "blurred on the copy path too";
}

TEST_F(RenderBlur, IncompleteFramebufferSwitchesTheBlurOffWithItsMessage) {
    Cvar_Set("r_blur", "1");
    Resolution.width = 0;  // a zero-sized attachment is never complete
    Resolution.height = 0;
    InitFBO();
    EXPECT_EQ(Cvar_Get("r_blur"), "0");
    EXPECT_FALSE(GLext.frameBufferObjects) << "the copy path from now on";
    EXPECT_EQ(fbo, 0u);
    EXPECT_EQ(depthBuffer, 0u);
    EXPECT_EQ(Binding(), 0);
    ASSERT_FALSE(AppStatus.consoleLines.empty());
    EXPECT_EQ(AppStatus.consoleLines.front().rfind("Error! FBO", 0), 0u) << AppStatus.consoleLines.front();
}

TEST_F(RenderBlur, CheckFBONamesEveryStatus) {
    struct Case {
        GLenum status;
        const char* message;
    };
    const Case cases[] = {
        {GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT_EXT, "Error! FBO missing a required image/buffer attachment!"},
        {GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT_EXT, "Error! FBO has no images/buffers attached!"},
        {GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS_EXT, "Error! FBO has mismatched image/buffer dimensions!"},
        {GL_FRAMEBUFFER_INCOMPLETE_FORMATS_EXT, "Error! FBO colorbuffer attachments have different types!"},
        {GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER_EXT, "Error! FBO trying to draw to non-attached color buffer!"},
        {GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER_EXT, "Error! FBO trying to read from a non-attached color buffer!"},
        {GL_FRAMEBUFFER_UNSUPPORTED_EXT, "Error! FBO format is not supported by current graphics card/driver!"},
        {0x1234, "*UNKNOWN ERROR* reported from glCheckFramebufferStatusEXT()!"},
    };
    for (const Case& c : cases) {
        EXPECT_NE(CheckFBO(c.status), 0);
        ASSERT_FALSE(AppStatus.consoleLines.empty());
        EXPECT_EQ(AppStatus.consoleLines.front(), c.message);
    }
    size_t lines = AppStatus.consoleLines.size();
    EXPECT_EQ(CheckFBO(GL_FRAMEBUFFER_COMPLETE_EXT), 0);
    EXPECT_EQ(AppStatus.consoleLines.size(), lines) << "complete logs nothing";
}

TEST_F(RenderBlur, ReadShaderFileAndStopShaders) {
    TestFolder folder;
    AppStatus.verboseLog = true;
    WriteBytes("blur.frag", "void main() {\n  gl_FragColor = vec4(1.0);\n}\n");
    WriteBytes("empty.frag", "");
    char* text = ReadShaderFile("blur.frag");
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text, "void main() {\n  gl_FragColor = vec4(1.0);\n}\n");
    delete[] text;
    EXPECT_EQ(ReadShaderFile("empty.frag"), nullptr);
    EXPECT_EQ(ReadShaderFile("missing.frag"), nullptr);
    EXPECT_EQ(ReadShaderFile(nullptr), nullptr);
    const std::string log = folder.Log();
    EXPECT_NE(log.find(" -- attempting to load shader: blur.frag ... success!\n"), std::string::npos) << log;
    EXPECT_NE(log.find("FAILURE!\n"), std::string::npos);

    ASSERT_TRUE(GLext.shaders);
    const char* source = "void main() { gl_FragColor = vec4(1.0); }";
    GLhandleARB shader = glCreateShaderObjectARB(GL_FRAGMENT_SHADER_ARB);
    glShaderSourceARB(shader, 1, &source, nullptr);
    glCompileShaderARB(shader);
    GLhandleARB program = glCreateProgramObjectARB();
    glAttachObjectARB(program, shader);
    glLinkProgramARB(program);
    glUseProgramObjectARB(program);
    ASSERT_EQ(glGetHandleARB(GL_PROGRAM_OBJECT_ARB), program);
    StopShaders();
    EXPECT_EQ(glGetHandleARB(GL_PROGRAM_OBJECT_ARB), 0u);
    glDeleteObjectARB(program);
    glDeleteObjectARB(shader);
}
