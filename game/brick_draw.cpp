// Drawing one brick's frame: the record of CBrick::Update, drawn inside the
// bricks' blending state.
#include "common/timer.h"
#include "game/brick.h"
#include "render/brick_state.h"
#include "scene/objects.h"

namespace {

S_Pos At(float x, float y, float z) {
    S_Pos p;
    p.x = x;
    p.y = y;
    p.z = z;
    return p;
}

S_Pos White(float alpha) {
    S_Pos c;
    c.red = c.green = c.blue = 1.0f;
    c.alpha = alpha;
    return c;
}

const S_Pos SCALE = At(0.07f, 0.02f, 0.02f);

} // namespace

void CBrick::Draw() {
    // The state is set before the rules run and undone after the drawing,
    // as one step around the whole brick.
    BrickState_Begin();
    const S_BrickFrame frame = Update(Timer.get_ticks());
    if (frame.fading) {
        // The two copies drift apart sideways as they fade out.
        const S_Pos colour = White(0.7f - frame.fade);
        ObjectDraw(frame.model, At(x + frame.fade, 0.0f, z), S_Pos(), SCALE, colour);
        ObjectDraw(frame.model, At(x - frame.fade, 0.0f, z), S_Pos(), SCALE, colour);
    }
    if (frame.whole)
        ObjectDraw(frame.model, At(x, 0.0f, z), S_Pos(), SCALE, White(frame.alpha));
    BrickState_End();
}
