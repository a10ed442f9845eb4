#include "scene/skybox.h"

#include <GL/gl.h>

#include "app/timer.h"
#include "app/utils.h"
#include "console/cvar.h"
#include "render/texture.h"

CSkybox Skybox;

namespace {
float g_ScrollOffset = 0.0f;
} // namespace

float Skybox_ScrollOffset() { return g_ScrollOffset; }

float Skybox_AdvanceScroll() {
    g_ScrollOffset += StringToFloat(Cvar_Get("skyscroll")) * Timer.get_ticks();
    return g_ScrollOffset;
}

void Skybox_ResetScroll() { g_ScrollOffset = 0.0f; }

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
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glEnable(GL_CULL_FACE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glColor3f(1.0f, 1.0f, 1.0f);

    const float r = Skybox_AdvanceScroll();

    glBindTexture(GL_TEXTURE_2D, textures[0]);
    glBegin(GL_QUADS);
    glTexCoord2f(1, 0); glVertex3f(x0, y0, z1);
    glTexCoord2f(1, 1); glVertex3f(x0, y1, z1);
    glTexCoord2f(0, 1); glVertex3f(x1, y1, z1);
    glTexCoord2f(0, 0); glVertex3f(x1, y0, z1);
    glEnd();

    glBindTexture(GL_TEXTURE_2D, textures[1]);
    glBegin(GL_QUADS);
    glTexCoord2f(1, r); glVertex3f(x1, y0, z0);
    glTexCoord2f(1, r + 1); glVertex3f(x1, y1, z0);
    glTexCoord2f(0, r + 1); glVertex3f(x0, y1, z0);
    glTexCoord2f(0, r); glVertex3f(x0, y0, z0);
    glEnd();

    glBindTexture(GL_TEXTURE_2D, textures[2]);
    glBegin(GL_QUADS);
    glTexCoord2f(1, 1); glVertex3f(x0, y1, z0);
    glTexCoord2f(0, 1); glVertex3f(x0, y1, z1);
    glTexCoord2f(0, 0); glVertex3f(x0, y0, z1);
    glTexCoord2f(1, 0); glVertex3f(x0, y0, z0);
    glEnd();

    glBindTexture(GL_TEXTURE_2D, textures[3]);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0); glVertex3f(x1, y0, z0);
    glTexCoord2f(1, 0); glVertex3f(x1, y0, z1);
    glTexCoord2f(1, 1); glVertex3f(x1, y1, z1);
    glTexCoord2f(0, 1); glVertex3f(x1, y1, z0);
    glEnd();

    glBindTexture(GL_TEXTURE_2D, textures[4]);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0); glVertex3f(x1, y1, z0);
    glTexCoord2f(1, 0); glVertex3f(x1, y1, z1);
    glTexCoord2f(1, 1); glVertex3f(x0, y1, z1);
    glTexCoord2f(0, 1); glVertex3f(x0, y1, z0);
    glEnd();

    glBindTexture(GL_TEXTURE_2D, textures[5]);
    glBegin(GL_QUADS);
    glTexCoord2f(-r, 0); glVertex3f(x0, y0, z0);
    glTexCoord2f(1 - r, 0); glVertex3f(x0, y0, z1);
    glTexCoord2f(1 - r, 1); glVertex3f(x1, y0, z1);
    glTexCoord2f(-r, 1); glVertex3f(x1, y0, z0);
    glEnd();

    glDisable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glLoadIdentity();
    glPopMatrix();
}
