// Screen-aligned rectangles for menus, widgets, the cursor, the console
// background, the blur's captured picture and the loading screen. Called in
// the 2D mode of EnableGL2d: pixels, origin top-left, y growing downwards.
// Every rectangle shows its picture upright: the top edge takes the texture
// row t = 1, which is the top row of a bottom-up Targa file.
#pragma once

// Untextured, in the current colour; leaves texturing off.
void DisplayBlank(long x, long y, long w, long h);
// Opaque; texture 0 stands for the fallback texture.
void DisplayImage(long x, long y, long w, long h, unsigned long texture);
// Blended by the picture's alpha; fully transparent texels are not drawn.
// The current colour tints the picture.
void DisplayImageBlend(long x, long y, long w, long h, unsigned long texture);
// The whole screen in black; the colour is left black.
void DrawBlackBackground();
// The colour (and tint) of what is drawn next.
void SetDrawColor(float red, float green, float blue, float alpha);
