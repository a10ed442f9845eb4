#include "render/glext.h"

#include <SDL.h>

#include "common/appstatus.h"
#include "common/log.h"

S_GLProcs glProc;

namespace {
bool g_Loaded = false;

template <typename T>
void Fetch(T& pointer, const char* name) {
    pointer = reinterpret_cast<T>(SDL_GL_GetProcAddress(name));
}
}  // namespace

bool GLext_HaveBufferObjects() {
    return glProc.GenBuffersARB && glProc.BindBufferARB && glProc.BufferDataARB && glProc.DeleteBuffersARB;
}

bool GLext_HaveFramebufferObjects() {
    return glProc.GenFramebuffersEXT && glProc.BindFramebufferEXT && glProc.DeleteFramebuffersEXT &&
           glProc.GenRenderbuffersEXT && glProc.BindRenderbufferEXT && glProc.RenderbufferStorageEXT &&
           glProc.DeleteRenderbuffersEXT && glProc.FramebufferTexture2DEXT && glProc.FramebufferRenderbufferEXT &&
           glProc.CheckFramebufferStatusEXT;
}

bool GLext_HaveShaderObjects() {
    return glProc.UseProgramObjectARB && glProc.CreateShaderObjectARB && glProc.ShaderSourceARB &&
           glProc.CompileShaderARB && glProc.CreateProgramObjectARB && glProc.AttachObjectARB &&
           glProc.LinkProgramARB && glProc.GetObjectParameterivARB && glProc.GetInfoLogARB &&
           glProc.GetUniformLocationARB && glProc.Uniform1iARB && glProc.Uniform1fARB && glProc.DeleteObjectARB &&
           glProc.ActiveTextureARB;
}

void GLext_LoadEntryPoints() {
    VerboseLog(" -- fetching OpenGL extension entry points ... ");
    glProc = S_GLProcs();
    Fetch(glProc.GenBuffersARB, "glGenBuffersARB");
    Fetch(glProc.BindBufferARB, "glBindBufferARB");
    Fetch(glProc.BufferDataARB, "glBufferDataARB");
    Fetch(glProc.DeleteBuffersARB, "glDeleteBuffersARB");
    Fetch(glProc.GenFramebuffersEXT, "glGenFramebuffersEXT");
    Fetch(glProc.BindFramebufferEXT, "glBindFramebufferEXT");
    Fetch(glProc.DeleteFramebuffersEXT, "glDeleteFramebuffersEXT");
    Fetch(glProc.GenRenderbuffersEXT, "glGenRenderbuffersEXT");
    Fetch(glProc.BindRenderbufferEXT, "glBindRenderbufferEXT");
    Fetch(glProc.RenderbufferStorageEXT, "glRenderbufferStorageEXT");
    Fetch(glProc.DeleteRenderbuffersEXT, "glDeleteRenderbuffersEXT");
    Fetch(glProc.FramebufferTexture2DEXT, "glFramebufferTexture2DEXT");
    Fetch(glProc.FramebufferRenderbufferEXT, "glFramebufferRenderbufferEXT");
    Fetch(glProc.CheckFramebufferStatusEXT, "glCheckFramebufferStatusEXT");
    Fetch(glProc.UseProgramObjectARB, "glUseProgramObjectARB");
    Fetch(glProc.CreateShaderObjectARB, "glCreateShaderObjectARB");
    Fetch(glProc.ShaderSourceARB, "glShaderSourceARB");
    Fetch(glProc.CompileShaderARB, "glCompileShaderARB");
    Fetch(glProc.CreateProgramObjectARB, "glCreateProgramObjectARB");
    Fetch(glProc.AttachObjectARB, "glAttachObjectARB");
    Fetch(glProc.LinkProgramARB, "glLinkProgramARB");
    Fetch(glProc.GetObjectParameterivARB, "glGetObjectParameterivARB");
    Fetch(glProc.GetInfoLogARB, "glGetInfoLogARB");
    Fetch(glProc.GetUniformLocationARB, "glGetUniformLocationARB");
    Fetch(glProc.Uniform1iARB, "glUniform1iARB");
    Fetch(glProc.Uniform1fARB, "glUniform1fARB");
    Fetch(glProc.DeleteObjectARB, "glDeleteObjectARB");
    Fetch(glProc.ActiveTextureARB, "glActiveTextureARB");
    g_Loaded = true;

    if (!GLext_HaveBufferObjects()) {
        GLext.vertexBufferObjects = false;
        AppStatus.useVertexBuffers = false;
    }
    if (!GLext_HaveFramebufferObjects())
        GLext.frameBufferObjects = false;
    if (!GLext_HaveShaderObjects())
        GLext.shaders = false;
    VerboseLog("%s\n", GLext_HaveBufferObjects() && GLext_HaveFramebufferObjects() ? "success!" : "incomplete");
}

void GLext_EnsureLoaded() {
    if (!g_Loaded)
        GLext_LoadEntryPoints();
}

void GLext_Reset() {
    glProc = S_GLProcs();
    g_Loaded = false;
}
