// Drawing the ball: the model and, while it flies, its particle trail.
#include "common/timer.h"
#include "game/ball.h"
#include "particles/particles.h"
#include "scene/objects.h"

namespace {

const char* const TRAIL[] = {"particles1.txt", "particles2.txt", "particles3.txt", "particles4.txt"};

S_Pos At(float x, float y, float z) {
    S_Pos p;
    p.x = x;
    p.y = y;
    p.z = z;
    return p;
}

S_Pos White() {
    S_Pos c;
    c.red = c.green = c.blue = c.alpha = 1.0f;
    return c;
}

} // namespace

void CBall::Draw(float drawX, float drawY, float drawZ) {
    ObjectDraw("ball.solid", At(drawX, drawY, drawZ), S_Pos(), At(0.3f, 0.3f, 0.3f), White());
}

void CBall::Bounce() {
    const S_BallDraw drawn = Step(Timer.get_ticks());
    // The model stays where the ball was before the move while the trail is
    // already at the new position: the one-frame lag is part of the look.
    Draw(drawn.x, 0.0f, drawn.z);
    for (const char* effect : TRAIL)
        ParticleDraw(effect, x, 0.0f, z, true);
}
