#include "common/timer.h"

#include <cmath>

#include "common/log.h"

CTimer Timer;

void Timer_Reset() {
    Timer = CTimer();
    ResetFPS();
    SetMicrosecondsSource(nullptr);
}

double ConvertMicrosecondsToDouble(const UnsignedWide* value) {
    return double(value->hi) * 4294967296.0 + double(value->lo);
}

double myGetTicks() {
    UnsignedWide now;
    Microseconds(&now);
    return ConvertMicrosecondsToDouble(&now) / 1000.0;
}

void CTimer::start() { Microseconds(&previous); }

void CTimer::update() {
    Microseconds(&current);
    double elapsed = ConvertMicrosecondsToDouble(&current) - ConvertMicrosecondsToDouble(&previous);
    seconds = elapsed * 0.000001;
    milliseconds = elapsed / 1000.0;
    // A fresh reading, so the update's own time is not billed to the next frame.
    Microseconds(&previous);
}

float CTimer::get_ticks() const { return float(seconds); }

int CTimer::fps() const { return int(milliseconds); }

namespace {
struct FpsMeter {
    bool setUp = false;
    double framesPerSecond = 60.0;
    double secondsPerFrame = 1.0 / 60.0;
    double msPerFrame = 1000.0 / 60.0;
    double frameStart = 0.0;
};
FpsMeter g_fps;
}  // namespace

void ResetFPS() { g_fps = FpsMeter(); }

int GetFPS() {
    if (!g_fps.setUp) {
        g_fps.setUp = true;
        g_fps.framesPerSecond = 60.0;
        g_fps.msPerFrame = 1000.0 / 60.0;
        g_fps.frameStart = myGetTicks();
    }
    g_fps.msPerFrame = 0.8 * g_fps.msPerFrame + 0.2 * (myGetTicks() - g_fps.frameStart);
    g_fps.frameStart = myGetTicks();
    g_fps.secondsPerFrame = g_fps.msPerFrame / 1000.0;
    // A zero-length average (two readings in the same microsecond) has no rate.
    if (!(g_fps.msPerFrame > 0.0) || !std::isfinite(g_fps.msPerFrame)) {
        Log(" -- WARNING: frame imbalanced\n");
        return 1000;
    }
    g_fps.framesPerSecond = 1000.0 / g_fps.msPerFrame;
    if (g_fps.framesPerSecond > 2147483647.0) {
        Log(" -- WARNING: frame imbalanced\n");
        return 1000;
    }
    return int(g_fps.framesPerSecond);
}
