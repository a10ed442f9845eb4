#include "app/window.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "app/appstatus.h"
#include "app/log.h"
#include "app/utils.h"
#include "console/cmd.h"
#include "console/console.h"
#include "console/cvar.h"

SDL_Surface* Screen = nullptr;
const SDL_VideoInfo* video_info = nullptr;

bool SetupOpengl(unsigned flags) {
    VerboseLog(" -- attempting to create SDL_Video ... \n");
    if (SDL_Init(SDL_INIT_VIDEO) < 0) {
        Log("Unable to open SDL: %s\n", SDL_GetError());
        std::exit(1);
    }
    SDL_EnableUNICODE(1);
    video_info = SDL_GetVideoInfo();
    std::atexit(SDL_Quit);

    if (!CreateWindowGL(Resolution.width, Resolution.height, Resolution.bpp, flags)) {
        Log("Unable to open screen surface: %s\n", SDL_GetError());
        std::exit(1);
    }
    SDL_WM_SetCaption(GAME_NAME, nullptr);
    if (!InitGL()) {
        Log("Can't init GL: %s\n", SDL_GetError());
        std::exit(1);
    }
    if (!Initialize()) {
        Log("App init failed: %s\n", SDL_GetError());
        std::exit(1);
    }
    system_h();
    return true;
}

bool CreateWindowGL(int width, int height, int bpp, unsigned flags) {
    VerboseLog(" -- trying to create window \n");
    SDL_GL_SetAttribute(SDL_GL_ACCUM_RED_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_GREEN_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_BLUE_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_ALPHA_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    if (StringToInt(Cvar_Get("fullscreen")) != 0)
        flags |= SDL_FULLSCREEN;
    Screen = SDL_SetVideoMode(width, height, bpp, flags);
    if (!Screen)
        return false;
    ReshapeGL(Resolution.width, Resolution.height);
    return true;
}

void ReshapeGL(int width, int height) {
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(45.0, float(width) / float(height), 1.0, 1000.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

bool InitGL() {
    VerboseLog(" -- attempting to INIT OPENGL ... ");
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClearAccum(0.0f, 0.0f, 0.0f, 1.0f);
    glClearDepth(1.0);
    // Applied to the model-view left current by ReshapeGL; the first frame's
    // identity load removes it again.
    glOrtho(0, Resolution.width, Resolution.height, 0, 0, 1000);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glShadeModel(GL_SMOOTH);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    VerboseLog("success!\n");
    return true;
}

bool ExtensionListed(const char* extensions, const char* name) {
    if (!extensions || !name || *name == '\0' || std::strchr(name, ' '))
        return false;
    size_t length = std::strlen(name);
    const char* start = extensions;
    for (;;) {
        const char* where = std::strstr(start, name);
        if (!where)
            return false;
        const char* end = where + length;
        if ((where == extensions || where[-1] == ' ') && (*end == ' ' || *end == '\0'))
            return true;
        start = end;
    }
}

bool IsExtensionSupported(const char* name) {
    VerboseLog(" -- checking extension %s ... ", name);
    if (!name || *name == '\0' || std::strchr(name, ' '))
        return false;
    const char* extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    if (ExtensionListed(extensions, name)) {
        Con_Print("EXT Supported %s", name);
        VerboseLog("EXT Supported!\n");
        return true;
    }
    Con_Print("EXT Unsupported! %s", name);
    VerboseLog("EXT Unsupported!\n");
    return false;
}

void EnableGL3d() {
    glClearColor(0.0f, 0.0f, 0.0f, 0.5f);
    glClearDepth(1.0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    // The projection stays current for the whole 3D pass: the camera and the
    // models are applied on top of the saved perspective.
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
}

void EnableGL2d() {
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);  // menus stay filled in wire-frame mode
    glLoadIdentity();
    glOrtho(0, Resolution.width, Resolution.height, 0, 0, 1);
    glMatrixMode(GL_MODELVIEW);
    glDisable(GL_DEPTH_TEST);
    glLoadIdentity();
}

void DisableGL2d() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
}

void initGLEW() {}

void drawDefaultObj() {
    glBegin(GL_LINES);
    // Inside the line list the width request is ignored; kept as it always was.
    glLineWidth(5.0f);
    glColor3f(1.0f, 0.0f, 0.0f);
    glVertex3f(0.0f, 0.0f, 0.0f);
    glVertex3f(10.0f, 0.0f, 0.0f);
    glColor3f(0.0f, 1.0f, 0.0f);
    glVertex3f(0.0f, 0.0f, 0.0f);
    glVertex3f(0.0f, 10.0f, 0.0f);
    glColor3f(0.0f, 0.0f, 1.0f);
    glVertex3f(0.0f, 0.0f, 0.0f);
    glVertex3f(0.0f, 0.0f, 10.0f);
    glEnd();
}

void SetUpIcon(const char* file) {
    VerboseLog(" -- attempting to setup SDL window ICON ... \n");
    SDL_Surface* icon = SDL_LoadBMP(file);
    if (!icon) {
        Log("Unable to load icon: %s\n", SDL_GetError());
        return;
    }
    if (icon->w % 8 != 0) {
        Log("Icon width must be a multiple of 8\n");
        SDL_FreeSurface(icon);
        return;
    }
    if (!icon->format->palette) {
        Log("Icon file must have a palette.\n");
        SDL_FreeSurface(icon);
        return;
    }
    Uint8* pixels = static_cast<Uint8*>(icon->pixels);
    SDL_SetColorKey(icon, SDL_SRCCOLORKEY, pixels[0]);
    size_t maskLength = size_t(icon->w / 8) * size_t(icon->h);
    Uint8* mask = static_cast<Uint8*>(std::malloc(maskLength));
    if (!mask) {
        Log("malloc() failed while loading icon: %s\n", SDL_GetError());
        SDL_FreeSurface(icon);
        return;
    }
    std::memset(mask, 0, maskLength);
    for (int y = 0; y < icon->h; y++) {
        for (int x = 0; x < icon->w; x++) {
            if (pixels[y * icon->pitch + x] != pixels[0])
                mask[(y * icon->w + x) / 8] |= Uint8(0x80 >> (x % 8));
        }
    }
    VerboseLog(" -- attempting to apply SDL window ICON ... ");
    SDL_WM_SetIcon(icon, mask);
    VerboseLog(" success!\n");
    std::free(mask);
    SDL_FreeSurface(icon);
}

bool SDL_InvertSurface(SDL_Surface* surface) {
    if (!surface || SDL_LockSurface(surface) < 0)
        return false;
    std::vector<Uint8> row(surface->pitch);
    Uint8* pixels = static_cast<Uint8*>(surface->pixels);
    for (int top = 0, bottom = surface->h - 1; top < bottom; top++, bottom--) {
        std::memcpy(row.data(), pixels + top * surface->pitch, surface->pitch);
        std::memcpy(pixels + top * surface->pitch, pixels + bottom * surface->pitch, surface->pitch);
        std::memcpy(pixels + bottom * surface->pitch, row.data(), surface->pitch);
    }
    SDL_UnlockSurface(surface);
    return true;
}
