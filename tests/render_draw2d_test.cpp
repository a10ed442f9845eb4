// The 2D rectangles, read back from the real driver.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include "app/appstatus.h"
#include "gl_test_env.h"
#include "render/draw2d.h"
#include "render/texture.h"

namespace {

class Render2D : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(GLTest_Window());
        Texture_Reset();
        GLTest_ResetState();
    }
    void TearDown() override {
        if (g_DefaultTex)
            glDeleteTextures(1, &g_DefaultTex);
        Texture_Reset();
        GLTest_ResetState();
    }
};

} // namespace

TEST_F(Render2D, DisplayImageOfTextureZeroShowsTheFourFallbackColours) {
    DefaultTexture();
    glColor3f(1, 1, 1);
    DisplayImage(100, 50, 200, 100, 0);
    // Upright: the top half shows the second row of the image (blue, yellow).
    EXPECT_RGB(GLTest_Pixel(150, 75), 0, 0, 255, 8);
    EXPECT_RGB(GLTest_Pixel(250, 75), 255, 255, 0, 8);
    EXPECT_RGB(GLTest_Pixel(150, 125), 255, 0, 0, 8);
    EXPECT_RGB(GLTest_Pixel(250, 125), 0, 255, 0, 8);
    EXPECT_RGB(GLTest_Pixel(99, 75), 0, 0, 0, 0) << "nothing left of x";
    EXPECT_RGB(GLTest_Pixel(301, 75), 0, 0, 0, 0) << "nothing right of x + w";
    EXPECT_RGB(GLTest_Pixel(150, 151), 0, 0, 0, 0) << "nothing below y + h";
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(Render2D, ImagesAreUprightAndFiltersAreSetBeforeTheBind) {
    TestFolder folder;
    // File rows 0-7 (the bottom of the picture) red, rows 8-15 (the top)
    // green; 16 x 16 so that linear filtering keeps the halves apart.
    WriteBytes("data/textures/updown.tga",
               TgaFile(16, 16, 24, [](int, int row) { return row < 8 ? MakeTexel(255, 0, 0, 255) : MakeTexel(0, 255, 0, 255); }));
    DefaultTexture();
    unsigned int picture = GetTexture("updown.tga", 0);
    ASSERT_NE(picture, 0u);

    // The fallback is bound last: DisplayImage's filter calls land on it.
    glBindTexture(GL_TEXTURE_2D, g_DefaultTex);
    DisplayImage(0, 0, 64, 64, picture);
    EXPECT_RGB(GLTest_Pixel(32, 4), 0, 255, 0, 8) << "top of the picture at the top";
    EXPECT_RGB(GLTest_Pixel(32, 60), 255, 0, 0, 8) << "bottom at the bottom";

    GLint minFilter = 0;
    glBindTexture(GL_TEXTURE_2D, g_DefaultTex);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &minFilter);
    EXPECT_EQ(minFilter, GL_LINEAR) << "the previously bound texture took the filters";
}

TEST_F(Render2D, BlendLeavesTransparentPixelsUnpaintedWhereOpaqueDrawsThem) {
    TestFolder folder;
    // Left half transparent magenta, right half opaque white.
    WriteBytes("data/textures/half.tga", TgaFile(16, 16, 32, [](int x, int) {
                   return x < 8 ? MakeTexel(255, 0, 255, 0) : MakeTexel(255, 255, 255, 255);
               }));
    unsigned int half = GetTexture("half.tga", 0);
    ASSERT_NE(half, 0u);

    glClearColor(0.0f, 0.0f, 1.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(1, 1, 1);
    glEnable(GL_DEPTH_TEST);
    DisplayImageBlend(0, 0, 128, 128, half);
    glDisable(GL_DEPTH_TEST);
    // Transparent texels are discarded, so they leave no depth behind.
    GLfloat depth[2] = {0, 0};
    glReadPixels(24, GLTEST_SIZE - 1 - 64, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth[0]);
    glReadPixels(104, GLTEST_SIZE - 1 - 64, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth[1]);
    EXPECT_FLOAT_EQ(depth[0], 1.0f);
    EXPECT_LT(depth[1], 0.9f);
    EXPECT_RGB(GLTest_Pixel(24, 64), 0, 0, 255, 0);
    EXPECT_RGB(GLTest_Pixel(104, 64), 255, 255, 255, 8);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_ALPHA_TEST));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    GLint depthFunc = 0;
    glGetIntegerv(GL_DEPTH_FUNC, &depthFunc);
    EXPECT_EQ(depthFunc, GL_LEQUAL);

    // The current colour tints the picture.
    glColor3f(1, 0, 0);
    DisplayImageBlend(200, 0, 128, 128, half);
    EXPECT_RGB(GLTest_Pixel(304, 64), 255, 0, 0, 8);

    glColor3f(1, 1, 1);
    DisplayImage(0, 200, 128, 128, half);
    EXPECT_RGB(GLTest_Pixel(24, 264), 255, 0, 255, 8) << "opaque path paints them";
    glClearColor(0, 0, 0, 0);
}

TEST_F(Render2D, BlankAndBlackBackgroundUseAndLeaveTheColour) {
    glColor3f(0, 1, 0);
    glEnable(GL_TEXTURE_2D);
    DisplayBlank(10, 10, 50, 20);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_RGB(GLTest_Pixel(30, 20), 0, 255, 0, 0);
    EXPECT_RGB(GLTest_Pixel(30, 31), 0, 0, 0, 0);

    DisplayBlank(100, 100, 0, 40);
    DisplayBlank(100, 100, 40, 0);
    EXPECT_RGB(GLTest_Pixel(100, 100), 0, 0, 0, 0) << "zero width or height draws nothing";

    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    DrawBlackBackground();
    EXPECT_RGB(GLTest_Pixel(0, 0), 0, 0, 0, 0);
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE - 1, GLTEST_SIZE - 1), 0, 0, 0, 0);
    GLfloat colour[4] = {1, 1, 1, 1};
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_EQ(colour[0] + colour[1] + colour[2], 0.0f) << "the colour is left black";
    DisplayBlank(0, 0, 20, 20);
    EXPECT_RGB(GLTest_Pixel(5, 5), 0, 0, 0, 0);
    glClearColor(0, 0, 0, 0);
}
