#include "scene/camera.h"

#include <GL/glu.h>

#include <cmath>

CCamera Camera;

CCamera::CCamera() : position(0, 0, 0, 0), view(0, 0, 0, 0), up(0, 0, 0, 0), strafe(0, 0, 0, 0) {}

void CCamera::SetCamera(float px, float py, float pz, float vx, float vy, float vz, float ux, float uy, float uz) {
    position = CVector4(px, py, pz);
    view = CVector4(vx, vy, vz);
    up = CVector4(ux, uy, uz);
}

void CCamera::GetDirection(CVector4& out) const { out = view - position; }

void CCamera::ControlCamera() const {
    gluLookAt(position.x, position.y, position.z, view.x, view.y, view.z, up.x, up.y, up.z);
}

void CCamera::RotateCamera(float angle, const CVector4& axis) {
    CVector4 direction;
    GetDirection(direction);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const float x = axis.x, y = axis.y, z = axis.z;
    const float dx = direction.x, dy = direction.y, dz = direction.z;
    // The diagonal terms take (1 - c) times the axis component, not its
    // square. This is not the textbook matrix; the game's camera turns this
    // way (kept as it was, though only the unused mouse look calls it).
    CVector4 turned;
    turned.x = (c + (1 - c) * x) * dx + ((1 - c) * x * y - s * z) * dy + ((1 - c) * x * z + s * y) * dz;
    turned.y = ((1 - c) * x * y + s * z) * dx + (c + (1 - c) * y) * dy + ((1 - c) * y * z - s * x) * dz;
    turned.z = ((1 - c) * x * z - s * y) * dx + ((1 - c) * y * z + s * x) * dy + (c + (1 - c) * z) * dz;
    view = position + turned;
}

void CCamera::RotateByMouse(int mouseX, int mouseY, int centreX, int centreY) {
    if (mouseX == centreX && mouseY == centreY)
        return;
    const float angleY = float(centreX - mouseX) / 1000.0f;
    const float angleZ = float(centreY - mouseY) / 1000.0f;
    pitch -= angleZ;  // no limit: the camera may turn over

    CVector4 direction;
    GetDirection(direction);
    CVector4 axis;
    axis.CrossProduct(direction, up);
    axis.Normal();
    RotateCamera(angleZ, axis);
    RotateCamera(angleY, CVector4(0, 1, 0));
}

void CCamera::CalculateStrafe() {
    CVector4 direction;
    GetDirection(direction);
    CVector4 side;
    side.CrossProduct(direction, up);
    side.Normal();
    strafe = side;
}

void CCamera::MoveCamera(float speed) {
    CVector4 direction;
    GetDirection(direction);
    direction.Normal();
    position += direction * speed;
    view += direction * speed;
}

void CCamera::StrafeCam(float speed) {
    CalculateStrafe();
    position += strafe * speed;
    view += strafe * speed;
}

void CCamera::UpdateCamera(const CVector4& v, float speed) {
    position += v * speed;
    view += v * speed;
}

void Camera_Reset() { Camera = CCamera(); }
