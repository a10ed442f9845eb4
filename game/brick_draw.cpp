// Drawing one brick's frame: the record of CBrick::Update, drawn inside the
// bricks' blending state.
#include "common/timer.h"
#include "game/brick.h"
#include "game/model_draw.h"
#include "render/brick_state.h"

namespace {

constexpr S_ModelSize SIZE{0.07f, 0.02f, 0.02f};

}  // namespace

void CBrick::Draw() {
    // The state is set before the rules run and undone after the drawing,
    // as one step around the whole brick.
    BrickState_Begin();
    const S_BrickFrame frame = Update(Timer.get_ticks());
    if (frame.fading) {
        // The two copies drift apart sideways as they fade out.
        const float alpha = 0.7f - frame.fade;
        Model_Draw(frame.model, x + frame.fade, 0.0f, z, SIZE, alpha);
        Model_Draw(frame.model, x - frame.fade, 0.0f, z, SIZE, alpha);
    }
    if (frame.whole)
        Model_Draw(frame.model, x, 0.0f, z, SIZE, frame.alpha);
    BrickState_End();
}
