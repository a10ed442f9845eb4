// CVector4, the small vector of the scene code (x, y, z, w; nearly every
// operation uses only x, y and z), and CTexCoord, a texture coordinate pair.
// Plain values, copied freely. Angles of the GetRotated* family are degrees.
#pragma once

struct CTexCoord {
    float s = 0.0f, t = 0.0f;
    CTexCoord() = default;
    CTexCoord(float ns, float nt) : s(ns), t(nt) {}
};

class CVector4 {
public:
    float x, y, z, w;

    // w carries no meaning for these two; it is zeroed so that a copy never
    // reads an indeterminate value.
    CVector4() : x(0.0f), y(0.0f), z(0.0f), w(0.0f) {}
    CVector4(float nx, float ny, float nz) : x(nx), y(ny), z(nz), w(0.0f) {}
    CVector4(float nx, float ny, float nz, float nw) : x(nx), y(ny), z(nz), w(nw) {}

    // Component-wise on x, y, z; w stays that of the left side.
    CVector4& operator+=(const CVector4& v);
    CVector4& operator-=(const CVector4& v);
    CVector4& operator*=(const CVector4& v);
    CVector4& operator/=(const CVector4& v);
    CVector4& operator+=(float f);
    CVector4& operator-=(float f);
    CVector4& operator*=(float f);
    CVector4& operator/=(float f);  // times 1 / f; 0 is not checked
    CVector4 operator+(const CVector4& v) const;
    CVector4 operator-(const CVector4& v) const;
    CVector4 operator*(const CVector4& v) const;
    CVector4 operator/(const CVector4& v) const;
    CVector4 operator+(float f) const;
    CVector4 operator-(float f) const;
    CVector4 operator*(float f) const;
    CVector4 operator/(float f) const;
    bool operator==(const CVector4& v) const;  // exact, x, y, z only
    bool operator!=(const CVector4& v) const;

    // DotProduct3 and GetLength use x, y and z; DotProduct4 all four.
    float DotProduct3(const CVector4& v) const;
    float DotProduct4(const CVector4& v) const;
    float GetLength() const;
    void CrossProduct(const CVector4& a, const CVector4& b);             // this = a x b
    void CalculateBinormalVector(const CVector4& a, const CVector4& b);  // this = a x b
    // The four-dimensional cross product: orthogonal to a, b and c.
    void CrossProduct3(const CVector4& a, const CVector4& b, const CVector4& c);

    // Divides x, y, z and w by the length of (x, y, z); a zero length
    // leaves the vector as it is.
    void Normal();
    // A unit direction mapped into 0..1 per component (0.5 v + 0.5); w kept.
    void ClampTo01();
    // Copies turned `angle` degrees, right-handed, about x, y, z or `axis`
    // (normalised here); w kept.
    CVector4 GetRotatedX(double angle) const;
    CVector4 GetRotatedY(double angle) const;
    CVector4 GetRotatedZ(double angle) const;
    CVector4 GetRotatedAxis(double angle, CVector4 axis) const;
    // This point moved along the ray from `from`: (this - from) * extend + from.
    void ExtendVertexPos(const CVector4& from, float extend);
    // this = (point - from) * extend + from.
    void ExtendVertexPos(const CVector4& point, const CVector4& from, float extend);
    // this = the unit normal of the triangle a, b, c.
    void Normalize(const CVector4& a, const CVector4& b, const CVector4& c);
    void Normalize(const CVector4* triangle);  // the first three vectors
    // Adds one triangle's tangent to this vector, so that the tangents of
    // the triangles sharing a vertex accumulate. The normal's w is taken as 0.
    void CalculateTangentVector(const CVector4& p0, const CVector4& p1, const CVector4& p2, const CVector4& normal,
                                const CTexCoord& tc0, const CTexCoord& tc1, const CTexCoord& tc2);
};
