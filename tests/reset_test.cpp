// App_ResetAll: the state of every module, and the random numbers, as a
// process starts with them; the fixture of every test relies on it.
#include <cstdlib>

#include "app/reset.h"
#include "app/window.h"
#include "common/framemark.h"
#include "game/ball.h"
#include "render/blur.h"
#include "scene/camera.h"
#include "scene/skybox.h"
#include "test_support.h"

namespace {
void IgnoreMark(E_FramePart) {}

class AppResetAll : public ShellTest {};
}  // namespace

TEST_F(AppResetAll, TheRandomNumbersStartWhereAProcessStartsThem) {
    // Unseeded, the C library starts as if seeded with 1; the ball's
    // constructor draws the first number before main.
    std::srand(1);
    const int drawnByTheBall = std::rand();
    const int firstForTheGame = std::rand();
    std::srand(20240601);
    std::rand();
    App_ResetAll();
    EXPECT_EQ(Ball.GetDirection(), drawnByTheBall % 2);
    EXPECT_EQ(std::rand(), firstForTheGame);
}

TEST_F(AppResetAll, ForgetsTheCameraTheSkyTheBlurTheWindowAndTheFrameMarks) {
    Camera.SetCamera(1, 2, 3, 4, 5, 6, 0, 1, 0);
    Skybox.textures[0] = 11;
    fbo = 12;
    img = 13;
    depthBuffer = 14;
    SDL_Surface fake{};
    Screen = &fake;
    g_FrameMark = IgnoreMark;
    App_ResetAll();
    EXPECT_EQ(Camera.getPosX() + Camera.getPosY() + Camera.getPosZ(), 0.0f);
    EXPECT_EQ(Camera.getRotY(), 0.0f);
    EXPECT_EQ(Skybox.textures[0], 0u);
    EXPECT_EQ(fbo + img + depthBuffer, 0u);
    EXPECT_EQ(Screen, nullptr);
    EXPECT_EQ(g_FrameMark, nullptr);
}
