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

// Makes img at the screen's size and, where framebuffer objects work, fbo
// with its depth buffer. An incomplete framebuffer sets "r_blur" to 0 and
// leaves the copy path for the rest of the run. Nothing stays bound.
void InitFBO();
// While "r_blur" is on, the 3D scene drawn next goes into img (framebuffer)
// or into the lower-left 512 x 512 pixels (copy path); otherwise nothing.
void BeginFBO();
// Back to the screen. The copy path copies its corner into img and clears
// the back buffer, so the scene reaches the screen only through DrawFBO.
void EndFBO();
// In the 2D pass, while "r_blur" is on: img over the whole screen and
// "r_blurpower" copies (truncated, 0 to 100; NaN or negative is 0).
void DrawFBO();
// `times` additive copies, each `spread` texture units larger than the last.
void DrawBlur(int times, float spread);
// Frees the shader targets, the framebuffer and its depth buffer, and img.
void DestroyInitFBO();
// Start-up state: the names above forgotten, not deleted (DestroyInitFBO
// deletes them while the context lives).
void Blur_Reset();
// Logs what an incomplete status means; 0 for a complete framebuffer.
int CheckFBO(unsigned int status);
// The whole text file in a new zero-terminated buffer (free it with
// delete[]), or nullptr for no path, an unreadable or an empty file.
char* ReadShaderFile(const char* path);
void StopShaders();  // unbinds any shader program, where shader objects exist
