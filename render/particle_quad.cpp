#include "render/particle_quad.h"

#include <GL/gl.h>

void DrawParticleQuad(unsigned int texture, float r, float g, float b, float alpha, float x, float y, float z) {
    glPushMatrix();
    glEnable(GL_TEXTURE_2D);
    glDepthFunc(GL_LEQUAL);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glAlphaFunc(GL_GREATER, 0.0f);
    glEnable(GL_ALPHA_TEST);
    glBindTexture(GL_TEXTURE_2D, GLuint(texture));
    // Sprites stay crisp however large the caller's scale makes them.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);

    glColor4f(r, g, b, alpha);
    glBegin(GL_TRIANGLE_STRIP);
    glTexCoord2f(1.0f, 1.0f);
    glVertex3f(x + 0.5f, y + 0.5f, z);
    glTexCoord2f(0.0f, 1.0f);
    glVertex3f(x - 0.5f, y + 0.5f, z);
    glTexCoord2f(1.0f, 0.0f);
    glVertex3f(x + 0.5f, y - 0.5f, z);
    glTexCoord2f(0.0f, 0.0f);
    glVertex3f(x - 0.5f, y - 0.5f, z);
    glEnd();
}

void EndParticleQuad() {
    glPopMatrix();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
}

int BeginParticleLayer(float pixelsPerUnit) {
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glScalef(pixelsPerUnit, pixelsPerUnit, 1.0f);
    glEnable(GL_BLEND);
    return int(depth);
}

void EndParticleLayer(int depth) {
    glMatrixMode(GL_MODELVIEW);
    GLint now = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &now);
    for (; now > depth && now > 1; now--)
        glPopMatrix();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
}
