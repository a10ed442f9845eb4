// The skybox: one picture on all faces, and the scroll rule.
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
