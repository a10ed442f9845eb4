// Billboards: the turn rule alone, and the matrices they leave.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>

#include "gl_test_env.h"
#include "scene/billboard.h"

TEST(SceneBillboard, TurnRuleFacesTheCameraWithTheKeptConstants) {
    S_BillboardTurn ahead = Billboard_Turn(0, 0, 10, 0, 0, 0);
    EXPECT_FALSE(ahead.turn) << "already facing +z";
    EXPECT_FALSE(ahead.tilt);

    S_BillboardTurn side = Billboard_Turn(10, 0, 0, 0, 0, 0);
    ASSERT_TRUE(side.turn);
    EXPECT_NEAR(side.angle, 90.0f * 3.14159265f / 3.14f, 1e-3f) << "degrees with pi taken as 3.14";
    EXPECT_NEAR(side.axis[0], 0.0f, 1e-6f);
    EXPECT_NEAR(side.axis[1], 1.0f, 1e-6f);
    EXPECT_NEAR(side.axis[2], 0.0f, 1e-6f);

    S_BillboardTurn above = Billboard_Turn(0, 10, 10, 0, 0, 0);
    EXPECT_FALSE(above.turn);
    ASSERT_TRUE(above.tilt);
    EXPECT_NEAR(above.tiltAngle, 45.0f * 3.14159265f / 3.14f, 1e-3f);
    EXPECT_EQ(above.tiltAxisX, -1.0f) << "y >= 0 turns about -x";
    S_BillboardTurn below = Billboard_Turn(0, -10, 10, 0, 0, 0);
    EXPECT_EQ(below.tiltAxisX, 1.0f);
    S_BillboardTurn behind = Billboard_Turn(0, 0, -10, 0, 0, 0);
    EXPECT_FALSE(behind.turn) << "cosine -1 is outside the guard";
}

TEST(SceneBillboard, CheatFormsRewriteTheRotationAndEndRestores) {
    ASSERT_TRUE(GLTest_Window());
    GLTest_ResetState();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(1, 2, 3);
    glRotatef(30, 0.3f, 1, 0.2f);
    GLfloat original[16], m[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, original);

    BillboardCheatSphericalBegin();
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    for (int column = 0; column < 3; column++)
        for (int row = 0; row < 3; row++)
            EXPECT_FLOAT_EQ(m[column * 4 + row], column == row ? 1.0f : 0.0f);
    EXPECT_FLOAT_EQ(m[12], original[12]) << "the translation stays";
    BillboardEnd();

    BillboardCheatCylindricalBegin();
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    EXPECT_FLOAT_EQ(m[0], 1.0f);
    EXPECT_FLOAT_EQ(m[1], 0.0f);
    EXPECT_FLOAT_EQ(m[10], 1.0f);
    EXPECT_FLOAT_EQ(m[8], 0.0f);
    for (int row = 0; row < 3; row++)
        EXPECT_FLOAT_EQ(m[4 + row], original[4 + row]) << "the middle column is kept";
    BillboardEnd();

    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    for (int i = 0; i < 16; i++)
        EXPECT_FLOAT_EQ(m[i], original[i]);

    glLoadIdentity();
    BillboardCylindricalBegin(10, 0, 0, 0, 0, 0);
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    const float radians = float(90.0 * 3.14159265 / 3.14 * M_PI / 180.0);
    EXPECT_NEAR(m[0], std::cos(radians), 1e-5f) << "turned about y";
    EXPECT_NEAR(m[5], 1.0f, 1e-6f);
    BillboardEnd();
    BillboardSphericalBegin(0, 10, 10, 0, 0, 0);
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    EXPECT_NEAR(m[0], 1.0f, 1e-6f) << "tilted about x only";
    EXPECT_LT(m[5], 0.75f);
    BillboardEnd();
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
}
