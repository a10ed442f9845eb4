#include "render/brick_state.h"

#include <GL/gl.h>

void BrickState_Begin() {
    glDepthFunc(GL_LEQUAL);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glAlphaFunc(GL_GREATER, 0.0f);
    glEnable(GL_BLEND);
    glEnable(GL_ALPHA_TEST);
}

void BrickState_End() {
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
}
