#include "common/clock.h"

#include <cerrno>
#include <ctime>

uint64_t MonotonicMicroseconds() {
    timespec ts;
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return uint64_t(ts.tv_sec) * 1000000u + uint64_t(ts.tv_nsec) / 1000u;
}

namespace {
void MonotonicSource(UnsignedWide* out) {
    const uint64_t us = MonotonicMicroseconds();
    out->lo = uint32_t(us & 0xFFFFFFFFu);
    out->hi = uint32_t(us >> 32);
}

MicrosecondsSource g_source = MonotonicSource;
}  // namespace

void Microseconds(UnsignedWide* out) { g_source(out); }

void SetMicrosecondsSource(MicrosecondsSource source) { g_source = source ? source : MonotonicSource; }

void SleepUntilMicroseconds(uint64_t deadline) {
    timespec until;
    until.tv_sec = time_t(deadline / 1000000u);
    until.tv_nsec = long(deadline % 1000000u) * 1000;
    // An absolute deadline: a sleep interrupted and resumed still ends on
    // time, and being woken late never delays the frame after.
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}
