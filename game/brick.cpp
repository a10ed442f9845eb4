// The brick field's rules: the touch box, the turn of the ball, scoring and
// fading. Drawing is in brick_draw.cpp.
#include "game/brick.h"

#include <algorithm>
#include <climits>

#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/utils.h"
#include "game/ball.h"

int CBrick::m_nNumBricks = 0;
CBrick* Brick[MAX_BRICKS] = {};

namespace {

const char* const MODELS[] = {"box.solid", "box2.solid", "box3.solid", "box4.solid"};

constexpr float FADE_END = 10.0f;

const char* ModelFor(int hitPoints) {
    // Hit points stay 0 to 3; a level file with another kind gets the plain model.
    return hitPoints >= 0 && hitPoints <= 3 ? MODELS[hitPoints] : MODELS[0];
}

// One test of the hit response: only a ball going `from` turns.
void Turn(int from, int to) {
    if (Ball.GetDirection() == from)
        Ball.ChangeDirection(to);
}

// Strict on every side.
bool BallInTouchBox(float x, float z) {
    const float bx = Ball.GetX();
    const float bz = Ball.GetZ();
    return bx > x - 3.0f && bx < x + 3.0f && bz > z - 4.0f && bz < z + 4.0f;
}

// The tests are redundant but run in this order, each on the direction the
// one before left: a ball at or beyond the far band leaves away from the
// paddle with its x sense reversed, anywhere else it leaves toward the paddle
// keeping its x sense.
void TurnBall(float z) {
    const float bz = Ball.GetZ();
    Turn(0, 2);
    Turn(1, 3);
    Turn(0, 1);
    Turn(1, 0);
    if (bz > z - 2.0f && bz <= z + 2.0f) {
        Turn(0, 1);
        Turn(1, 0);
    }
    if (bz <= z - 2.0f) {
        Turn(2, 1);
        Turn(3, 0);
    }
    if (bz >= z + 2.0f) {
        Turn(0, 2);
        Turn(1, 3);
    }
}

// Scored on the hit points before the hit: 50, 100, 150 or 200. A damaged
// level can give a brick millions of hit points: the sums stop at the largest
// int instead of overflowing.
void Score(int hitPoints) {
    const long long points = hitPoints <= 0 ? 50 : 50LL * (hitPoints + 1LL);
    const auto add = [points](int total) { return int(std::min<long long>(INT_MAX, total + points)); };
    Game_Stats.score = add(Game_Stats.score);
    Game_Stats.extraLifePoints = add(Game_Stats.extraLifePoints);
}

}  // namespace

CBrick::CBrick(float brickX, float brickZ, int type)
    : x(brickX), z(brickZ), hitPoints(Game_Stats.secondRound && type == 0 ? 3 : type) {
    m_nNumBricks++;
}

S_BrickFrame CBrick::Update(float t) {
    touched = BallInTouchBox(x, z);
    S_BrickFrame frame = FadeOut(t);
    if (!broken && Ball.IsAvailable() && touched)
        TakeHit();
    // Still whole after the hit: drawn by its (new) hit points.
    if (!broken) {
        frame.whole = true;
        frame.model = ModelFor(hitPoints);
    }
    return frame;
}

// A broken brick fades; an unbroken one is see-through under the blur.
S_BrickFrame CBrick::FadeOut(float t) {
    S_BrickFrame frame;
    if (broken) {
        if (fade < FADE_END) {
            fade = static_cast<float>(fade + 0.4 * t);
            frame.fading = true;
            frame.fade = fade;
            frame.model = ModelFor(hitPoints);
        }
    } else {
        frame.alpha = Cvar_GetInt(r_blur) != 0 ? 0.7f : 1.0f;
    }
    return frame;
}

// A kind outside 0 to 3 from a damaged level file still breaks in the end: a
// negative one like a plain brick, a larger one a hit point at a time.
void CBrick::TakeHit() {
    TurnBall(z);
    Score(hitPoints);
    if (hitPoints <= 0)
        broken = true;
    else
        hitPoints--;

    // No second brick until the ball has turned off a wall or the paddle.
    Ball.Available(false);
}

bool Level_Finished() {
    if (CBrick::m_nNumBricks < 1)
        return true;
    for (int i = 0; i < CBrick::m_nNumBricks && i < MAX_BRICKS; i++) {
        if (Brick[i] && !Brick[i]->Alive())
            return false;
    }
    return true;
}

void Brick_Reset() {
    for (CBrick*& brick : Brick) {
        delete brick;
        brick = nullptr;
    }
    CBrick::Reset();
}
