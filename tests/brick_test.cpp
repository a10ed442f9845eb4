// One brick's frame (CBrick::Update) against a ball placed by hand: the touch
// box, the turn of the ball, scoring, the second round and what is drawn.
#include <string>
#include <utility>

#include "console/cvar.h"
#include "game/ball.h"
#include "game/brick.h"
#include "game/gamestats.h"
#include "test_support.h"

namespace {

class BrickTest : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        RegisterAllCvars();
        Ball_Reset();
        Brick_Reset();
    }
    void TearDown() override {
        Brick_Reset();
        Ball_Reset();
        ShellTest::TearDown();
    }
    // A ball that may hit, going `direction`, at (x, z).
    static void Aim(float x, float z, int direction) {
        Ball.SetPosition(x, z);
        Ball.ChangeDirection(direction);
        Ball.Available(true);
    }
};

TEST_F(BrickTest, TouchBoxIsStrictAndOnlyTheFirstTouchedBrickHits) {
    CBrick first(0.0f, -10.0f, 0);
    CBrick second(2.0f, -10.0f, 0);
    EXPECT_EQ(CBrick::Count(), 2);

    for (const auto& [x, z] : {std::pair{-3.0f, -10.0f}, {3.0f, -10.0f}, {0.0f, -14.0f}, {0.0f, -6.0f}}) {
        Aim(x, z, 0);  // on the first brick's edge
        first.Update(0.0f);
        EXPECT_FALSE(first.IsTouched()) << x << ", " << z;
        EXPECT_FALSE(first.Alive());
    }

    Aim(1.0f, -9.0f, 0);  // inside both boxes
    first.Update(0.0f);
    second.Update(0.0f);
    EXPECT_TRUE(first.Alive()) << "true means broken";
    EXPECT_TRUE(second.IsTouched());
    EXPECT_FALSE(second.Alive()) << "the first hit cleared the ball's available flag";
    EXPECT_EQ(Game_Stats.score, 50);
    EXPECT_EQ(Game_Stats.extraLifePoints, 50);
    EXPECT_EQ(Ball.GetDirection(), 2);
    EXPECT_FALSE(Ball.IsAvailable());
}

TEST_F(BrickTest, HitsByKindAndTheSecondRound) {
    struct Case {
        bool secondRound;
        int type;
        int hits;
        int points;
    };
    for (const Case& c : {Case{false, 0, 1, 50}, Case{false, 3, 4, 500}, Case{true, 0, 4, 500},
                          Case{true, 2, 3, 300}}) {
        Game_Stats.score = Game_Stats.extraLifePoints = 0;
        Game_Stats.secondRound = c.secondRound;
        CBrick brick(0.0f, -10.0f, c.type);
        int hits = 0;
        while (!brick.Alive() && hits < 10) {
            const int before = brick.GetHitPoints();
            Aim(0.0f, -10.0f, 1);
            const S_BrickFrame frame = brick.Update(0.0f);
            ++hits;
            if (!brick.Alive()) {
                EXPECT_EQ(brick.GetHitPoints(), before - 1);
                EXPECT_EQ(frame.model, std::string("box") + (before - 1 ? std::to_string(before) : "") + ".solid")
                    << "drawn with the hit points after the hit";
            }
        }
        EXPECT_EQ(hits, c.hits) << "kind " << c.type << " round 2 " << c.secondRound;
        EXPECT_EQ(Game_Stats.score, c.points);
        EXPECT_EQ(Game_Stats.extraLifePoints, c.points);
    }
}

TEST_F(BrickTest, FarBandReversesXAndTheRestReturnsToThePaddle) {
    const int far[4] = {1, 0, 1, 0};      // ball z <= brick z - 2
    const int others[4] = {2, 3, 2, 3};  // anywhere else in the box
    for (float dz : {-3.5f, -2.0f, -1.9f, 0.0f, 2.0f, 3.5f}) {
        for (int d = 0; d < 4; d++) {
            CBrick brick(0.0f, -10.0f, 1);
            Aim(0.0f, -10.0f + dz, d);
            brick.Update(0.0f);
            EXPECT_EQ(Ball.GetDirection(), dz <= -2.0f ? far[d] : others[d]) << "offset " << dz << " from " << d;
            EXPECT_FALSE(Ball.IsAvailable());
        }
    }
}

TEST_F(BrickTest, BreakingBrickIsNotDrawnThatFrameThenFades) {
    CBrick brick(0.0f, -10.0f, 0);
    Aim(0.0f, -10.0f, 0);
    S_BrickFrame frame = brick.Update(1.0f);
    ASSERT_TRUE(brick.Alive());
    EXPECT_FALSE(frame.fading) << "the fade step ran before the hit";
    EXPECT_FALSE(frame.whole) << "the whole brick is drawn only if still unbroken after the hit";

    frame = brick.Update(0.5f);
    EXPECT_TRUE(frame.fading);
    EXPECT_FALSE(frame.whole);
    EXPECT_FLOAT_EQ(frame.fade, 0.2f);
    EXPECT_EQ(frame.model, std::string("box.solid"));

    int frames = 1;
    while (brick.Update(1.0f).fading && frames < 100)
        ++frames;
    EXPECT_GE(brick.GetFade(), 10.0f);
    EXPECT_EQ(frames, 26) << "fade 0.2, then 0.4 a second while below 10: 0.6 ... 10.2";
    EXPECT_FALSE(brick.Update(1.0f).fading);
}

TEST_F(BrickTest, UnbrokenAlphaFollowsTheBlurAndAnUnavailableBallPassesThrough) {
    CBrick brick(0.0f, -10.0f, 2);
    Aim(0.0f, -10.0f, 0);
    Ball.Available(false);
    S_BrickFrame frame = brick.Update(0.0f);
    EXPECT_TRUE(brick.IsTouched());
    EXPECT_EQ(brick.GetHitPoints(), 2);
    EXPECT_EQ(Game_Stats.score, 0);
    EXPECT_TRUE(frame.whole);
    EXPECT_EQ(frame.alpha, 1.0f);
    EXPECT_EQ(frame.model, std::string("box3.solid"));

    Cvar_Set("r_blur", "1");
    EXPECT_FLOAT_EQ(brick.Update(0.0f).alpha, 0.7f);
}

} // namespace
