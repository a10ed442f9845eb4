// CCamera: the kept non-textbook rotation, mouse turns and moves.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>

#include "gl_test_env.h"
#include "scene/camera.h"

namespace {
void ExpectVector(const CVector4& v, float x, float y, float z, float tolerance = 1e-5f) {
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}

float Angle(const CVector4& a, const CVector4& b) {
    return std::acos(a.DotProduct3(b) / (a.GetLength() * b.GetLength()));
}
} // namespace

TEST(SceneCamera, RotateCameraUsesTheKeptFormula) {
    CCamera camera;
    ExpectVector(camera.position, 0, 0, 0);
    ExpectVector(camera.up, 0, 0, 0);
    EXPECT_EQ(camera.pitch, 0.0f);

    camera.SetCamera(10, 20, 30, 11, 20, 30, 0, 1, 0);
    camera.RotateCamera(float(M_PI / 2), CVector4(0.6f, 0.8f, 0.0f));
    CVector4 direction;
    camera.GetDirection(direction);
    ExpectVector(direction, 0.6f, 0.48f, -0.8f);  // the textbook matrix gives (0.36, 0.48, -0.8)
    ExpectVector(camera.view, 10.6f, 20.48f, 29.2f, 1e-4f);
    ExpectVector(camera.position, 10, 20, 30);

    // About a coordinate axis the two agree: y by 90 degrees.
    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateCamera(float(M_PI / 2), CVector4(0, 1, 0));
    ExpectVector(camera.view, -1, 0, 0);
}

TEST(SceneCamera, RotateByMouseTurnsByPixelsOverAThousand) {
    CCamera camera;
    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateByMouse(320, 240, 320, 240);
    ExpectVector(camera.view, 0, 0, -1);
    EXPECT_EQ(camera.pitch, 0.0f) << "the centre does nothing";

    const CVector4 before = camera.view - camera.position;
    camera.RotateByMouse(220, 240, 320, 240);  // 100 pixels left
    const CVector4 after = camera.view - camera.position;
    EXPECT_NEAR(Angle(before, after), 0.1f, 1e-5f);
    ExpectVector(after, -std::sin(0.1f), 0, -std::cos(0.1f));
    EXPECT_EQ(camera.pitch, 0.0f);

    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateByMouse(320, 190, 320, 240);  // 50 pixels up
    EXPECT_FLOAT_EQ(camera.pitch, -0.05f) << "pitch falls by the vertical angle";
    const CVector4 tilted = camera.view - camera.position;
    EXPECT_NEAR(tilted.x, 0.0f, 1e-6f);
    EXPECT_GT(tilted.y, 0.0f) << "moving the mouse up looks up";
    for (int i = 0; i < 100; i++)
        camera.RotateByMouse(320, 190, 320, 240);
    EXPECT_NEAR(camera.pitch, -5.05f, 1e-3f) << "no limit on pitch";
}

TEST(SceneCamera, StrafeMoveAndAccessors) {
    CCamera camera;
    camera.SetCamera(1, 2, 3, 1, 2, -7, 0, 1, 0);
    camera.CalculateStrafe();
    ExpectVector(camera.strafe, 1, 0, 0);

    camera.MoveCamera(2.0f);
    ExpectVector(camera.position, 1, 2, 1);
    ExpectVector(camera.view, 1, 2, -9);
    camera.StrafeCam(-3.0f);
    ExpectVector(camera.position, -2, 2, 1);
    ExpectVector(camera.view, -2, 2, -9);
    camera.UpdateCamera(CVector4(0, 1, 0), 0.5f);
    ExpectVector(camera.position, -2, 2.5f, 1);
    ExpectVector(camera.view, -2, 2.5f, -9);

    camera.setPosX(7);
    camera.setPosY(8);
    camera.setPosZ(9);
    camera.setRotX(4);
    camera.setRotY(5);
    camera.setRotZ(6);
    EXPECT_EQ(camera.getPosX() + camera.getPosY() + camera.getPosZ(), 24.0f);
    ExpectVector(camera.position, 7, 8, 9);
    ExpectVector(camera.view, 4, 5, 6);  // the Rot accessors are the view point
    EXPECT_EQ(camera.getRotZ(), 6.0f);
}

TEST(SceneCamera, ControlCameraMultipliesTheLookAtOntoTheCurrentMatrix) {
    ASSERT_TRUE(GLTest_Window());
    GLTest_ResetState();
    CCamera camera;
    camera.SetCamera(0, 0, 5, 0, 0, 0, 0, 1, 0);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    camera.ControlCamera();
    GLfloat m[16];
    glGetFloatv(GL_PROJECTION_MATRIX, m);
    EXPECT_NEAR(m[0], 1.0f, 1e-6f);
    EXPECT_NEAR(m[14], -5.0f, 1e-6f) << "the eye moved to the origin";
    glLoadIdentity();
    glTranslatef(1, 0, 0);
    camera.ControlCamera();
    glGetFloatv(GL_PROJECTION_MATRIX, m);
    EXPECT_NEAR(m[12], 1.0f, 1e-6f) << "applied on top, not loaded";
    GLTest_ResetState();
}
