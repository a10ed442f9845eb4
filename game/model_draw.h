// Drawing a model of the field the way the ball and the bricks draw theirs:
// unrotated and white, opaque or see-through.
#pragma once

#include <string>

struct S_ModelSize {
    float x, y, z;  // scale along each axis
};

// `model` at (x, y, z), scaled by `size`, white at `alpha`.
void Model_Draw(const std::string& model, float x, float y, float z, S_ModelSize size, float alpha);
