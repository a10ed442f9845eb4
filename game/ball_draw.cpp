// Drawing the ball: the model and, while it flies, its particle trail.
#include "common/timer.h"
#include "game/ball.h"
#include "game/model_draw.h"
#include "particles/particles.h"

namespace {

const char* const TRAIL[] = {"particles1.txt", "particles2.txt", "particles3.txt", "particles4.txt"};

constexpr S_ModelSize SIZE{0.3f, 0.3f, 0.3f};

}  // namespace

void CBall::Draw(float drawX, float drawY, float drawZ) { Model_Draw("ball.solid", drawX, drawY, drawZ, SIZE, 1.0f); }

void CBall::Bounce() {
    const S_BallDraw drawn = Step(Timer.get_ticks());
    // The model stays where the ball was before the move while the trail is
    // already at the new position: the one-frame lag is part of the look.
    Draw(drawn.x, 0.0f, drawn.z);
    for (const char* effect : TRAIL)
        ParticleDraw(effect, x, 0.0f, z, true);
}
