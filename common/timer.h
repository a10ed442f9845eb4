// Frame timing on the platform's microsecond clock, and the smoothed frame
// rate shown by "showfps".
#pragma once

#include "common/clock.h"

class CTimer {
public:
    void start();  // marks now as the start of the first frame
    // Once a frame: the time since the last mark becomes get_ticks and fps,
    // and the mark moves to the end of this call.
    void update();
    float get_ticks() const;  // last frame in seconds
    int fps() const;          // last frame in milliseconds, truncated (a duration, not a rate)

private:
    UnsignedWide previous{0, 0};
    UnsignedWide current{0, 0};
    double seconds = 0.0;
    double milliseconds = 0.0;
};

extern CTimer Timer;

// The two halves as one count of microseconds; exact below 2^53 (285 years).
double ConvertMicrosecondsToDouble(const UnsignedWide* value);
double myGetTicks();  // the clock in milliseconds
int GetFPS();         // exponential moving average, 0.2 on the newest frame
void ResetFPS();      // back to the state before the first GetFPS call
void Timer_Reset();   // a timer never started, the real clock, and ResetFPS
