// The drawing pass (Frame_Run) as the game and the benchmark run it, and the
// game loop's frame-rate limit (Frame_Pace).
#include <chrono>
#include <thread>
#include <vector>

#include "app/frame.h"
#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/framemark.h"
#include "console/cconsole.h"
#include "game/game.h"
#include "gl_test_env.h"
#include "render/glstate.h"

namespace {

std::vector<E_FramePart> g_Marks;
void Record(E_FramePart part) { g_Marks.push_back(part); }

class GLFrame : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        DrivenClock_Start();
        g_Marks.clear();
        g_FrameMark = Record;
    }

    std::vector<E_FramePart> OneFrame() {
        g_Marks.clear();
        Frame_Run(game, console, SDL_Event{});
        return g_Marks;
    }

    CGame game;
    CConsole console;
};

using P = E_FramePart;

}  // namespace

TEST_F(GLFrame, WhileLoadingTheGamePartsAreNotReached) {
    EXPECT_EQ(OneFrame(), (std::vector<P>{P::Start3d, P::Blur, P::Pass2d, P::Swap, P::End}));
}

TEST_F(GLFrame, PlayMarksEveryPartInDrawingOrder) {
    g_MediaLoaded = true;
    Cvar_Set("m_menu", "0");
    EXPECT_EQ(OneFrame(), (std::vector<P>{P::Start3d, P::Field, P::Sky, P::Bricks, P::PaddleBall, P::Blur, P::Pass2d,
                                          P::Swap, P::End}));
}

TEST_F(GLFrame, BehindAMenuNoFieldIsDrawn) {
    g_MediaLoaded = true;
    Cvar_Set("m_menu", "1");
    EXPECT_EQ(OneFrame(), (std::vector<P>{P::Start3d, P::Field, P::PaddleBall, P::Blur, P::Pass2d, P::Swap, P::End}));
}

TEST_F(GLFrame, BrightnessIsAtLeastThreeTenthsAndReachesTheDisplayOnlyWhenItChanges) {
    GLState_Reset();
    const struct {
        const char* brightness;
        float gamma;
    } steps[] = {{"0.1", 0.3f}, {"1.5", 1.5f}};
    for (const auto& step : steps) {
        Cvar_Set("brightness", step.brightness);
        game.UpdateCvars(console);
        EXPECT_EQ(Resolution.gammaRed, step.gamma) << step.brightness;
        EXPECT_FALSE(SetGamma(step.gamma)) << step.brightness << ": the frame applied it already";
    }
    EXPECT_TRUE(SetGamma(1.0f));
    GLState_Reset();
    EXPECT_TRUE(SetGamma(1.0f)) << "after the reset nothing counts as applied";
}

// The loop's frame-rate limit, in real time. Only lower bounds on the time
// are checked: a slow or busy machine can only make frames later.
class FramePace : public CvarTest {
protected:
    static double Seconds(int frames) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < frames; i++)
            Frame_Pace();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
};

TEST_F(FramePace, FramesStartALimitsShareApartAndASlowFrameIsNotMadeUpFor) {
    g_SplashScreen = true;  // loading is over
    Cvar_Set("r_maxfps", "100");
    EXPECT_GE(Seconds(6), 0.050) << "the first frame starts the schedule, five more follow 10 ms apart";
    std::this_thread::sleep_for(std::chrono::milliseconds(60));  // a slow frame
    EXPECT_GE(Seconds(3), 0.020) << "then 10 ms apart again, not hurried to catch up";

    // No limit, or still loading: nothing holds the frames back (a limit of
    // 1 would take two seconds here).
    for (const char* limit : {"0", "-5", "abc"}) {
        Cvar_Set("r_maxfps", limit);
        EXPECT_LT(Seconds(3), 1.0) << limit;
    }
    Cvar_Set("r_maxfps", "1");
    g_SplashScreen = false;
    EXPECT_LT(Seconds(3), 1.0) << "loading";
}
