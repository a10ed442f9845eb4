// One pass of the loop that draws (Frame_Run), as the game and the benchmark
// run it: the boundaries it marks between its parts, in their order, and the
// gamma it applies.
#include <vector>

#include "app/frame.h"
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
