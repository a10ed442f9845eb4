// Particle effects on the real driver: how a one-shot effect (and a menu
// burst) ends.
#include <GL/gl.h>

#include <cstdlib>

#include "common/cvar.h"
#include "gl_test_env.h"
#include "menu/bursts.h"
#include "particles/particles.h"
#include "render/texture.h"

namespace {

GLint Get(GLenum what) {
    GLint value = 0;
    glGetIntegerv(what, &value);
    return value;
}

class GLParticles : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        DrivenClock_Start();
        WriteFile("data/textures/white.tga", TgaFill(8, 8, {255, 255, 255, 255}));
        Cvar_Set("r_particles", "1");
    }
    void TearDown() override {
        // An ended one-shot effect leaves its push behind; the window is shared.
        while (Get(GL_MODELVIEW_STACK_DEPTH) > 1)
            glPopMatrix();
        GLTest::TearDown();
    }
    // Red particles, one timer unit = 32 pixels, origin at the window's centre.
    void RedEffect(const std::string& name, const std::string& life) {
        WriteFile("data/scripts/" + name, "texture white.tga\nlife " + life + "\ncolor 1;0;0\n");
        ASSERT_EQ(ParticleLoad(name), 0);
        GLTest_CentredProjection();
        glLoadIdentity();
        glScalef(32.0f, 32.0f, 1.0f);
    }
    static constexpr int C = GLTEST_SIZE / 2;
};

}  // namespace

TEST_F(GLParticles, OneShotEndsAtOnceLeavingItsStateBehindAndEndsTheMenuBurst) {
    RedEffect("once.txt", "0.25");
    DrivenClock_Frame(0.125);
    for (int frame = 0; frame < 3; ++frame)
        ASSERT_FALSE(ParticleDraw("once.txt", 0, 0, 0, false)) << frame;
    EXPECT_TRUE(ParticleDraw("once.txt", 0, 0, 0, false)) << "the first particle's life went below zero";
    EXPECT_FLOAT_EQ(Particles[1].particle[1].life, 0.0f) << "the later particles wait for the next draw";
    EXPECT_EQ(Get(GL_MODELVIEW_STACK_DEPTH), 2) << "the matrix stays pushed";
    EXPECT_TRUE(glIsEnabled(GL_ALPHA_TEST) && glIsEnabled(GL_TEXTURE_2D));

    RedEffect("burst.txt", "0.25");
    std::srand(99);
    for (int calls = 0; !g_MenuBurst.running && calls < 1000; calls++)
        DrawRandomParticles("burst.txt");
    ASSERT_TRUE(g_MenuBurst.running);
    EXPECT_FLOAT_EQ(Particles[2].particle[0].x, float(g_MenuBurst.x) / MENU_BURST_SCALE) << "drawn at once there";
    for (int frame = 0; frame < 3; ++frame)
        DrawRandomParticles("burst.txt");
    EXPECT_FALSE(g_MenuBurst.running) << "the burst runs until its effect ends";
}
