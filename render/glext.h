// Entry points of the OpenGL extensions the renderer uses: vertex buffer
// objects (models), framebuffer objects (the blur) and shader objects (the
// blur's fast path, with the multitexture unit switch it needs).
//
// How they are obtained: every one is fetched at run time with
// SDL_GL_GetProcAddress into the table glProc, and the renderer calls only
// through that table. This works with Mesa (which would also link them
// directly, GL_GLEXT_PROTOTYPES being defined for the build) and with drivers
// that hand extension functions out only at run time. Fetching needs a
// window with an OpenGL context; until then the table stays empty.
//
// A pointer alone proves nothing (GLX returns one for any name); an extension
// is used only when its GLext flag is set AND its pointers were found.
// GLext_LoadEntryPoints clears the GLext flag (and AppStatus.useVertexBuffers
// for buffer objects) of any group whose pointers are missing, so the
// designed fall-backs take over: immediate-mode models, the copy path of the
// blur, no shaders.
#pragma once

#include <GL/gl.h>
#include <GL/glext.h>

struct S_GLProcs {
    // GL_ARB_vertex_buffer_object
    PFNGLGENBUFFERSARBPROC GenBuffersARB = nullptr;
    PFNGLBINDBUFFERARBPROC BindBufferARB = nullptr;
    PFNGLBUFFERDATAARBPROC BufferDataARB = nullptr;
    PFNGLDELETEBUFFERSARBPROC DeleteBuffersARB = nullptr;
    // GL_EXT_framebuffer_object
    PFNGLGENFRAMEBUFFERSEXTPROC GenFramebuffersEXT = nullptr;
    PFNGLBINDFRAMEBUFFEREXTPROC BindFramebufferEXT = nullptr;
    PFNGLDELETEFRAMEBUFFERSEXTPROC DeleteFramebuffersEXT = nullptr;
    PFNGLGENRENDERBUFFERSEXTPROC GenRenderbuffersEXT = nullptr;
    PFNGLBINDRENDERBUFFEREXTPROC BindRenderbufferEXT = nullptr;
    PFNGLRENDERBUFFERSTORAGEEXTPROC RenderbufferStorageEXT = nullptr;
    PFNGLDELETERENDERBUFFERSEXTPROC DeleteRenderbuffersEXT = nullptr;
    PFNGLFRAMEBUFFERTEXTURE2DEXTPROC FramebufferTexture2DEXT = nullptr;
    PFNGLFRAMEBUFFERRENDERBUFFEREXTPROC FramebufferRenderbufferEXT = nullptr;
    PFNGLCHECKFRAMEBUFFERSTATUSEXTPROC CheckFramebufferStatusEXT = nullptr;
    // GL_ARB_shader_objects, and the texture unit switch the shaders need
    PFNGLUSEPROGRAMOBJECTARBPROC UseProgramObjectARB = nullptr;
    PFNGLCREATESHADEROBJECTARBPROC CreateShaderObjectARB = nullptr;
    PFNGLSHADERSOURCEARBPROC ShaderSourceARB = nullptr;
    PFNGLCOMPILESHADERARBPROC CompileShaderARB = nullptr;
    PFNGLCREATEPROGRAMOBJECTARBPROC CreateProgramObjectARB = nullptr;
    PFNGLATTACHOBJECTARBPROC AttachObjectARB = nullptr;
    PFNGLLINKPROGRAMARBPROC LinkProgramARB = nullptr;
    PFNGLGETOBJECTPARAMETERIVARBPROC GetObjectParameterivARB = nullptr;
    PFNGLGETINFOLOGARBPROC GetInfoLogARB = nullptr;
    PFNGLGETUNIFORMLOCATIONARBPROC GetUniformLocationARB = nullptr;
    PFNGLUNIFORM1IARBPROC Uniform1iARB = nullptr;
    PFNGLUNIFORM1FARBPROC Uniform1fARB = nullptr;
    PFNGLDELETEOBJECTARBPROC DeleteObjectARB = nullptr;
    PFNGLACTIVETEXTUREARBPROC ActiveTextureARB = nullptr;
};

extern S_GLProcs glProc;

// Fetches every entry point (again, if called again) and clears the GLext
// flags of incomplete groups. Needs the OpenGL context; call it after the
// extension probe. The users below call it themselves on first need.
void GLext_LoadEntryPoints();
// Loads once; later calls do nothing until GLext_Reset.
void GLext_EnsureLoaded();
// Every pointer of the group was found. The GLext flag is not consulted:
// callers check both.
bool GLext_HaveBufferObjects();
bool GLext_HaveFramebufferObjects();
bool GLext_HaveShaderObjects();  // the shader objects and the texture unit switch
// Test/start-up reset: forgets the table so the next use fetches it anew.
void GLext_Reset();
