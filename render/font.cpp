#include "render/font.h"

#include <GL/gl.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "common/appstatus.h"
#include "render/texture.h"

unsigned int fontNum = 0;
unsigned int base = 0;
int loop = 0;

bool FontLoad(const std::string& fileName) {
    fontNum = GetTexture(fileName, 1);
    VerboseLog(" -- attempting to load %s ... ", fileName.c_str());
    if (fontNum != 0) {
        BuildFont();
        VerboseLog("success!\n");
    } else {
        VerboseLog("ERROR: could not load font: %s", fileName.c_str());
    }
    return fontNum != 0;
}

void BuildFont() {
    base = glGenLists(256);
    glBindTexture(GL_TEXTURE_2D, fontNum);
    const float cell = 1.0f / 16.0f;
    for (loop = 0; loop < 256; loop++) {
        float cx = float(loop % 16) / 16.0f;
        float cy = 1.0f - float(loop / 16) / 16.0f;
        glNewList(base + loop, GL_COMPILE);
        glBegin(GL_QUADS);
        glTexCoord2f(cx, cy);
        glVertex2i(0, 0);
        glTexCoord2f(cx + cell, cy);
        glVertex2i(16, 0);
        glTexCoord2f(cx + cell, cy - cell);
        glVertex2i(16, 16);
        glTexCoord2f(cx, cy - cell);
        glVertex2i(0, 16);
        glEnd();
        glTranslated(10.0, 0.0, 0.0);
        glEndList();
    }
}

void KillFont() {
    if (base != 0)
        glDeleteLists(base, 256);
}

void glPrint(long x, long y, int set, int mode, const char* format, ...) {
    if (set > 1)
        set = 1;
    // Only text below the screen is skipped; text above the top is drawn.
    if (y > Resolution.height)
        return;

    char text[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);

    glPushMatrix();
    glDepthFunc(GL_LEQUAL);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, fontNum);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (mode != 2)
        glColor3f(1.0f, 1.0f, 1.0f);
    if (mode == 3)
        glColor3f(1.0f, 0.0f, 0.0f);
    glBindTexture(GL_TEXTURE_2D, fontNum);
    glTranslated(double(x), double(y), 0.0);
    glListBase(GLuint(int(base) - 32 + 128 * set));
    glCallLists(GLsizei(std::strlen(text)), GL_UNSIGNED_BYTE, text);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glPopMatrix();
}

void Font_Reset() {
    fontNum = 0;
    base = 0;
    loop = 0;
}
