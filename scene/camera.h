// CCamera, a look-at camera: an eye position, the point looked at, an up
// vector and a strafe vector. The game places it once per level and applies
// it every frame with ControlCamera; it can also be turned by the mouse.
#pragma once

#include "scene/vector.h"

class CCamera {
public:
    CVector4 position;  // the eye
    CVector4 view;      // the point looked at
    CVector4 up;
    CVector4 strafe;     // refreshed by CalculateStrafe
    float pitch = 0.0f;  // running sum of the vertical mouse turns

    CCamera();  // all four vectors zero: place it with SetCamera before use

    // Eye, point looked at and up vector, in world units; strafe and pitch
    // stay as they were.
    void SetCamera(float px, float py, float pz, float vx, float vy, float vz, float ux, float uy, float uz);
    void GetDirection(CVector4& out) const;  // view - position
    // Multiplies the look-at transform onto the current matrix.
    void ControlCamera() const;
    // Turns the direction by `angle` radians about `axis` (unit length) and
    // moves the view point accordingly.
    void RotateCamera(float angle, const CVector4& axis);
    // The pointer's offset from the centre, 1/1000 radian per pixel: up and
    // down about direction x up (no limit, the camera may turn over), then
    // left and right about world y. Nothing at the centre itself.
    void RotateByMouse(int mouseX, int mouseY, int centreX, int centreY);
    void CalculateStrafe();  // strafe = unit (direction x up); zero when they are parallel
    // Move the eye and the view point together: MoveCamera `speed` world
    // units along the unit view direction (back when negative), StrafeCam as
    // far along a fresh strafe, UpdateCamera by v * speed (v not normalised).
    void MoveCamera(float speed);
    void StrafeCam(float speed);
    void UpdateCamera(const CVector4& v, float speed);

    // The eye alone: setting it leaves the view point, so the camera turns.
    float getPosX() const { return position.x; }
    float getPosY() const { return position.y; }
    float getPosZ() const { return position.z; }
    void setPosX(float v) { position.x = v; }
    void setPosY(float v) { position.y = v; }
    void setPosZ(float v) { position.z = v; }
    // The view point, not angles: the names are historical.
    float getRotX() const { return view.x; }
    float getRotY() const { return view.y; }
    float getRotZ() const { return view.z; }
    void setRotX(float v) { view.x = v; }
    void setRotY(float v) { view.y = v; }
    void setRotZ(float v) { view.z = v; }
};

extern CCamera Camera;
void Camera_Reset();  // the camera as constructed: nothing placed yet
