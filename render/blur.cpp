#include "render/blur.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <cstdio>
#include <string>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/log.h"
#include "common/utils.h"
#include "render/blur_shader.h"
#include "render/draw2d.h"
#include "render/glext.h"

unsigned int img = 0;
unsigned int fbo = 0;
unsigned int depthBuffer = 0;
unsigned int _programObject = 0;
unsigned int _fragmentShader = 0;
int _texUnit = 0;

namespace {

// The copy path grabs this square of the back buffer.
constexpr int COPY_SIZE = 512;
constexpr int MAX_BLUR_COPIES = 100;

bool BlurOn() { return Cvar_GetInt(r_blur) != 0; }

bool UseFramebuffer() {
    GLext_EnsureLoaded();
    return GLext.frameBufferObjects && GLext_HaveFramebufferObjects();
}

void ClearGLErrors() {
    for (int i = 0; i < 32 && glGetError() != GL_NO_ERROR; i++) {
    }
}

// Each set-up step answers an empty text or the reason it failed.
std::string GLErrorText(const char* step) {
    GLenum error = glGetError();
    if (error == GL_NO_ERROR)
        return "";
    char text[96];
    std::snprintf(text, sizeof text, "OpenGL error 0x%04X while %s", unsigned(error), step);
    return text;
}

std::string BuildCaptureTexture() {
    ClearGLErrors();
    glGenTextures(1, &img);
    glBindTexture(GL_TEXTURE_2D, img);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, Resolution.width, Resolution.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    if (img == 0)
        return "no texture name for the captured scene";
    return GLErrorText("building the capture texture");
}

std::string CreateFramebuffer() {
    ClearGLErrors();
    glProc.GenFramebuffersEXT(1, &fbo);
    glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, fbo);
    glProc.GenRenderbuffersEXT(1, &depthBuffer);
    glProc.BindRenderbufferEXT(GL_RENDERBUFFER_EXT, depthBuffer);
    glProc.RenderbufferStorageEXT(GL_RENDERBUFFER_EXT, GL_DEPTH_COMPONENT, Resolution.width, Resolution.height);
    glProc.FramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D, img, 0);
    glProc.FramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT, GL_RENDERBUFFER_EXT, depthBuffer);
    return GLErrorText("creating the framebuffer");
}

}  // namespace

void InitFBO() {
    std::string failure = BuildCaptureTexture();
    if (!failure.empty())
        Log(" -- WARNING. could not build FBO because: %s\n", failure.c_str());

    std::string blur = Cvar_GetString(r_blur);
    if (UseFramebuffer()) {
        failure = CreateFramebuffer();
        if (!failure.empty())
            Log(" -- WARNING. could not create FBO because: %s\n", failure.c_str());

        GLenum status = glProc.CheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
        if (status != GL_FRAMEBUFFER_COMPLETE_EXT || fbo == 0 || depthBuffer == 0 || img == 0) {
            blur = "0";
            CheckFBO(status);
            glProc.DeleteFramebuffersEXT(1, &fbo);
            glProc.DeleteRenderbuffersEXT(1, &depthBuffer);
            fbo = 0;
            depthBuffer = 0;
            GLext.frameBufferObjects = false;  // the copy path from now on
        }
        // Unbound in every case: until BeginFBO the scene must reach the
        // screen, or "r_blur" 0 would show nothing at all.
        glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
        glProc.BindRenderbufferEXT(GL_RENDERBUFFER_EXT, 0);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    Cvar_Set(r_blur, blur);
}

int CheckFBO(unsigned int status) {
    switch (status) {
    case GL_FRAMEBUFFER_COMPLETE_EXT:
        return 0;
    case GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT_EXT:
        Log("Error! FBO missing a required image/buffer attachment!\n");
        break;
    case GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT_EXT:
        Log("Error! FBO has no images/buffers attached!\n");
        break;
    case GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS_EXT:
        Log("Error! FBO has mismatched image/buffer dimensions!\n");
        break;
    case GL_FRAMEBUFFER_INCOMPLETE_FORMATS_EXT:
        Log("Error! FBO colorbuffer attachments have different types!\n");
        break;
    case GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER_EXT:
        Log("Error! FBO trying to draw to non-attached color buffer!\n");
        break;
    case GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER_EXT:
        Log("Error! FBO trying to read from a non-attached color buffer!\n");
        break;
    case GL_FRAMEBUFFER_UNSUPPORTED_EXT:
        Log("Error! FBO format is not supported by current graphics card/driver!\n");
        break;
    default:
        Log("*UNKNOWN ERROR* reported from glCheckFramebufferStatusEXT()!\n");
        break;
    }
    return 1;
}

void BeginFBO() {
    if (!BlurOn())
        return;
    if (UseFramebuffer()) {
        glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, fbo);
        glPushAttrib(GL_VIEWPORT_BIT);
        glViewport(0, 0, Resolution.width, Resolution.height);
    } else {
        glViewport(0, 0, COPY_SIZE, COPY_SIZE);
    }
}

