// The GL state around the console's background: the drop-down console
// blends its picture by the con_alpha colour over the game behind it.
#pragma once

// Saves the model-view matrix; with blend, source-alpha blending and an
// alpha test that drops fully transparent texels (depth test less-or-equal);
// with textured, 2D texturing.
void ConsoleBlend_Begin(bool blend, bool textured);
// Turns off what Begin turned on and restores the matrix. The depth function
// stays less-or-equal.
void ConsoleBlend_End(bool blend, bool textured);
