// The staged loading, the splash screen and Initialize, with a driven clock.
#include "app/frame.h"
#include "app/initialize.h"
#include "app/window.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/timer.h"
#include "game/game.h"
#include "gl_test_env.h"
#include "render/blur.h"
#include "render/texture.h"

namespace {

class GLStartup : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        DrivenClock_Start(0);
    }
    void TearDown() override {
        DestroyInitFBO();
        GLTest::TearDown();
    }
};

}  // namespace

TEST_F(GLStartup, ElevenLoadingFramesThenInitThenThreeSecondsOfSplash) {
    WriteFile("data/textures/splashscreen.tga", TgaFill(8, 8, {0, 0, 255, 255}));
    CGame game;
    Game_Stats.extraLifePoints = 77;  // CGame::Init clears it
    const int progress[11] = {0, 2, 4, 5, 6, 8, 9, 10, 10, 10, 10};
    for (int frame = 0; frame < 11; frame++) {
        SCOPED_TRACE("frame " + std::to_string(frame + 1));
        EXPECT_FALSE(g_SplashScreen || Game_Stats.extraLifePoints != 77) << "the game is not initialised yet";
        LoadMedia(game, Timer);
        EXPECT_EQ(g_PreLoadingStuff, progress[frame]);
    }
    EXPECT_TRUE(g_SplashScreen && Game_Stats.extraLifePoints == 0) << "the eleventh frame initialises the game";
    LoadMedia(game, Timer);  // phase 10 again: loads nothing, initialises nothing
    EXPECT_EQ(g_PreLoadingStuff, 10);

    // Slow frames: the splash counts frame time, not frames.
    for (int shown = 0; shown <= 3; shown++) {
        DrivenClock_Frame(1.0);
        GLTest_ResetState();
        LoadingBar();
        EXPECT_EQ(g_MediaLoaded, shown == 3) << "after " << shown << " s of splash, done when three have passed";
        const int blue = shown < 3 ? 255 : 0;  // the splash picture covers the screen, then is gone
        EXPECT_RGB(GLTest_Pixel(GLTEST_SIZE / 2, GLTEST_SIZE / 2), 0, 0, blue);
        EXPECT_RGB(GLTest_Pixel(1, GLTEST_SIZE - 2), 0, 0, blue);
    }
    // Never shown again, the picture is let go; asked for again, it would be read anew.
    EXPECT_EQ(FindTexture("splashscreen.tga"), g_DefaultTex);
    const unsigned int again = GetTexture("splashscreen.tga", 0);
    EXPECT_TRUE(again != 0 && again != g_DefaultTex);
}

TEST_F(GLStartup, InitializeOverridesTheMenuAndWorldSwitches) {
    AppStatus.menuFile = "custom.xml";
    AppStatus.levelFile = "lvl5.xml";
    AppStatus.startWithMenu = false;
    AppStatus.verboseLog = true;
    Game_Stats.level = 7;
    Cvar_Set("r_blur", "0");
    g_First_Run = false;
    ASSERT_TRUE(Initialize());
    EXPECT_EQ(AppStatus.menuFile + " " + AppStatus.levelFile, "menu.xml lvl1.xml");
    EXPECT_TRUE(AppStatus.startWithMenu && Game_Stats.level == 1);
    EXPECT_TRUE(AppStatus.verboseLog) << "-vlog is the one switch Initialize leaves alone";
    EXPECT_TRUE(GLext.frameBufferObjects) << "llvmpipe offers framebuffer objects";
    EXPECT_EQ(Cvar_Get("r_blur"), "0") << "a player's setting is kept after the first run";
    EXPECT_EQ(Cvar_Get("r_fbo"), "1") << "Cvar_Go publishes what the probe found";

    DestroyInitFBO();
    g_First_Run = true;
    ASSERT_TRUE(Initialize());
    EXPECT_EQ(Cvar_Get("r_blur"), "1") << "the first run switches the blur on where it can";
}
