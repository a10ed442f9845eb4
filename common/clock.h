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

// The monotonic clock itself, in microseconds, whatever source is installed:
// a sleep lasts real time even while a test or the benchmark drives the
// frame timer by hand.
uint64_t MonotonicMicroseconds();
// Sleeps until MonotonicMicroseconds reaches `deadline`; returns at once when
// it already has. A signal does not cut the sleep short.
void SleepUntilMicroseconds(uint64_t deadline);
