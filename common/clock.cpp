#include "common/clock.h"

#include <ctime>

namespace {
void MonotonicMicroseconds(UnsignedWide* out) {
    timespec ts;
    clock_gettime(CLOCK_MONOTONIC, &ts);
    uint64_t us = uint64_t(ts.tv_sec) * 1000000u + uint64_t(ts.tv_nsec) / 1000u;
    out->lo = uint32_t(us & 0xFFFFFFFFu);
    out->hi = uint32_t(us >> 32);
}

MicrosecondsSource g_source = MonotonicMicroseconds;
}  // namespace

void Microseconds(UnsignedWide* out) { g_source(out); }

void SetMicrosecondsSource(MicrosecondsSource source) { g_source = source ? source : MonotonicMicroseconds; }
