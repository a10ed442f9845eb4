// The 2D rectangles, read back from the real driver.
#include <GL/gl.h>

#include "gl_test_env.h"
#include "render/draw2d.h"
#include "render/texture.h"

using GL2D = GLTest;

TEST_F(GL2D, DisplayImageOfTextureZeroShowsTheFourFallbackColoursUpright) {
    DefaultTexture();
    DisplayImage(100, 50, 200, 100, 0);
    // The top shows the second texture row (blue, yellow); nothing outside the rectangle.
    const struct {
        int x, y;
        S_Rgb colour;
    } probes[] = {{150, 75, {0, 0, 255}}, {250, 75, {255, 255, 0}}, {150, 125, {255, 0, 0}}, {250, 125, {0, 255, 0}},
                  {99, 75, {0, 0, 0}},    {301, 75, {0, 0, 0}},     {150, 151, {0, 0, 0}}};
    for (const auto& p : probes)
        EXPECT_RGB(GLTest_Pixel(p.x, p.y), p.colour.r, p.colour.g, p.colour.b) << "(" << p.x << ", " << p.y << ")";
}

TEST_F(GL2D, BlendLeavesTransparentPixelsUnpaintedWhereOpaqueDrawsThem) {
    // Left half transparent magenta, right half opaque white.
    WriteFile("data/textures/half.tga", TgaFile(16, 16, 32, [](int x, int) {
                  return x < 8 ? S_Texel{255, 0, 255, 0} : S_Texel{255, 255, 255, 255};
              }));
    DefaultTexture();
    const unsigned int half = GetTexture("half.tga", 0);
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    DisplayImageBlend(0, 0, 128, 128, half);
    GLfloat depth[81] = {};  // the row from x 24, in the transparent half, to x 104, in the opaque one
    glReadPixels(24, GLTEST_SIZE - 65, 81, 1, GL_DEPTH_COMPONENT, GL_FLOAT, depth);
    EXPECT_FLOAT_EQ(depth[0], 1.0f) << "discarded texels leave no depth behind either";
    EXPECT_LT(depth[80], 0.9f);
    EXPECT_RGB(GLTest_Pixel(24, 64), 0, 0, 255);
    EXPECT_RGB(GLTest_Pixel(104, 64), 255, 255, 255);
    EXPECT_FALSE(glIsEnabled(GL_BLEND) || glIsEnabled(GL_ALPHA_TEST) || glIsEnabled(GL_TEXTURE_2D));

    // The filter calls come before the bind: they land on the texture bound before.
    glBindTexture(GL_TEXTURE_2D, g_DefaultTex);
    DisplayImage(0, 200, 128, 128, half);
    EXPECT_RGB(GLTest_Pixel(24, 264), 255, 0, 255) << "the opaque path paints them";
    GLint filter = 0;
    glBindTexture(GL_TEXTURE_2D, g_DefaultTex);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    EXPECT_EQ(filter, GL_LINEAR);
}

TEST_F(GL2D, BlankAndBlackBackgroundUseAndLeaveTheColour) {
    glColor3f(0, 1, 0);
    glEnable(GL_TEXTURE_2D);
    DisplayBlank(10, 10, 50, 20);
    EXPECT_RGB(GLTest_Pixel(30, 20), 0, 255, 0);
    EXPECT_RGB(GLTest_Pixel(30, 31), 0, 0, 0);
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    DrawBlackBackground();
    EXPECT_RGB(GLTest_Pixel(0, 0), 0, 0, 0);
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE - 1, GLTEST_SIZE - 1), 0, 0, 0);
    DisplayBlank(0, 0, 20, 20);
    glClearColor(0, 0, 0, 0);
    EXPECT_RGB(GLTest_Pixel(5, 5), 0, 0, 0) << "the colour is left black";
}
