// The ball's rules: one frame of flight. Everything here is the game's own
// arithmetic and is kept exactly as the game has always played, odd sums
// included; the drawing half is in ball_draw.cpp.
#include "game/ball.h"

#include <cstdlib>

#include "common/gamestats.h"

CBall Ball;

namespace {

// Recomputed at the start of every move from the level number; kept as one
// value for the whole program like the speed it adds to.
float g_LevelSpeed = 0.0f;

constexpr float WALL_X = 8.0f;        // side walls at x = -8 and x = 8
constexpr float FAR_WALL_Z = -16.0f;  // far wall
constexpr float LOSS_Z = 16.0f;       // past this the ball is lost
constexpr float CATCH_NEAR_Z = 8.0f;  // the catch box ends here, whatever the paddle's z

// Each step of the move is added on its own, in double precision, and stored
// back into the float, so rounding follows the order of the sums below.
void Add(float& value, double step) { value = static_cast<float>(value + step); }

// One frame's move in each of the four directions. A centre hit trades the
// sideways speed for 2s and pushes the ball one unit per second back along z
// against its travel. Up-left, a positive angle slows the leftward travel and
// down-left it speeds it up: the signs are the game's own.
struct S_Flight {
    float& x;
    float& z;
    double t;     // frame time
    double s;     // the ball's speed
    double h;     // the level's speed
    double a;     // the paddle's angle
    bool centre;  // the last paddle hit was on its centre

    void Move(int direction) {
        switch (direction) {
        case 0:
            UpRight();
            break;
        case 1:
            UpLeft();
            break;
        case 2:
            DownRight();
            break;
        case 3:
            DownLeft();
            break;
        default:
            break;  // any other direction leaves the ball where it is
        }
    }

    // Direction 0: away from the paddle, to the right.
    void UpRight() {
        Add(x, 0.6 * t);
        Add(z, -0.6 * t);
        if (!centre)
            Add(x, (s + h) * t);
        Add(z, -(s + h) * t);
        if (!centre) {
            Add(x, a * t);
            Add(z, -a * t);
        } else {
            Add(x, 2.0 * s * t);
            Add(z, 1.0 * t);
        }
    }

    // Direction 1: away from the paddle, to the left.
    void UpLeft() {
        Add(x, -0.6 * t);
        Add(z, -0.6 * t);
        if (!centre)
            Add(x, -(s + h) * t);
        Add(z, -(s + h) * t);
        if (!centre) {
            Add(x, a * t);
            Add(z, -a * t);
        } else {
            Add(x, -2.0 * s * t);
            Add(z, 1.0 * t);
        }
    }

    // Direction 2: toward the paddle, to the right.
    void DownRight() {
        if (!centre)
            Add(x, 0.6 * t);
        Add(z, 0.6 * t);
        if (!centre)
            Add(x, (s + h) * t);
        Add(z, (s + h) * t);
        if (!centre) {
            Add(x, a * t);
            Add(z, a * t);
        } else {
            Add(x, 2.0 * s * t);
            Add(z, -1.0 * t);
        }
    }

    // Direction 3: toward the paddle, to the left.
    void DownLeft() {
        if (!centre)
            Add(x, -0.6 * t);
        Add(z, 0.6 * t);
        if (!centre)
            Add(x, -(s + h) * t);
        Add(z, (s + h) * t);
        if (!centre) {
            Add(x, -a * t);
            Add(z, a * t);
        } else {
            Add(x, -2.0 * s * t);
            Add(z, -1.0 * t);
        }
    }
};

// More than 10000 points towards the next life give one.
void AwardExtraLife() {
    if (Game_Stats.extraLifePoints > 10000) {
        Game_Stats.lives++;
        Game_Stats.extraLifePoints = 0;
    }
}

}  // namespace

CBall::CBall() : direction(rand() % 2) {}

void CBall::ChangeDirection(int d) {
    direction = d;
    available = true;
}

void CBall::SetPosition(float newX, float newZ) {
    x = newX;
    z = newZ;
}

S_BallDraw CBall::Step(float t) {
    // The model is drawn where the ball was before this frame.
    const S_BallDraw drawn{x, z};
    Serve();
    LoseBehindPaddle();
    CatchOnPaddle();
    BounceOffWalls();
    if (onPaddle)
        BounceOffPaddle();
    Fly(t);
    AwardExtraLife();
    // Brick hits come later in the frame, when the bricks are drawn.
    return drawn;
}

// The driver left the resting position in ball start.
void CBall::Serve() {
    if (Game_Stats.ballStartZ != 0.0f) {
        x = Game_Stats.ballStartX;
        z = Game_Stats.ballStartZ - 1.0f;
        Game_Stats.ballStartZ = 0.0f;
        speed = 0.0f;
    }
}

// The rest of the frame still runs after a loss: the ball keeps moving this
// frame and is put back on the paddle from the next.
void CBall::LoseBehindPaddle() {
    if (z > LOSS_Z) {
        available = true;
        Game_Stats.lives--;
        speed = 0.0f;
        direction = rand() % 2;
        Game_Stats.ballLaunched = false;
    }
}

void CBall::CatchOnPaddle() {
    const float px = Game_Stats.paddleX;
    const float pz = Game_Stats.paddleZ;
    if (px - 3.0f < x && x < px + 3.0f && z > pz - 1.0f && z < CATCH_NEAR_Z) {
        onPaddle = true;
        available = true;
    } else {
        onPaddle = false;
    }
}

// A ball exactly on a wall does not turn.
void CBall::BounceOffWalls() {
    if (x > WALL_X) {
        if (direction == 0)
            ChangeDirection(1);
        if (direction == 2)
            ChangeDirection(3);
    }
    if (x < -WALL_X) {
        if (direction == 3)
            ChangeDirection(2);
        if (direction == 1)
            ChangeDirection(0);
    }
    if (z < FAR_WALL_Z) {
        if (direction == 1)
            ChangeDirection(3);
        if (direction == 0)
            ChangeDirection(2);
    }
}

// Every frame the ball stays in the catch box. The centre band is compared in
// double precision (0.2 has no exact float).
void CBall::BounceOffPaddle() {
    const float px = Game_Stats.paddleX;
    const double dx = x;
    const int steer = static_cast<int>(0.25 * speed);  // truncated toward zero
    if (x <= px - 3.0f) {
        angle = 0;
        ChangeDirection(1);
    } else if (x < px - 1.0f) {
        angle = steer;
        ChangeDirection(1);
    } else if (dx <= px - 0.2) {
        ChangeDirection(1);
    } else if (dx < px + 0.2) {
        angle = -1;
        ChangeDirection(0);
    } else if (x <= px + 1.0f) {
        ChangeDirection(0);
    } else if (x < px + 3.0f) {
        angle = steer;
        ChangeDirection(0);
    } else {
        angle = 0;
        ChangeDirection(0);
    }
}

void CBall::Fly(float t) {
    // The second round is much faster.
    g_LevelSpeed = static_cast<float>(Game_Stats.level * (Game_Stats.secondRound ? 5.68 : 1.8));
    // The ball speeds up the longer it flies.
    speed = static_cast<float>(speed + 0.6 * t);
    S_Flight flight{x, z, t, speed, g_LevelSpeed, double(angle), angle == -1};
    flight.Move(direction);
}

void Ball_Reset() {
    Ball = CBall();
    g_LevelSpeed = 0.0f;
}
