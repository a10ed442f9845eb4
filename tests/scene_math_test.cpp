// CVector4 and CCamera against worked values.
#include <gtest/gtest.h>

#include <cmath>

#include "scene/billboard.h"
#include "scene/camera.h"
#include "scene/vector.h"

namespace {
void ExpectVector(const CVector4& v, float x, float y, float z, float tolerance = 1e-5f) {
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}
} // namespace

TEST(SceneVector, NormalClampTo01AndProducts) {
    CVector4 v(3, 0, 4, 10), zero(0, 0, 0, 5), below(0, 0, -2, 3), beyond(2, 0, 0);
    v.Normal();
    ExpectVector(v, 0.6f, 0, 0.8f);
    EXPECT_FLOAT_EQ(v.w, 2.0f) << "w is divided too";
    zero.Normal();
    EXPECT_EQ(zero.w, 5.0f) << "a zero length divides by 1";
    below.ClampTo01();
    ExpectVector(below, 0.5f, 0.5f, 0.0f);
    EXPECT_EQ(below.w, 3.0f);
    beyond.ClampTo01();
    ExpectVector(beyond, 1.0f, 0.5f, 0.5f);

    const CVector4 a(1, 2, 3, 4), b(5, 6, 7, 8);
    EXPECT_FLOAT_EQ(a.DotProduct3(b), 38.0f);
    EXPECT_FLOAT_EQ(a.DotProduct4(b), 70.0f);
    EXPECT_EQ((a - b * 2.0f).w, 4.0f) << "operators keep the left w";
    EXPECT_TRUE(CVector4(1, 2, 3, 0) == CVector4(1, 2, 3, 5) && CVector4(1, 2, 3) != CVector4(1, 2, 3.0001f));
    CVector4 cross(1, 0, 0);
    cross.CrossProduct(cross, CVector4(0, 1, 0));
    ExpectVector(cross, 0, 0, 1);  // the result may be an operand
    cross.CrossProduct(a, b);
    ExpectVector(cross, -4, 8, -4);
    CVector4 normal;
    normal.Normalize(CVector4(0, 0, 0), CVector4(0, 2, 0), CVector4(0, 2, 2));
    ExpectVector(normal, 1, 0, 0);
}

TEST(SceneVector, RotationsAboutTheAxesAndAnyAxis) {
    const CVector4 r = CVector4(0.6f, 0.8f, 2, 4).GetRotatedZ(30);
    ExpectVector(r, 0.6f * 0.8660254f - 0.4f, 0.3f + 0.8f * 0.8660254f, 2);
    EXPECT_EQ(r.w, 4.0f);
    ExpectVector(CVector4(0, 1, 0).GetRotatedX(90), 0, 0, 1);
    ExpectVector(CVector4(1, 0, 0).GetRotatedY(90), 0, 0, -1);
    // (1, 0, 0) by 120 degrees about (1, 1, 1) is (0, 1, 0).
    ExpectVector(CVector4(1, 0, 0).GetRotatedAxis(120, CVector4(1, 1, 1)), 0, 1, 0);
}

TEST(SceneVector, TangentsFollowTheTextureDirectionAndTurnForMirroredCoordinates) {
    // T = e1 * ds2 - e2 * ds1 with the edges flattened onto the surface:
    // e1 = (1, 0, 0), e2 = (0, 1, 0), ds1 = 1, ds2 = 0, so T = -e2.
    const CVector4 n(0, 0, 1, 0);
    CVector4 tangent, mirrored;
    tangent.CalculateTangentVector(CVector4(0, 0, 0), CVector4(1, 0, 0), CVector4(0, 1, 0), n, CTexCoord(0, 0),
                                   CTexCoord(1, 0), CTexCoord(0, 1));
    ExpectVector(tangent, 0, -1, 0);
    // e1 = (0, 1, 3) loses its z to the normal, ds1 = 0, ds2 = -1: T = -(0, 1, 0), added to the sum.
    tangent.CalculateTangentVector(CVector4(0, 0, 0), CVector4(0, 1, 3), CVector4(-1, 1, 0), n, CTexCoord(1, 0),
                                   CTexCoord(1, 1), CTexCoord(0, 1));
    ExpectVector(tangent, 0, -2, 0);
    // dt1 * ds2 = 0 > dt2 * ds1 = -1: both ds change sign, giving -e2 again (+e2 without the turn).
    mirrored.CalculateTangentVector(CVector4(0, 0, 0), CVector4(1, 0, 0), CVector4(0, 1, 0), n, CTexCoord(1, 0),
                                    CTexCoord(0, 0), CTexCoord(1, 1));
    ExpectVector(mirrored, 0, -1, 0);
}