void EndFBO() {
    if (!BlurOn())
        return;
    if (UseFramebuffer()) {
        glPopAttrib();
        glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    } else {
        // The scene never reaches the screen directly: it is grabbed and
        // wiped, and only DrawFBO shows it.
        glBindTexture(GL_TEXTURE_2D, img);
        glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 0, 0, COPY_SIZE, COPY_SIZE, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glViewport(0, 0, Resolution.width, Resolution.height);
    }
}

void DrawFBO() {
    if (!BlurOn())
        return;
    glPushMatrix();
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, img);
    glColor3f(1.0f, 1.0f, 1.0f);
    float zoom = Cvar_GetFloat(r_blurzoom);
    float power = Cvar_GetFloat(r_blurpower);
    // A damaged settings file must not stall every frame (or overflow the
    // conversion): past this many copies each adds under 0.1 % anyway.
    if (!(power > 0.0f))
        power = 0.0f;
    else if (power > float(MAX_BLUR_COPIES))
        power = float(MAX_BLUR_COPIES);
    // The copies stay the reference, and the way wherever the shaders cannot
    // draw them: the copy path, or a driver that refused the programs.
    if (fbo == 0 || !UseFramebuffer() || !BlurShader_DrawScene(img, int(power), zoom)) {
        DisplayImage(0, 0, Resolution.width, Resolution.height, img);
        DrawBlur(int(power), zoom);
    }
    glDisable(GL_TEXTURE_2D);
    glPopMatrix();
}

void DrawBlur(int times, float spread) {
    const float width = float(Resolution.width);
    const float height = float(Resolution.height);
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glEnable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, img);

    float alpha = 0.1f;
    const float alphaStep = times > 0 ? 0.1f / float(times) : 0.0f;
    float offset = 0.0f;
    glBegin(GL_QUADS);
    for (int i = 0; i < times; i++) {
        glColor4f(1.0f, 1.0f, 1.0f, alpha);
        glTexCoord2f(-offset, 1.0f + offset);
        glVertex2f(0.0f, 0.0f);
        glTexCoord2f(-offset, -offset);
        glVertex2f(0.0f, height);
        glTexCoord2f(1.0f + offset, -offset);
        glVertex2f(width, height);
        glTexCoord2f(1.0f + offset, 1.0f + offset);
        glVertex2f(width, 0.0f);
        offset += spread;
        alpha -= alphaStep;
    }
    glEnd();

    glEnable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
}

void Blur_Reset() {
    img = fbo = depthBuffer = 0;
    _programObject = _fragmentShader = 0;
    _texUnit = 0;
}

void DestroyInitFBO() {
    BlurShader_Destroy();
    if (UseFramebuffer()) {
        glProc.DeleteFramebuffersEXT(1, &fbo);
        glProc.DeleteRenderbuffersEXT(1, &depthBuffer);
        fbo = 0;
        depthBuffer = 0;
    }
    glDeleteTextures(1, &img);
    img = 0;
}

char* ReadShaderFile(const char* path) {
    VerboseLog(" -- attempting to load shader: %s ... ", path ? path : "(null)");
    if (!path) {
        VerboseLog("FAILURE!\n");
        return nullptr;
    }
    FILE* file = std::fopen(path, "rt");
    if (!file)
        return nullptr;
    char* text = nullptr;
    if (std::fseek(file, 0, SEEK_END) == 0) {
        long length = std::ftell(file);
        std::rewind(file);
        if (length > 0) {
            text = new char[size_t(length) + 1];
            size_t count = std::fread(text, 1, size_t(length), file);
            text[count] = '\0';
        }
    }
    VerboseLog("success!\n");
    std::fclose(file);
    return text;
}

void StopShaders() {
    GLext_EnsureLoaded();
    if (GLext.shaders && GLext_HaveShaderObjects())
        glProc.UseProgramObjectARB(0);
}
