#include "scene/billboard.h"

#include <GL/gl.h>

#include <cmath>

namespace {

// The factor the billboards have always used, with pi taken as 3.14.
constexpr float DEGREES = 180.0f / 3.14f;
constexpr float LIMIT = 0.9999f;

void Unit(float v[3]) {
    float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (length > 0.0f) {
        v[0] /= length;
        v[1] /= length;
        v[2] /= length;
    }
}

void CheatBegin(bool keepMiddleColumn) {
    float m[16];
    glPushMatrix();
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    // Column-major: column i is m[4i .. 4i + 2].
    for (int column = 0; column < 3; column++) {
        if (column == 1 && keepMiddleColumn)
            continue;
        for (int row = 0; row < 3; row++)
            m[column * 4 + row] = column == row ? 1.0f : 0.0f;
    }
    glLoadMatrixf(m);
}

}  // namespace

S_BillboardTurn Billboard_Turn(float camX, float camY, float camZ, float objX, float objY, float objZ) {
    S_BillboardTurn result;
    const float lookAt[3] = {0.0f, 0.0f, 1.0f};
    float projected[3] = {camX - objX, 0.0f, camZ - objZ};
    Unit(projected);
    result.axis[0] = lookAt[1] * projected[2] - lookAt[2] * projected[1];
    result.axis[1] = lookAt[2] * projected[0] - lookAt[0] * projected[2];
    result.axis[2] = lookAt[0] * projected[1] - lookAt[1] * projected[0];
    float cosine = lookAt[0] * projected[0] + lookAt[1] * projected[1] + lookAt[2] * projected[2];
    if (cosine < LIMIT && cosine > -LIMIT) {
        result.turn = true;
        result.angle = std::acos(cosine) * DEGREES;
    }

    float direction[3] = {camX - objX, camY - objY, camZ - objZ};
    Unit(direction);
    cosine = projected[0] * direction[0] + projected[1] * direction[1] + projected[2] * direction[2];
    if (cosine < LIMIT && cosine > -LIMIT) {
        result.tilt = true;
        result.tiltAngle = std::acos(cosine) * DEGREES;
        result.tiltAxisX = direction[1] >= 0.0f ? -1.0f : 1.0f;
    }
    return result;
}

void BillboardCheatSphericalBegin() { CheatBegin(false); }

void BillboardCheatCylindricalBegin() { CheatBegin(true); }

void BillboardCylindricalBegin(float camX, float camY, float camZ, float objX, float objY, float objZ) {
    glPushMatrix();
    S_BillboardTurn t = Billboard_Turn(camX, camY, camZ, objX, objY, objZ);
    if (t.turn)
        glRotatef(t.angle, t.axis[0], t.axis[1], t.axis[2]);
}

void BillboardSphericalBegin(float camX, float camY, float camZ, float objX, float objY, float objZ) {
    glPushMatrix();
    S_BillboardTurn t = Billboard_Turn(camX, camY, camZ, objX, objY, objZ);
    if (t.turn)
        glRotatef(t.angle, t.axis[0], t.axis[1], t.axis[2]);
    if (t.tilt)
        glRotatef(t.tiltAngle, t.tiltAxisX, 0.0f, 0.0f);
}

void BillboardEnd() { glPopMatrix(); }
