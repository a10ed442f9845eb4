// The quad of one particle: a 1 x 1 textured square in the x-y plane of the
// current modelview, centred on the particle. No billboarding: a caller that
// wants camera-facing particles turns the matrix itself.
#pragma once

// Pushes the matrix, switches on texturing, less-or-equal depth, alpha test
// (> 0) and the source-alpha blend function (blending itself stays as the
// caller left it), binds the texture with nearest filters and draws the
// square in colour (r, g, b, alpha) as a triangle strip. The matrix stays
// pushed and the state set until EndParticleQuad.
void DrawParticleQuad(unsigned int texture, float r, float g, float b, float alpha, float x, float y, float z);
// Pops the matrix; texturing, blending and alpha test off.
void EndParticleQuad();

// A layer of particles in the 2D pass: pushes the matrix, scales it by
// `pixelsPerUnit` and turns blending on; returns the depth to come back to.
int BeginParticleLayer(float pixelsPerUnit);
// Pops back to `depth` (an effect that ended early leaves its own push
// behind: without this the stack would overflow within seconds) and leaves
// texturing, blending and alpha test off.
void EndParticleLayer(int depth);
