// The camera turns the game makes.
#include <gtest/gtest.h>

#include <cmath>

#include "scene/camera.h"

namespace {
void ExpectVector(const CVector4& v, float x, float y, float z) {
    EXPECT_NEAR(v.x, x, 1e-5f);
    EXPECT_NEAR(v.y, y, 1e-5f);
    EXPECT_NEAR(v.z, z, 1e-5f);
}
}  // namespace

TEST(SceneCamera, RotateCameraUsesTheKeptFormulaAndTheMouseTurnsByPixelsOverAThousand) {
    CCamera camera;
    camera.SetCamera(10, 20, 30, 11, 20, 30, 0, 1, 0);
    camera.RotateCamera(float(M_PI / 2), CVector4(0.6f, 0.8f, 0.0f));
    CVector4 direction;
    camera.GetDirection(direction);
    ExpectVector(direction, 0.6f, 0.48f, -0.8f);  // the textbook matrix gives (0.36, 0.48, -0.8)

    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateByMouse(220, 240, 320, 240);  // 100 pixels left
    ExpectVector(camera.view, -std::sin(0.1f), 0, -std::cos(0.1f));
    EXPECT_EQ(camera.pitch, 0.0f);
    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateByMouse(320, 190, 320, 240);  // 50 pixels up: the axis is the unit cross of view and up
    EXPECT_FLOAT_EQ(camera.pitch, -0.05f);
    ExpectVector(camera.view, 0, std::sin(0.05f), -std::cos(0.05f));
}
