// The boundaries between the parts of a drawn frame, in the order a frame
// passes them. The frame and the game mark each boundary as they reach it;
// nothing listens unless g_FrameMark is set, as the benchmark sets it to
// finish and time each part.
#pragma once

enum class E_FramePart { Start3d, Field, Sky, Bricks, PaddleBall, Blur, Pass2d, Swap, End };
constexpr int FRAME_PARTS = int(E_FramePart::End);  // End closes the swap: it begins no part

extern void (*g_FrameMark)(E_FramePart part);

// The part that begins here; a boundary the frame does not reach this time
// (the sky and the bricks while a menu shows, the game before loading ends)
// is not marked, and its time belongs to the part before it.
inline void FrameMark(E_FramePart part) {
    if (g_FrameMark)
        g_FrameMark(part);
}
void FrameMark_Reset();  // nothing listens
