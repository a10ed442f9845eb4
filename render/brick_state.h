// The GL state around the bricks of one frame: see-through bricks and the
// fading copies of broken ones blend by their alpha over the field.
#pragma once

// Depth test less-or-equal, source-alpha blending and an alpha test that
// drops fully transparent fragments; blending and the alpha test on.
void BrickState_Begin();
// Blending and the alpha test off again; the depth function stays less-or-equal.
void BrickState_End();
