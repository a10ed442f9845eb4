#include "render/draw2d.h"

#include <GL/gl.h>

#include "common/appstatus.h"
#include "render/texture.h"

namespace {
// The quad shared by every helper, drawn at the current origin.
void DrawQuad(long w, long h) {
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2i(0, 0);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2i(GLint(w), 0);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2i(GLint(w), GLint(h));
    glTexCoord2f(0.0f, 0.0f);
    glVertex2i(0, GLint(h));
    glEnd();
}
}  // namespace

void DisplayBlank(long x, long y, long w, long h) {
    glDisable(GL_TEXTURE_2D);
    glPushMatrix();
    glTranslated(double(x), double(y), 0.0);
    DrawQuad(w, h);
    glPopMatrix();
}

namespace {
// Texturing on, the quad drawn at (x, y), texturing off; the caller has
// pushed the matrix.
void TexturedQuad(long x, long y, long w, long h, unsigned long texture) {
    if (texture == 0)
        texture = g_DefaultTex;
    glEnable(GL_TEXTURE_2D);
    // Deliberately before the bind: these touch the previously bound texture,
    // and every picture keeps the filters it was created with.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glBindTexture(GL_TEXTURE_2D, GLuint(texture));
    glTranslated(double(x), double(y), 0.0);
    DrawQuad(w, h);
    glDisable(GL_TEXTURE_2D);
}
}  // namespace

void DisplayImage(long x, long y, long w, long h, unsigned long texture) {
    glPushMatrix();
    TexturedQuad(x, y, w, h, texture);
    glPopMatrix();
}

void DisplayImageBlend(long x, long y, long w, long h, unsigned long texture) {
    glPushMatrix();
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.0f);
    TexturedQuad(x, y, w, h, texture);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    glPopMatrix();
}

void DrawBlackBackground() {
    glPushMatrix();
    glDisable(GL_TEXTURE_2D);
    glColor3f(0.0f, 0.0f, 0.0f);
    glScalef(1.0f, 1.0f, 1.0f);
    DrawQuad(Resolution.width, Resolution.height);
    glPopMatrix();
}

void SetDrawColor(float red, float green, float blue, float alpha) { glColor4f(red, green, blue, alpha); }
