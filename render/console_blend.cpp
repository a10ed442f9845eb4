#include "render/console_blend.h"

#include <GL/gl.h>

void ConsoleBlend_Begin(bool blend, bool textured) {
    glPushMatrix();
    if (blend) {
        glDepthFunc(GL_LEQUAL);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glAlphaFunc(GL_GREATER, 0.0f);
        glEnable(GL_ALPHA_TEST);
        glEnable(GL_BLEND);
    }
    if (textured)
        glEnable(GL_TEXTURE_2D);
}

void ConsoleBlend_End(bool blend, bool textured) {
    if (textured)
        glDisable(GL_TEXTURE_2D);
    if (blend) {
        glDisable(GL_ALPHA_TEST);
        glDisable(GL_BLEND);
    }
    glPopMatrix();
}
