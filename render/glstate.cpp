#include "render/glstate.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cstring>
#include <vector>

#include "common/appstatus.h"
#include "common/console.h"
#include "common/log.h"

void ReshapeGL(int width, int height) {
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    // A window shrunk to no height keeps a finite aspect.
    gluPerspective(45.0, double(width) / double(height > 0 ? height : 1), 1.0, 1000.0);
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

void BeginGL3d() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    EnableGL3d();
}

void EndGL3d() { glFlush(); }

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
    // Inside the line list GL refuses the width request, so the marker is
    // drawn one pixel wide.
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

namespace {
// The gamma last passed to SDL; negative: none yet. A refused one counts as
// applied too: asking again every frame would not make a display accept it.
float g_AppliedGamma = -1.0f;
}  // namespace

bool SetGamma(float gamma) {
    if (gamma == g_AppliedGamma)
        return false;
    g_AppliedGamma = gamma;
    // Some SDL builds cannot set gamma on every display; a refusal is never fatal.
    SDL_SetGamma(gamma, gamma, gamma);
    return true;
}

void GLState_Reset() { g_AppliedGamma = -1.0f; }

void SetWireframe(bool on) { glPolygonMode(GL_FRONT_AND_BACK, on ? GL_LINE : GL_FILL); }

void ResizeGL(int width, int height) {
    glClearAccum(0.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_ACCUM_BUFFER_BIT);
    ReshapeGL(width, height);
}
