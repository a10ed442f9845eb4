// Billboards: turn the current model-view matrix so that what is drawn next
// faces the viewer. Kept as a facility; the game itself draws none.
// Every Begin pushes the matrix and BillboardEnd pops it.
#pragma once

// Replace the rotation part of the model-view matrix: fully (spherical) or
// only its first and third columns (cylindrical, turning about y only).
void BillboardCheatSphericalBegin();
void BillboardCheatCylindricalBegin();
// Rotate the object at (objX, objY, objZ) toward the camera: about y only
// (cylindrical), or also tilted toward the camera's height (spherical).
void BillboardCylindricalBegin(float camX, float camY, float camZ, float objX, float objY, float objZ);
void BillboardSphericalBegin(float camX, float camY, float camZ, float objX, float objY, float objZ);
void BillboardEnd();

// The angle that Billboard*Begin turns by about y (degrees, 0 when the
// guard skips the turn), and the tilt of the spherical form; no OpenGL.
struct S_BillboardTurn {
    bool turn = false;
    float angle = 0.0f;         // degrees
    float axis[3] = {0, 0, 0};  // lookAt x projected direction
    bool tilt = false;
    float tiltAngle = 0.0f;  // degrees
    float tiltAxisX = 0.0f;  // -1 when the direction's y >= 0, +1 otherwise
};
// For a camera at cam and an object at obj. No turn within 0.81 degrees of
// the object's +z or -z axis: straight behind, the object keeps its back to
// the camera.
S_BillboardTurn Billboard_Turn(float camX, float camY, float camZ, float objX, float objY, float objZ);
