// Drawing a level: the field's frame, then every brick's frame in table order
// (the first brick the ball touches takes the hit).
#include "game/brick.h"
#include "game/world.h"
#include "scene/objects.h"

void World_DrawField() {
    S_Pos scale;
    scale.x = 1.5f;
    scale.y = 1.0f;
    scale.z = 2.7f;
    S_Pos white;
    white.red = white.green = white.blue = white.alpha = 1.0f;
    ObjectDraw("barr.solid", S_Pos(), S_Pos(), scale, white);
}

void World_DrawBricks() {
    for (int i = 0; i < CBrick::Count() && i < MAX_BRICKS; i++) {
        if (Brick[i])  // cleaned up but not yet reset: nothing to draw
            Brick[i]->Draw();
    }
}

void World_Draw() {
    World_DrawField();
    World_DrawBricks();
}
