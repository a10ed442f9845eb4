#include "gl_test_env.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>

#include "app/window.h"
#include "common/appstatus.h"
#include "common/log.h"
#include "render/glext.h"
#include "render/texture.h"

bool GLTest_Window() {
    static SDL_Surface* window = nullptr;
    static bool tried = false;
    if (!tried) {
        tried = true;
        if (SDL_Init(SDL_INIT_VIDEO) == 0) {
            for (SDL_GLattr channel : {SDL_GL_RED_SIZE, SDL_GL_GREEN_SIZE, SDL_GL_BLUE_SIZE})
                SDL_GL_SetAttribute(channel, 8);
            SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
            SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
            window = SDL_SetVideoMode(GLTEST_SIZE, GLTEST_SIZE, 32, SDL_OPENGL);
        }
        if (!window)
            ADD_FAILURE() << "no OpenGL window: " << SDL_GetError();
    }
    if (!window)
        return false;
    SDL_EnableUNICODE(1);  // as the game's window set-up leaves it
    Resolution.width = Resolution.height = GLTEST_SIZE;
    GLext.vertexBufferObjects = IsExtensionSupported("GL_ARB_vertex_buffer_object");
    GLext.frameBufferObjects = IsExtensionSupported("GL_EXT_framebuffer_object");
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
    for (GLenum cap : {GL_TEXTURE_2D, GL_BLEND, GL_ALPHA_TEST, GL_DEPTH_TEST, GL_CULL_FACE})
        glDisable(cap);
    glBindTexture(GL_TEXTURE_2D, 0);
    glColor4f(1, 1, 1, 1);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    while (glGetError() != GL_NO_ERROR) {
    }
}

void GLTest_CentredProjection() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-GLTEST_SIZE / 2, GLTEST_SIZE / 2, -GLTEST_SIZE / 2, GLTEST_SIZE / 2, -100, 100);
    glMatrixMode(GL_MODELVIEW);
}

void GLTest_LinkGameData() {
    std::filesystem::create_directory("data");
    for (const char* folder : {"levels", "models", "scripts", "textures"})
        std::filesystem::create_directory_symlink(GameData(folder), std::string("data/") + folder);
}

std::ostream& operator<<(std::ostream& out, const S_Rgb& p) {
    return out << "(" << p.r << ", " << p.g << ", " << p.b << ")";
}

S_Rgb GLTest_Pixel(int x, int y) {
    unsigned char rgba[4] = {0, 0, 0, 0};
    glFinish();
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, GLTEST_SIZE - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    return S_Rgb{rgba[0], rgba[1], rgba[2]};
}

static bool Near(const S_Rgb& p, int r, int g, int b, int tolerance = 8) {
    return std::abs(p.r - r) <= tolerance && std::abs(p.g - g) <= tolerance && std::abs(p.b - b) <= tolerance;
}

bool FindColour(int x, int y, int reach, int r, int g, int b) {
    for (int dy = -reach; dy <= reach; dy++)
        for (int dx = -reach; dx <= reach; dx++)
            if (Near(GLTest_Pixel(x + dx, y + dy), r, g, b, 40))
                return true;
    return false;
}

::testing::AssertionResult RgbNear(const char* text, const char*, const char*, const char*, const S_Rgb& p, int r,
                                   int g, int b) {
    if (Near(p, r, g, b))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << text << " is " << p << ", expected " << S_Rgb{r, g, b};
}

void GLTest::SetUp() {
    ShellTest::SetUp();
    InitErrorLog();
    RegisterAllCvars();
    Texture_Reset();
    ASSERT_TRUE(GLTest_Window());
    GLTest_ResetState();
}

void GLTest::TearDown() {
    Texture_Reset();
    ShellTest::TearDown();
}

std::string TgaFile(int width, int height, int bpp, const std::function<S_Texel(int, int)>& texel) {
    std::string bytes(18, '\0');  // uncompressed true colour, no id, no colour map
    bytes[2] = 2;
    bytes[12] = char(width & 0xFF), bytes[13] = char(width >> 8);
    bytes[14] = char(height & 0xFF), bytes[15] = char(height >> 8);
    bytes[16] = char(bpp), bytes[17] = char(bpp == 32 ? 8 : 0);
    for (int row = 0; row < height; row++)
        for (int x = 0; x < width; x++) {
            const S_Texel t = texel(x, row);
            bytes += {char(t.b), char(t.g), char(t.r)};
            if (bpp == 32)
                bytes += char(t.a);
        }
    return bytes;
}

std::string TgaFill(int width, int height, S_Texel colour) {
    return TgaFile(width, height, 24, [colour](int, int) { return colour; });
}
