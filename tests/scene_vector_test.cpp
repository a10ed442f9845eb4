// CVector4 and CTexCoord against worked values.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "scene/vector.h"

namespace {
void ExpectVector(const CVector4& v, float x, float y, float z, float tolerance = 1e-5f) {
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}
} // namespace

TEST(SceneVector, ArithmeticWorksOnXYZAndKeepsTheLeftW) {
    const CVector4 a(1, 2, 3, 7);
    const CVector4 b(4, -5, 6, 9);
    CVector4 r = a + b;
    ExpectVector(r, 5, -3, 9);
    EXPECT_EQ(r.w, 7.0f);
    ExpectVector(a - b, -3, 7, -3);
    ExpectVector(a * b, 4, -10, 18);
    ExpectVector(b / a, 4, -2.5f, 2);
    ExpectVector(a + 1.0f, 2, 3, 4);
    ExpectVector(a - 1.0f, 0, 1, 2);
    ExpectVector(a * 2.0f, 2, 4, 6);
    ExpectVector(a / 2.0f, 0.5f, 1, 1.5f);
    EXPECT_EQ((a / 2.0f).w, 7.0f);

    CVector4 c = a;
    EXPECT_EQ(c.w, 7.0f) << "a copy carries all four";
    c += b;
    c -= b;
    EXPECT_TRUE(c == a);
    c *= 3.0f;
    c /= 3.0f;
    ExpectVector(c, 1, 2, 3);
    c += 1.0f;
    c -= 1.0f;
    c *= b;
    c /= b;
    ExpectVector(c, 1, 2, 3);
    EXPECT_EQ(c.w, 7.0f);

    EXPECT_TRUE(CVector4(1, 2, 3, 0) == CVector4(1, 2, 3, 5)) << "w is not compared";
    EXPECT_TRUE(CVector4(1, 2, 3) != CVector4(1, 2, 3.0001f)) << "comparison is exact";

    CVector4 zero(1, -1, 0);
    CVector4 infinite = zero / 0.0f;
    EXPECT_TRUE(std::isinf(infinite.x));
    EXPECT_TRUE(std::isinf(infinite.y));
    EXPECT_TRUE(std::isnan(infinite.z)) << "0 * infinity: nothing checks the divisor";
    EXPECT_TRUE(CVector4() == CVector4(0, 0, 0));
}

TEST(SceneVector, ProductsAndLength) {
    const CVector4 a(1, 2, 3, 4);
    const CVector4 b(5, 6, 7, 8);
    EXPECT_FLOAT_EQ(a.DotProduct3(b), 38.0f);
    EXPECT_FLOAT_EQ(a.DotProduct4(b), 70.0f);
    EXPECT_FLOAT_EQ(CVector4(3, 4, 12, 100).GetLength(), 13.0f);

    CVector4 cross;
    cross.CrossProduct(CVector4(1, 0, 0), CVector4(0, 1, 0));
    ExpectVector(cross, 0, 0, 1);
    cross.CrossProduct(a, b);
    ExpectVector(cross, -4, 8, -4);
    CVector4 binormal;
    binormal.CalculateBinormalVector(a, b);
    EXPECT_TRUE(binormal == cross);
    // In place: the result may be one of the operands.
    CVector4 self(1, 0, 0);
    self.CrossProduct(self, CVector4(0, 1, 0));
    ExpectVector(self, 0, 0, 1);

    CVector4 four;
    four.CrossProduct3(CVector4(1, 0, 0, 0), CVector4(0, 1, 0, 0), CVector4(0, 0, 1, 0));
    ExpectVector(four, 0, 0, 0);
    EXPECT_FLOAT_EQ(std::fabs(four.w), 1.0f);
    const CVector4 p(1, 2, 0, 1), q(0, 1, 3, -1), r(2, 0, 1, 1);
    four.CrossProduct3(p, q, r);
    EXPECT_NEAR(four.DotProduct4(p), 0.0f, 1e-5f);
    EXPECT_NEAR(four.DotProduct4(q), 0.0f, 1e-5f);
    EXPECT_NEAR(four.DotProduct4(r), 0.0f, 1e-5f);
    EXPECT_GT(four.GetLength() + std::fabs(four.w), 1.0f);
}

