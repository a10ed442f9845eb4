// The zoom blur's fast path, for drivers with shader objects.
//
// DrawBlur's copies add up, per pixel, to a weighted sum of samples of one
// texture: copy i samples the scene at 0.5 + (p - 0.5) * (1 + 2 i spread)
// with weight alpha_i * texel alpha, alpha_i falling from 0.1 by 0.1 / times.
// Blending 25 full-screen quads makes a software rasteriser touch every pixel
// 25 times; here the same sum is computed by fragment programs instead:
//
//   1. the zooming copies (1 to times - 1) summed in one pass, every sample of
//      a pixel in one fragment, at a reduced resolution into a texture of
//      their own (their sum smears the picture along lines from the centre,
//      so little detail is lost);
//   2. one full-resolution pass that draws the picture with copy 0 (the
//      unzoomed scene, which is sharp) and the reduced sum, scaled up.
//
// What reaches the screen is what the copies give, within a level or so on
// average: every share is rounded as the copies' blending rounds it, and the
// sum saturates at white the same way. GL state afterwards is what DrawBlur
// leaves.
//
// Only the framebuffer capture path uses it; the copy path keeps the copies.
// A driver that refuses the programs or the reduced target is logged once
// and the copies are drawn instead.
#pragma once

// The reduced target is this many times smaller in each direction. At 4,
// on a software rasteriser, the summing pass costs less than the
// full-resolution pass, and a play frame stays within 0.6 levels of the
// copies on average (PSNR 46 dB); at 2 it is within 0.4 levels, but summing
// costs three times as much.
constexpr int BLUR_SHADER_REDUCTION = 4;

// What DrawFBO draws: `scene` (a screen-sized texture) over the whole screen
// as DisplayImage draws it, then `times` copies, each `spread` larger, the
// way DrawBlur adds them. False when the fast path is switched off or cannot
// be had: nothing was drawn and the caller draws the picture and the copies.
bool BlurShader_DrawScene(unsigned int scene, int times, float spread);

// On by default. Off makes DrawFBO draw the copies even where the programs
// exist: the benchmark and the tests measure one against the other.
void BlurShader_Enable(bool on);
bool BlurShader_Enabled();
// The reduction of the summing target, 1 to 8 (outside that, the nearest):
// the benchmark weighs speed against likeness with it.
void BlurShader_SetReduction(int factor);
int BlurShader_Reduction();
// True once the programs and the reduced target are built and usable.
bool BlurShader_Ready();

// Deletes the programs and the reduced target (they follow the screen size);
// the next draw builds them again.
void BlurShader_Destroy();
// Start-up state, without touching OpenGL: enabled, the default reduction,
// nothing built, no failure remembered.
void BlurShader_Reset();
