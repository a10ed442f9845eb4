#include "game/model_draw.h"

#include "scene/objects.h"

namespace {

S_Pos At(float x, float y, float z) {
    S_Pos p;
    p.x = x;
    p.y = y;
    p.z = z;
    return p;
}

}  // namespace

void Model_Draw(const std::string& model, float x, float y, float z, S_ModelSize size, float alpha) {
    S_Pos colour;
    colour.red = colour.green = colour.blue = 1.0f;
    colour.alpha = alpha;
    ObjectDraw(model, At(x, y, z), S_Pos(), At(size.x, size.y, size.z), colour);
}
