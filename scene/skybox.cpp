#include "scene/skybox.h"

#include <GL/gl.h>

#include "common/cvar.h"
#include "common/timer.h"
#include "common/utils.h"
#include "render/texture.h"

CSkybox Skybox;

namespace {
float g_ScrollOffset = 0.0f;

// One corner of a face: its texture coordinate before scrolling and which
// end of the box (0 low, 1 high) it takes on each axis.
struct S_SkyCorner {
    float s, t;
    int x, y, z;
};
// A face: four corners in drawing order, and how far the scroll offset moves
// its texture along s and t. Only the far face (1) and the floor (5) scroll.
struct S_SkyFace {
    S_SkyCorner corners[4];
    float scrollS, scrollT;
};
const S_SkyFace SKY_FACES[CSkybox::FACES] = {
    {{{1, 0, 0, 0, 1}, {1, 1, 0, 1, 1}, {0, 1, 1, 1, 1}, {0, 0, 1, 0, 1}}, 0, 0},   // near
    {{{1, 0, 1, 0, 0}, {1, 1, 1, 1, 0}, {0, 1, 0, 1, 0}, {0, 0, 0, 0, 0}}, 0, 1},   // far
    {{{1, 1, 0, 1, 0}, {0, 1, 0, 1, 1}, {0, 0, 0, 0, 1}, {1, 0, 0, 0, 0}}, 0, 0},   // left
    {{{0, 0, 1, 0, 0}, {1, 0, 1, 0, 1}, {1, 1, 1, 1, 1}, {0, 1, 1, 1, 0}}, 0, 0},   // right
    {{{0, 0, 1, 1, 0}, {1, 0, 1, 1, 1}, {1, 1, 0, 1, 1}, {0, 1, 0, 1, 0}}, 0, 0},   // top
    {{{0, 0, 0, 0, 0}, {1, 0, 0, 0, 1}, {1, 1, 1, 0, 1}, {0, 1, 1, 0, 0}}, -1, 0},  // floor
};
}  // namespace

float Skybox_ScrollOffset() { return g_ScrollOffset; }

float Skybox_AdvanceScroll() {
    g_ScrollOffset += Cvar_GetFloat(skyscroll) * Timer.get_ticks();
    return g_ScrollOffset;
}

void Skybox_ResetScroll() { g_ScrollOffset = 0.0f; }

void Skybox_Reset() {
    Skybox = CSkybox();
    g_ScrollOffset = 0.0f;
}

int CSkybox::Load(const std::string& prefix, const std::string& extension) {
    for (int face = 0; face < FACES; face++) {
        const std::string name = prefix + "b" + extension;
        PreCacheImage(name, 1);
        textures[face] = FindTexture(name);
    }
    return 1;
}

void CSkybox::Cleanup() {
    for (int i = 0; i < FACES; i++)
        glDeleteTextures(FACES, &textures[i]);
}

void CSkybox::Draw_Skybox(float x, float y, float z, float width, float height, float length) {
    const float x0 = x - width / 2, y0 = y - height / 2, z0 = z - length / 2;
    const float x1 = x0 + width, y1 = y0 + height, z1 = z0 + length;

    glPushMatrix();
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glDepthMask(GL_FALSE);
    glDisable(GL_BLEND);
    glEnable(GL_CULL_FACE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glColor3f(1.0f, 1.0f, 1.0f);

    const float r = Skybox_AdvanceScroll();

    const float xs[2] = {x0, x1}, ys[2] = {y0, y1}, zs[2] = {z0, z1};
    for (int face = 0; face < FACES; face++) {
        const S_SkyFace& f = SKY_FACES[face];
        glBindTexture(GL_TEXTURE_2D, textures[face]);
        glBegin(GL_QUADS);
        for (const S_SkyCorner& c : f.corners) {
            glTexCoord2f(c.s + f.scrollS * r, c.t + f.scrollT * r);
            glVertex3f(xs[c.x], ys[c.y], zs[c.z]);
        }
        glEnd();
    }

    glDisable(GL_TEXTURE_2D);
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glLoadIdentity();
    glPopMatrix();
}
