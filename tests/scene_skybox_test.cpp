// The skybox: one picture on all faces, the scroll rule, and its place
// behind what is drawn before and after it.
#include <GL/gl.h>
#include <GL/glu.h>

#include "common/cvar.h"
#include "gl_test_env.h"
#include "render/texture.h"
#include "scene/skybox.h"

namespace {

class GLSkybox : public GLTest {
protected:
    static void ResetSkybox() {
        Skybox = CSkybox();
        Skybox_ResetScroll();
    }
    void SetUp() override {
        GLTest::SetUp();
        ResetSkybox();
        DrivenClock_Start();
    }
    void TearDown() override {
        ResetSkybox();
        GLTest::TearDown();
    }
};

}  // namespace

TEST_F(GLSkybox, AllSixFacesTakeTheBImage) {
    WriteFile("data/textures/sky/stars_b.tga", TgaFill(16, 16, {0, 0, 255, 255}));
    WriteFile("data/textures/sky/stars_f.tga", TgaFill(16, 16, {255, 0, 0, 255}));
    Skybox.Load("sky/stars_", ".tga");
    const unsigned int b = CTexture::CheckPreLoaded("data/textures/sky/stars_b.tga");
    ASSERT_NE(b, 0u);
    for (int face = 0; face < CSkybox::FACES; face++)
        EXPECT_EQ(Skybox.textures[face], b) << face;
    EXPECT_EQ(CTexture::Count(), 1) << "read once, and no other face file";
}

TEST_F(GLSkybox, ScrollAdvancesBySkyscrollTimesTheFrameTime) {
    const struct {
        const char* skyscroll;
        double frame;
        float offset;
    } steps[] = {{"0.4", 0.25, 0.1f}, {"0.4", 0.5, 0.3f}, {"0", 1.0, 0.3f}, {"-1", 0.1, 0.2f}};
    for (const auto& step : steps) {
        Cvar_Set("skyscroll", step.skyscroll);
        DrivenClock_Frame(step.frame);
        EXPECT_NEAR(Skybox_AdvanceScroll(), step.offset, 1e-6f) << step.skyscroll << " for " << step.frame << " s";
    }
    EXPECT_NEAR(Skybox_ScrollOffset(), 0.2f, 1e-6f);
}

// The play frame draws the opaque field before the sky and relies on this.
TEST_F(GLSkybox, TheSkyStaysOffWhatIsDrawnAlreadyAndEverythingAfterCoversIt) {
    WriteFile("data/textures/sky/stars_b.tga", TgaFill(16, 16, {0, 0, 255, 255}));
    Skybox.Load("sky/stars_", ".tga");
    Cvar_Set("skyscroll", "0");
    DrivenClock_Frame(0.0);
    GLTest_ResetState();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(90.0, 1.0, 1.0, 1000.0);
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    // Looking down -z: a red square in the right half inside the box, then
    // the sky, then a green one in the left half beyond the box's far face.
    auto square = [](float x0, float x1, float z) {
        glBegin(GL_QUADS);
        glVertex3f(x0, -z / 2, z);
        glVertex3f(x1, -z / 2, z);
        glVertex3f(x1, z / 2, z);
        glVertex3f(x0, z / 2, z);
        glEnd();
    };
    glColor3f(1, 0, 0);
    square(10.0f, 0.0f, -10.0f);
    Skybox.Draw_Skybox(0, 0, 0, 100, 100, 100);
    GLboolean depthWrites = GL_FALSE;
    glGetBooleanv(GL_DEPTH_WRITEMASK, &depthWrites);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST) && depthWrites) << "the depth test and depth writes on again";
    glColor3f(0, 1, 0);
    square(0.0f, -160.0f, -80.0f);
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE * 3 / 4, GLTEST_SIZE / 2), 255, 0, 0) << "drawn before the sky: kept";
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE / 4, GLTEST_SIZE / 2), 0, 255, 0) << "drawn after, though beyond it";
    EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE / 2, GLTEST_SIZE / 8), 0, 0, 255) << "the sky around them";
}
