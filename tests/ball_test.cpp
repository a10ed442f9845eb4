// One frame of the ball's flight (CBall::Step) with chosen frame times.
#include <tuple>
#include <utility>

#include "common/gamestats.h"
#include "game/ball.h"
#include "test_support.h"

namespace {

class BallTest : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        srand(7);
        Game_Stats.paddleX = 0.0f;
        Game_Stats.paddleZ = 7.0f;
        Game_Stats.ballLaunched = true;
    }
};

TEST_F(BallTest, PastTheLossLineCostsALifeAndTheFrameStillRunsWithItsExtraLifeStep) {
    Ball.SetPosition(0.0f, 16.0f);  // on the line: not lost
    Ball.ChangeDirection(2);
    Game_Stats.extraLifePoints = 10000;  // an extra life only above this
    Ball.Step(0.0f);
    EXPECT_EQ(std::make_tuple(Game_Stats.lives, Game_Stats.extraLifePoints, Game_Stats.ballLaunched),
              std::make_tuple(3, 10000, true));

    Ball.SetPosition(0.0f, 16.5f);
    Ball.Available(false);
    Ball.Step(1.0f);
    EXPECT_EQ(Game_Stats.lives, 2);
    EXPECT_FALSE(Game_Stats.ballLaunched) << "the driver puts the ball back on the paddle next frame";
    EXPECT_TRUE(Ball.GetDirection() == 0 || Ball.GetDirection() == 1) << Ball.GetDirection();
    EXPECT_FLOAT_EQ(Ball.GetSpeed(), 0.6f) << "speed back to 0, then this frame's growth";
    EXPECT_LT(Ball.GetZ(), 16.5f) << "the move of the loss frame still runs, away from the paddle";

    // So does the extra-life step.
    Ball.SetPosition(0.0f, 16.5f);
    Game_Stats.extraLifePoints = 10001;
    Ball.Step(0.0f);
    EXPECT_EQ(std::make_pair(Game_Stats.lives, Game_Stats.extraLifePoints), std::make_pair(2 - 1 + 1, 0));
}

TEST_F(BallTest, CentreHitLeavesInDirectionZeroAndDriftsBackAlongZ) {
    Game_Stats.level = 0;  // no level speed: the sums are easy to follow
    Ball.SetPosition(0.1f, 6.5f);
    Ball.ChangeDirection(3);
    Ball.Step(1.0f);
    EXPECT_EQ(std::make_pair(Ball.GetDirection(), Ball.GetAngle()), std::make_pair(0, -1));
    // speed 0.6: x + 0.6 + 2s (no speed step across), z - 0.6 - s + 1
    EXPECT_NEAR(Ball.GetX(), 0.1f + 1.8f, 1e-5);
    EXPECT_NEAR(Ball.GetZ(), 6.5f - 0.2f, 1e-5);

    // The band edge is compared in double: 0.8f is above 1 - 0.2 in double, not above 1.0f - 0.2f in float.
    Game_Stats.paddleX = 1.0f;
    Ball.SetPosition(0.8f, 6.5f);
    Ball.ChangeDirection(2);
    Ball.Step(0.0f);
    EXPECT_EQ(std::make_pair(Ball.GetDirection(), Ball.GetAngle()), std::make_pair(0, -1));
}

TEST_F(BallTest, LevelSpeedReadBackThroughOneMove) {
    const struct {
        int level;
        bool secondRound;
        float h;
    } cases[] = {{3, false, 5.4f}, {3, true, 17.04f}, {1, false, 1.8f}};
    for (const auto& c : cases) {
        Ball_Reset();
        Game_Stats.level = c.level;
        Game_Stats.secondRound = c.secondRound;
        Ball.SetPosition(0.0f, 0.0f);
        Ball.ChangeDirection(0);
        Ball.Step(1.0f);  // speed 0.6: each axis moves 0.6 + (0.6 + h)
        EXPECT_NEAR(Ball.GetX() - 1.2f, c.h, 1e-4) << "level " << c.level << " round 2 " << c.secondRound;
        EXPECT_NEAR(-Ball.GetZ() - 1.2f, c.h, 1e-4);
    }
}

TEST_F(BallTest, WallsTurnStrictlyAndTheAngleKeepsItsSigns) {
    struct Case {
        float x, z;
        int from, to;
    };
    for (const Case& c :
         {Case{8.5f, 0, 0, 1}, Case{8.5f, 0, 2, 3}, Case{8.0f, 0, 0, 0}, Case{-8.5f, 0, 3, 2}, Case{-8.5f, 0, 1, 0},
          Case{-8.0f, 0, 1, 1}, Case{0, -16.5f, 1, 3}, Case{0, -16.5f, 0, 2}, Case{0, -16.0f, 0, 0}}) {
        Ball.SetPosition(c.x, c.z);
        Ball.ChangeDirection(c.from);
        Ball.Available(false);
        Ball.Step(0.0f);
        EXPECT_EQ(Ball.GetDirection(), c.to) << c.x << ", " << c.z << " from " << c.from;
        EXPECT_EQ(Ball.IsAvailable(), c.from != c.to);
    }

    // Speed 6 before the catch gives angle 1 left of the centre.
    Game_Stats.level = 0;
    Ball.SetPosition(0.0f, 0.0f);
    Ball.Step(10.0f);
    Ball.SetPosition(-2.0f, 6.5f);
    Ball.Step(1.0f);
    ASSERT_EQ(std::make_pair(Ball.GetDirection(), Ball.GetAngle()), std::make_pair(1, 1));
    // s = 6.6: a positive angle slows the leftward travel in direction 1 ...
    EXPECT_NEAR(Ball.GetX(), -2.0f - 0.6f - 6.6f + 1.0f, 1e-4);
    EXPECT_NEAR(Ball.GetZ(), 6.5f - 0.6f - 6.6f - 1.0f, 1e-4);
    // ... and speeds it up in direction 3, after the far wall.
    Ball.SetPosition(0.0f, -16.5f);
    Ball.Step(1.0f);
    ASSERT_EQ(Ball.GetDirection(), 3);
    EXPECT_NEAR(Ball.GetX(), -0.6f - 7.2f - 1.0f, 1e-4);
    EXPECT_NEAR(Ball.GetZ(), -16.5f + 0.6f + 7.2f + 1.0f, 1e-4);
}

TEST_F(BallTest, ServeFromThePaddleAndTheModelOneFrameBehind) {
    Ball.SetPosition(3.0f, -5.0f);
    Ball.Step(2.0f);  // some speed
    ASSERT_GT(Ball.GetSpeed(), 1.0f);
    Game_Stats.ballStartX = 2.0f;
    Game_Stats.ballStartZ = 7.0f;
    const float beforeX = Ball.GetX(), beforeZ = Ball.GetZ();
    const S_BallDraw drawn = Ball.Step(0.0f);
    EXPECT_EQ(std::make_pair(drawn.x, drawn.z), std::make_pair(beforeX, beforeZ))
        << "the model is drawn where the ball was before the serve";
    EXPECT_EQ(std::make_pair(Ball.GetX(), Ball.GetZ()), std::make_pair(2.0f, 6.0f)) << "one unit before the paddle";
    EXPECT_EQ(Ball.GetSpeed(), 0.0f);
    EXPECT_EQ(Game_Stats.ballStartZ, 0.0f) << "served once";

    const S_BallDraw next = Ball.Step(0.5f);
    EXPECT_EQ(std::make_pair(next.x, next.z), std::make_pair(2.0f, 6.0f));
    EXPECT_NE(Ball.GetZ(), 6.0f);
}

}  // namespace
