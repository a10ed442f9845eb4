// The full-screen zoom blur. While "r_blur" is non-zero the 3D scene of a
// frame is captured into the texture img and shown again in the 2D pass with
// "r_blurpower" additive copies, each "r_blurzoom" texture units larger and
// fainter than the one before.
//
// Two capture paths: render-to-texture through the framebuffer object fbo
// when GLext.frameBufferObjects is set, otherwise a copy of the lower-left
// 512 x 512 pixels of the back buffer. A framebuffer that turns out
// incomplete is logged by CheckFBO, deleted, and the blur is switched off.
//
// On the framebuffer path with shader objects, DrawFBO has the copies summed
// by fragment programs (render/blur_shader.h) at a fraction of their cost;
// DrawBlur itself always blends the copies and is the reference.
//
// Frame order: InitFBO at start-up; BeginFBO, the 3D scene, EndFBO; DrawFBO
// in the 2D pass; DestroyInitFBO at shutdown.
#pragma once

extern unsigned int img;          // receives the scene
extern unsigned int fbo;          // framebuffer object
extern unsigned int depthBuffer;  // its depth renderbuffer
// Shader handles, reserved: the game loads no shaders.
extern unsigned int _programObject;
extern unsigned int _fragmentShader;
extern int _texUnit;

void InitFBO();
void BeginFBO();
void EndFBO();
void DrawFBO();
// `times` additive copies, each `spread` texture units larger than the last.
void DrawBlur(int times, float spread);
void DestroyInitFBO();
// Start-up state: the names above forgotten, not deleted (DestroyInitFBO
// deletes them while the context lives).
void Blur_Reset();
// Logs what an incomplete status means; 0 for a complete framebuffer.
int CheckFBO(unsigned int status);
// The whole text file in a new zero-terminated buffer (free it with
// delete[]), or nullptr for no path, an unreadable or an empty file.
char* ReadShaderFile(const char* path);
void StopShaders();
