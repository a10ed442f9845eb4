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
    CVector4 strafe;    // refreshed by CalculateStrafe
    float pitch = 0.0f; // running sum of the vertical mouse turns

    CCamera();

    void SetCamera(float px, float py, float pz, float vx, float vy, float vz, float ux, float uy,
                   float uz);
    void GetDirection(CVector4& out) const;  // view - position
    // Multiplies the look-at transform onto the current matrix.
    void ControlCamera() const;
    // Turns the direction by `angle` radians about `axis` (unit length) and
    // moves the view point accordingly.
    void RotateCamera(float angle, const CVector4& axis);
    void RotateByMouse(int mouseX, int mouseY, int centreX, int centreY);
    void CalculateStrafe();
    void MoveCamera(float speed);
    void StrafeCam(float speed);
    void UpdateCamera(const CVector4& v, float speed);

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
