// The platform's microsecond clock: a 64-bit count since an arbitrary start,
// delivered as two 32-bit halves. On Linux it reads CLOCK_MONOTONIC.
#pragma once

#include <cstdint>

struct UnsignedWide {
    uint32_t lo;
    uint32_t hi;
};

// The current count, from the monotonic clock or the source a test installed.
void Microseconds(UnsignedWide* out);

// Tests replace the clock to drive the timer by hand; nullptr restores it.
using MicrosecondsSource = void (*)(UnsignedWide*);
void SetMicrosecondsSource(MicrosecondsSource source);