TEST(SceneCamera, RotateCameraUsesTheKeptFormula) {
    CCamera camera;
    camera.SetCamera(10, 20, 30, 11, 20, 30, 0, 1, 0);
    camera.RotateCamera(float(M_PI / 2), CVector4(0.6f, 0.8f, 0.0f));
    CVector4 direction;
    camera.GetDirection(direction);
    ExpectVector(direction, 0.6f, 0.48f, -0.8f);  // the textbook matrix gives (0.36, 0.48, -0.8)
    ExpectVector(camera.position, 10, 20, 30);
    // About a coordinate axis the two agree: y by 90 degrees.
    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateCamera(float(M_PI / 2), CVector4(0, 1, 0));
    ExpectVector(camera.view, -1, 0, 0);
}

TEST(SceneCamera, MouseTurnsByPixelsOverAThousandAndMovesFollowTheView) {
    CCamera camera;
    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateByMouse(320, 240, 320, 240);
    ExpectVector(camera.view, 0, 0, -1);
    camera.RotateByMouse(220, 240, 320, 240);  // 100 pixels left
    ExpectVector(camera.view, -std::sin(0.1f), 0, -std::cos(0.1f));
    EXPECT_EQ(camera.pitch, 0.0f);
    camera.SetCamera(0, 0, 0, 0, 0, -1, 0, 1, 0);
    camera.RotateByMouse(320, 190, 320, 240);  // 50 pixels up
    EXPECT_FLOAT_EQ(camera.pitch, -0.05f);
    ExpectVector(camera.view, 0, std::sin(0.05f), -std::cos(0.05f));  // moving the mouse up looks up

    camera.SetCamera(1, 2, 3, 1, 2, -7, 0, 1, 0);
    camera.MoveCamera(2.0f);
    camera.StrafeCam(-3.0f);
    ExpectVector(camera.position, -2, 2, 1);
    ExpectVector(camera.view, -2, 2, -9);
}

TEST(SceneBillboard, TurnTowardTheCameraWithPiTakenAs314AndTheGuards) {
    // Camera 45 degrees to the side on the ground: turn about +y, no tilt.
    S_BillboardTurn side = Billboard_Turn(1, 0, 1, 0, 0, 0);
    EXPECT_TRUE(side.turn);
    EXPECT_NEAR(side.angle, 0.785398f * 180.0f / 3.14f, 1e-3f) << "radians times 180 / 3.14";
    EXPECT_NEAR(side.axis[1], 0.7071f, 1e-4f);
    EXPECT_FLOAT_EQ(side.axis[0], 0.0f);
    EXPECT_FALSE(side.tilt);
    // Straight ahead or straight behind: the cosine guard skips the turn.
    EXPECT_FALSE(Billboard_Turn(0, 0, 5, 0, 0, 0).turn);
    EXPECT_FALSE(Billboard_Turn(0, 0, -5, 0, 0, 0).turn);
    // Above and below the object: tilt by 45 degrees, the sign from y.
    S_BillboardTurn above = Billboard_Turn(0, 5, 5, 0, 0, 0), below = Billboard_Turn(0, -5, 5, 0, 0, 0);
    EXPECT_TRUE(above.tilt);
    EXPECT_NEAR(above.tiltAngle, 0.785398f * 180.0f / 3.14f, 1e-3f);
    EXPECT_EQ(above.tiltAxisX, -1.0f);
    EXPECT_EQ(below.tiltAxisX, 1.0f);
    // Right overhead the ground direction has no length: no NaN, and the turn
    // is about a null axis, which turns nothing.
    S_BillboardTurn overhead = Billboard_Turn(0, 5, 0, 0, 0, 0);
    EXPECT_FALSE(std::isnan(overhead.angle) || std::isnan(overhead.tiltAngle));
    EXPECT_EQ(overhead.axis[0] * overhead.axis[0] + overhead.axis[1] * overhead.axis[1] +
                  overhead.axis[2] * overhead.axis[2], 0.0f);
}