TEST(SceneVector, NormalAndClampTo01) {
    CVector4 v(3, 0, 4, 10);
    v.Normal();
    ExpectVector(v, 0.6f, 0, 0.8f);
    EXPECT_FLOAT_EQ(v.w, 2.0f) << "w is divided too";

    CVector4 zero(0, 0, 0, 5);
    zero.Normal();
    ExpectVector(zero, 0, 0, 0);
    EXPECT_EQ(zero.w, 5.0f) << "a zero length divides by 1";

    CVector4 c(0, 0, -2, 3);
    c.ClampTo01();
    ExpectVector(c, 0.5f, 0.5f, 0.0f);
    EXPECT_EQ(c.w, 3.0f);
    CVector4 d(2, 0, 0);
    d.ClampTo01();
    ExpectVector(d, 1.0f, 0.5f, 0.5f);
}

TEST(SceneVector, RotationsAboutTheAxesAndAnyAxis) {
    const CVector4 x(1, 0, 0, 4);
    CVector4 r = x.GetRotatedZ(90);
    ExpectVector(r, 0, 1, 0);
    EXPECT_EQ(r.w, 4.0f);
    ExpectVector(CVector4(0, 1, 0).GetRotatedX(90), 0, 0, 1);
    ExpectVector(CVector4(0, 0, 1).GetRotatedY(90), 1, 0, 0);
    ExpectVector(CVector4(1, 0, 0).GetRotatedY(90), 0, 0, -1);
    ExpectVector(CVector4(1, 2, 3).GetRotatedX(180), 1, -2, -3);

    const CVector4 v(0.3f, -1.2f, 2.0f, 1);
    CVector4 same = v.GetRotatedAxis(0.0, CVector4(0, 0, 0));
    EXPECT_TRUE(same == v) << "angle 0 returns a copy, even with no axis";
    const CVector4 zAxis = v.GetRotatedAxis(37, CVector4(0, 0, 5));
    const CVector4 byZ = v.GetRotatedZ(37);
    ExpectVector(zAxis, byZ.x, byZ.y, byZ.z);
    // Textbook about the diagonal: (1, 0, 0) by 120 degrees about (1, 1, 1) is (0, 1, 0).
    ExpectVector(CVector4(1, 0, 0).GetRotatedAxis(120, CVector4(1, 1, 1)), 0, 1, 0);
}

TEST(SceneVector, ExtendNormalizeAndTangents) {
    CVector4 point(2, 3, 4);
    point.ExtendVertexPos(CVector4(1, 1, 1), 2.0f);
    ExpectVector(point, 3, 5, 7);
    CVector4 out;
    out.ExtendVertexPos(CVector4(2, 3, 4), CVector4(1, 1, 1), 0.5f);
    ExpectVector(out, 1.5f, 2, 2.5f);

    CVector4 normal;
    normal.Normalize(CVector4(0, 0, 0), CVector4(1, 0, 0), CVector4(1, 1, 0));
    // (a - b) x (b - c) = (-1, 0, 0) x (0, -1, 0) = (0, 0, 1)
    ExpectVector(normal, 0, 0, 1);
    const CVector4 triangle[3] = {CVector4(0, 0, 0), CVector4(0, 2, 0), CVector4(0, 2, 2)};
    normal.Normalize(triangle);
    ExpectVector(normal, 1, 0, 0);

    // T = e1 * ds2 - e2 * ds1, worked by hand. With s along x on the first
    // triangle: e1 = (1, 0, 0), e2 = (0, 1, 0), ds1 = 1, ds2 = 0, so T = -e2.
    const CVector4 n(0, 0, 1, 0);
    CVector4 tangent;
    tangent.CalculateTangentVector(CVector4(0, 0, 0), CVector4(1, 0, 0), CVector4(0, 1, 0), n,
                                   CTexCoord(0, 0), CTexCoord(1, 0), CTexCoord(0, 1));
    ExpectVector(tangent, 0, -1, 0);
    // Second triangle: e1 = (0, 1, 3) loses its z to the normal, ds1 = 0,
    // ds2 = -1, so T = -(0, 1, 0); the sum doubles.
    tangent.CalculateTangentVector(CVector4(0, 0, 0), CVector4(0, 1, 3), CVector4(-1, 1, 0), n,
                                   CTexCoord(1, 0), CTexCoord(1, 1), CTexCoord(0, 1));
    ExpectVector(tangent, 0, -2, 0);
    // dt1 * ds2 = 0 > dt2 * ds1 = -1: both ds change sign, giving -e2 again
    // (without the turn it would be +e2).
    CVector4 mirrored;
    mirrored.CalculateTangentVector(CVector4(0, 0, 0), CVector4(1, 0, 0), CVector4(0, 1, 0), n,
                                    CTexCoord(1, 0), CTexCoord(0, 0), CTexCoord(1, 1));
    ExpectVector(mirrored, 0, -1, 0);
}
