#include "scene/vector.h"

#include <cmath>

namespace {
// The value the rotations have always used.
constexpr double PI = 3.141592654;

double Radians(double degrees) { return degrees * PI / 180.0; }

float Det3(float a, float b, float c, float d, float e, float f, float g, float h, float i) {
    return a * (e * i - f * h) - b * (d * i - f * g) + c * (d * h - e * g);
}
}  // namespace

CVector4& CVector4::operator+=(const CVector4& v) {
    x += v.x;
    y += v.y;
    z += v.z;
    return *this;
}
CVector4& CVector4::operator-=(const CVector4& v) {
    x -= v.x;
    y -= v.y;
    z -= v.z;
    return *this;
}
CVector4& CVector4::operator*=(const CVector4& v) {
    x *= v.x;
    y *= v.y;
    z *= v.z;
    return *this;
}
CVector4& CVector4::operator/=(const CVector4& v) {
    x /= v.x;
    y /= v.y;
    z /= v.z;
    return *this;
}
CVector4& CVector4::operator+=(float f) {
    x += f;
    y += f;
    z += f;
    return *this;
}
CVector4& CVector4::operator-=(float f) {
    x -= f;
    y -= f;
    z -= f;
    return *this;
}
CVector4& CVector4::operator*=(float f) {
    x *= f;
    y *= f;
    z *= f;
    return *this;
}

CVector4& CVector4::operator/=(float f) {
    const float inverse = 1.0f / f;
    x *= inverse;
    y *= inverse;
    z *= inverse;
    return *this;
}

CVector4 CVector4::operator+(const CVector4& v) const {
    CVector4 r(*this);
    return r += v;
}
CVector4 CVector4::operator-(const CVector4& v) const {
    CVector4 r(*this);
    return r -= v;
}
CVector4 CVector4::operator*(const CVector4& v) const {
    CVector4 r(*this);
    return r *= v;
}
CVector4 CVector4::operator/(const CVector4& v) const {
    CVector4 r(*this);
    return r /= v;
}
CVector4 CVector4::operator+(float f) const {
    CVector4 r(*this);
    return r += f;
}
CVector4 CVector4::operator-(float f) const {
    CVector4 r(*this);
    return r -= f;
}
CVector4 CVector4::operator*(float f) const {
    CVector4 r(*this);
    return r *= f;
}
CVector4 CVector4::operator/(float f) const {
    CVector4 r(*this);
    return r /= f;
}

bool CVector4::operator==(const CVector4& v) const { return x == v.x && y == v.y && z == v.z; }
bool CVector4::operator!=(const CVector4& v) const { return !(*this == v); }

float CVector4::DotProduct3(const CVector4& v) const { return x * v.x + y * v.y + z * v.z; }
float CVector4::DotProduct4(const CVector4& v) const { return DotProduct3(v) + w * v.w; }
float CVector4::GetLength() const { return std::sqrt(x * x + y * y + z * z); }

void CVector4::CrossProduct(const CVector4& a, const CVector4& b) {
    const float nx = a.y * b.z - a.z * b.y;
    const float ny = a.z * b.x - a.x * b.z;
    const float nz = a.x * b.y - a.y * b.x;
    x = nx;
    y = ny;
    z = nz;
}

void CVector4::CalculateBinormalVector(const CVector4& a, const CVector4& b) { CrossProduct(a, b); }

void CVector4::CrossProduct3(const CVector4& a, const CVector4& b, const CVector4& c) {
    // Cofactors of the first row of the 4 x 4 matrix (e; a; b; c).
    const float nx = Det3(a.y, a.z, a.w, b.y, b.z, b.w, c.y, c.z, c.w);
    const float ny = -Det3(a.x, a.z, a.w, b.x, b.z, b.w, c.x, c.z, c.w);
    const float nz = Det3(a.x, a.y, a.w, b.x, b.y, b.w, c.x, c.y, c.w);
    const float nw = -Det3(a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z);
    x = nx;
    y = ny;
    z = nz;
    w = nw;
}

void CVector4::Normal() {
    float length = GetLength();
    if (length == 0.0f)
        length = 1.0f;
    x /= length;
    y /= length;
    z /= length;
    w /= length;
}

void CVector4::ClampTo01() {
    CVector4 unit(*this);
    unit.Normal();
    x = 0.5f * unit.x + 0.5f;
    y = 0.5f * unit.y + 0.5f;
    z = 0.5f * unit.z + 0.5f;
}

CVector4 CVector4::GetRotatedX(double angle) const {
    const float c = float(std::cos(Radians(angle)));
    const float s = float(std::sin(Radians(angle)));
    return CVector4(x, c * y - s * z, s * y + c * z, w);
}

CVector4 CVector4::GetRotatedY(double angle) const {
    const float c = float(std::cos(Radians(angle)));
    const float s = float(std::sin(Radians(angle)));
    return CVector4(c * x + s * z, y, c * z - s * x, w);
}

CVector4 CVector4::GetRotatedZ(double angle) const {
    const float c = float(std::cos(Radians(angle)));
    const float s = float(std::sin(Radians(angle)));
    return CVector4(c * x - s * y, s * x + c * y, z, w);
}

CVector4 CVector4::GetRotatedAxis(double angle, CVector4 axis) const {
    if (angle == 0.0)
        return *this;
    axis.Normal();
    const float c = float(std::cos(Radians(angle)));
    const float s = float(std::sin(Radians(angle)));
    const float t = 1.0f - c;
    const float ax = axis.x, ay = axis.y, az = axis.z;
    CVector4 result(*this);
    result.x = (ax * ax + (1.0f - ax * ax) * c) * x + (t * ax * ay - s * az) * y + (t * ax * az + s * ay) * z;
    result.y = (t * ax * ay + s * az) * x + (ay * ay + (1.0f - ay * ay) * c) * y + (t * ay * az - s * ax) * z;
    result.z = (t * ax * az - s * ay) * x + (t * ay * az + s * ax) * y + (az * az + (1.0f - az * az) * c) * z;
    return result;
}

void CVector4::ExtendVertexPos(const CVector4& from, float extend) { ExtendVertexPos(*this, from, extend); }

void CVector4::ExtendVertexPos(const CVector4& point, const CVector4& from, float extend) {
    x = (point.x - from.x) * extend + from.x;
    y = (point.y - from.y) * extend + from.y;
    z = (point.z - from.z) * extend + from.z;
}

void CVector4::Normalize(const CVector4& a, const CVector4& b, const CVector4& c) {
    CrossProduct(a - b, b - c);
    Normal();
}

void CVector4::Normalize(const CVector4* triangle) { Normalize(triangle[0], triangle[1], triangle[2]); }

void CVector4::CalculateTangentVector(const CVector4& p0, const CVector4& p1, const CVector4& p2,
                                      const CVector4& normal, const CTexCoord& tc0, const CTexCoord& tc1,
                                      const CTexCoord& tc2) {
    CVector4 e1 = p1 - p0;
    CVector4 e2 = p2 - p0;
    e1 -= normal * e1.DotProduct3(normal);
    e2 -= normal * e2.DotProduct3(normal);
    float ds1 = tc1.s - tc0.s;
    float ds2 = tc2.s - tc0.s;
    if ((tc1.t - tc0.t) * ds2 > (tc2.t - tc0.t) * ds1) {
        ds1 = -ds1;
        ds2 = -ds2;
    }
    CVector4 tangent = e1 * ds2 - e2 * ds1;
    tangent.Normal();
    x += tangent.x;
    y += tangent.y;
    z += tangent.z;
}
