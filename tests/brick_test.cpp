// One brick's frame (CBrick::Update) against a ball placed by hand.
#include <climits>
#include <string>
#include <utility>

#include "common/cvar.h"
#include "common/gamestats.h"
#include "game/ball.h"
#include "game/brick.h"
#include "test_support.h"

namespace {

class BrickTest : public CvarTest {
protected:
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
    for (const auto& [x, z] : {std::pair{-3.0f, -10.0f}, {3.0f, -10.0f}, {0.0f, -14.0f}, {0.0f, -6.0f}}) {
        Aim(x, z, 0);  // on the first brick's edge
        first.Update(0.0f);
        EXPECT_FALSE(first.IsTouched() || first.Alive()) << x << ", " << z;
    }

    Aim(1.0f, -9.0f, 0);  // inside both boxes
    first.Update(0.0f);
    second.Update(0.0f);
    EXPECT_TRUE(first.Alive()) << "true means broken";
    EXPECT_TRUE(second.IsTouched());
    EXPECT_FALSE(second.Alive()) << "the first hit cleared the ball's available flag";
    EXPECT_EQ(Game_Stats.score, 50);
    EXPECT_EQ(Ball.GetDirection(), 2);
}

TEST_F(BrickTest, HitsByKindAndTheSecondRound) {
    const struct {
        bool secondRound;
        int type, hits, points;
    } cases[] = {{false, 0, 1, 50}, {false, 3, 4, 500}, {true, 0, 4, 500}, {true, 2, 3, 300}};
    for (const auto& c : cases) {
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
        EXPECT_EQ(std::make_pair(Game_Stats.score, Game_Stats.extraLifePoints), std::make_pair(c.points, c.points));
    }
    // A kind from a damaged level worth more than an int can hold: the score stops at the top.
    Game_Stats.secondRound = false;
    CBrick huge(0.0f, -10.0f, 2000000000);
    Aim(0.0f, -10.0f, 1);
    huge.Update(0.0f);
    EXPECT_EQ(std::make_pair(Game_Stats.score, Game_Stats.extraLifePoints), std::make_pair(INT_MAX, INT_MAX));
}

TEST_F(BrickTest, FarBandReversesXAndTheRestReturnsToThePaddle) {
    const int far[4] = {1, 0, 1, 0};     // ball z <= brick z - 2
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
    EXPECT_TRUE(frame.fading && !frame.whole);
    EXPECT_FLOAT_EQ(frame.fade, 0.2f);
    EXPECT_EQ(frame.model, std::string("box.solid"));

    int frames = 1;
    while (brick.Update(1.0f).fading && frames < 100)
        ++frames;
    EXPECT_EQ(frames, 26) << "fade 0.2, then 0.4 a second while below 10: 0.6 ... 10.2";
    EXPECT_FALSE(brick.Update(1.0f).fading);
}

TEST_F(BrickTest, UnbrokenAlphaFollowsTheBlurAndAnUnavailableBallPassesThrough) {
    CBrick brick(0.0f, -10.0f, 2);
    Aim(0.0f, -10.0f, 0);
    Ball.Available(false);
    S_BrickFrame frame = brick.Update(0.0f);
    EXPECT_TRUE(brick.IsTouched());
    EXPECT_EQ(std::make_pair(brick.GetHitPoints(), Game_Stats.score), std::make_pair(2, 0)) << "not hit";
    EXPECT_TRUE(frame.whole && frame.alpha == 1.0f);
    EXPECT_EQ(frame.model, std::string("box3.solid"));

    Cvar_Set("r_blur", "1");
    EXPECT_FLOAT_EQ(brick.Update(0.0f).alpha, 0.7f);
}

}  // namespace
