#include "gl_test_env.h"

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/appstatus.h"
#include "app/log.h"
#include "app/window.h"
#include "console/cvar.h"
#include "render/glext.h"

namespace fs = std::filesystem;

namespace {
SDL_Surface* g_Window = nullptr;
bool g_Tried = false;
} // namespace

bool GLTest_Window() {
    if (!g_Tried) {
        g_Tried = true;
        if (SDL_Init(SDL_INIT_VIDEO) == 0) {
            SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
            SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
            SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
            SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
            SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
            g_Window = SDL_SetVideoMode(GLTEST_SIZE, GLTEST_SIZE, 32, SDL_OPENGL);
        }
        if (!g_Window)
            ADD_FAILURE() << "no OpenGL window: " << SDL_GetError();
    }
    if (!g_Window)
        return false;
    Resolution.width = GLTEST_SIZE;
    Resolution.height = GLTEST_SIZE;
    GLext.vertexBufferObjects = IsExtensionSupported("GL_ARB_vertex_buffer_object");
    GLext.frameBufferObjects = IsExtensionSupported("GL_EXT_framebuffer_object");
    GLext.shaders = IsExtensionSupported("GL_ARB_fragment_shader") &&
                    IsExtensionSupported("GL_ARB_vertex_shader") &&
                    IsExtensionSupported("GL_ARB_shader_objects") &&
                    IsExtensionSupported("GL_ARB_shading_language_100");
    GLext.rectangleTextures = IsExtensionSupported("GL_ARB_texture_rectangle");
    GLext_LoadEntryPoints();
    return true;
}

void GLTest_ResetState() {
    if (GLext_HaveFramebufferObjects())
        glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    glViewport(0, 0, GLTEST_SIZE, GLTEST_SIZE);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, GLTEST_SIZE, GLTEST_SIZE, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glBindTexture(GL_TEXTURE_2D, 0);
    glColor4f(1, 1, 1, 1);
    glClearColor(0, 0, 0, 0);
    glClearDepth(1.0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    while (glGetError() != GL_NO_ERROR) {
    }
}

void GLTest_CentredProjection() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-GLTEST_SIZE / 2, GLTEST_SIZE / 2, -GLTEST_SIZE / 2, GLTEST_SIZE / 2, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

S_Rgb GLTest_Pixel(int x, int y) {
    unsigned char rgba[4] = {0, 0, 0, 0};
    glFinish();
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, GLTEST_SIZE - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    S_Rgb p;
    p.r = rgba[0];
    p.g = rgba[1];
    p.b = rgba[2];
    return p;
}

bool Near(const S_Rgb& p, int r, int g, int b, int tolerance) {
    return std::abs(p.r - r) <= tolerance && std::abs(p.g - g) <= tolerance && std::abs(p.b - b) <= tolerance;
}

::testing::AssertionResult RgbNear(const char* pixelText, const char*, const char*, const char*,
                                   const char*, const S_Rgb& p, int r, int g, int b, int tolerance) {
    if (Near(p, r, g, b, tolerance))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << pixelText << " is " << ToText(p) << ", expected (" << r << ", "
                                         << g << ", " << b << ") within " << tolerance;
}

bool FindColour(int x, int y, int reach, int r, int g, int b) {
    for (int dy = -reach; dy <= reach; dy++)
        for (int dx = -reach; dx <= reach; dx++)
            if (Near(GLTest_Pixel(x + dx, y + dy), r, g, b, 40))
                return true;
    return false;
}

std::string ToText(const S_Rgb& p) {
    std::ostringstream text;
    text << "(" << p.r << ", " << p.g << ", " << p.b << ")";
    return text.str();
}

TestFolder::TestFolder() {
    char cwd[PATH_MAX];
    previous_ = getcwd(cwd, sizeof cwd) ? cwd : "/";
    char pattern[] = "/tmp/velthra-render-XXXXXX";
    const char* made = mkdtemp(pattern);
    if (!made) {
        ADD_FAILURE() << "cannot create a scratch folder";
        path_ = previous_;
        return;
    }
    path_ = made;
    fs::create_directories(path_ + "/data/textures");
    fs::create_directories(path_ + "/data/models");
    if (chdir(path_.c_str()) != 0)
        ADD_FAILURE() << "cannot enter " << path_;
    CloseErrorLog();
    InitErrorLog();
}

TestFolder::~TestFolder() {
    CloseErrorLog();
    if (chdir(previous_.c_str()) != 0)
        ADD_FAILURE() << "cannot return to " << previous_;
    if (path_ != previous_) {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
}

std::string TestFolder::Log() const {
    if (ErrorLog)
        std::fflush(ErrorLog);
    std::ifstream in(path_ + "/log.txt", std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void WriteBytes(const std::string& path, const std::string& bytes) {
    fs::path p(path);
    if (p.has_parent_path())
        fs::create_directories(p.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), std::streamsize(bytes.size()));
}

void RegisterDefaultCvars() {
    Cvar_Clear();
    for (const S_Cvar* cvar : Cvar_Table())
        Cvar_Register(*cvar);
}

S_Texel MakeTexel(int r, int g, int b, int a) {
    S_Texel t;
    t.r = uint8_t(r);
    t.g = uint8_t(g);
    t.b = uint8_t(b);
    t.a = uint8_t(a);
    return t;
}

std::string TgaHeaderBytes(const S_TgaHeader& h) {
    std::string bytes;
    auto put16 = [&bytes](uint16_t v) {
        bytes.push_back(char(v & 0xFF));
        bytes.push_back(char(v >> 8));
    };
    bytes.push_back(char(h.idLength));
    bytes.push_back(char(h.colourMapType));
    bytes.push_back(char(h.imageType));
    for (uint8_t b : h.colourMap)
        bytes.push_back(char(b));
    put16(h.originX);
    put16(h.originY);
    put16(h.width);
    put16(h.height);
    bytes.push_back(char(h.bpp));
    bytes.push_back(char(h.descriptor));
    return bytes;
}

std::string TgaFile(int width, int height, int bpp, const std::function<S_Texel(int, int)>& texel) {
    S_TgaHeader header;
    header.width = uint16_t(width);
    header.height = uint16_t(height);
    header.bpp = uint8_t(bpp);
    header.descriptor = bpp == 32 ? 8 : 0;
    std::string bytes = TgaHeaderBytes(header);
    for (int row = 0; row < height; row++) {
        for (int x = 0; x < width; x++) {
            S_Texel t = texel(x, row);
            bytes.push_back(char(t.b));
            bytes.push_back(char(t.g));
            bytes.push_back(char(t.r));
            if (bpp == 32)
                bytes.push_back(char(t.a));
        }
    }
    return bytes;
}

std::string SolidColourTga(int width, int height, int bpp, S_Texel colour) {
    return TgaFile(width, height, bpp, [colour](int, int) { return colour; });
}
