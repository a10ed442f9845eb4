// Text conversions, the byte order and the frame timer.
#include <gtest/gtest.h>

#include "common/timer.h"
#include "common/utils.h"
#include "test_support.h"

TEST(Utils, ConversionsFollowStreamExtraction) {
    const std::pair<const char*, int> ints[] = {{" 42", 42}, {"-7", -7}, {"12abc", 12}, {"3.7", 3},
                                                {"1e3", 1},  {"", 0},    {"abc", 0},    {"800\r", 800}};
    for (const auto& [text, value] : ints)
        EXPECT_EQ(StringToInt(text), value) << "'" << text << "'";
    const std::pair<const char*, float> floats[] = {
        {"2.5", 2.5f}, {".5", 0.5f}, {"0.3x", 0.3f}, {"1e3", 1000.0f}, {" x", 0.0f}};
    for (const auto& [text, value] : floats)
        EXPECT_FLOAT_EQ(StringToFloat(text), value) << "'" << text << "'";
}

TEST(Utils, TheBuildMachinesAreLittleEndianSoTheMusicIsDecodedAsSuch) {
    InitEndian();
    EXPECT_FALSE(BigEndianSystem);
}

// The shell's reset restores the real clock and a fresh frame-rate meter.
using Timing = ShellTest;

TEST_F(Timing, FrameTimeCrossesTheLowWordBoundary) {
    DrivenClock_Start(0xFFFFF000ull);  // 4096 us below the 32-bit wrap
    CTimer timer;
    timer.start();
    DrivenClock_Advance(16900);
    timer.update();
    EXPECT_NEAR(timer.get_ticks(), 0.0169f, 1e-6);
    EXPECT_EQ(timer.fps(), 16) << "a duration in whole milliseconds";
    DrivenClock_Advance(2500000);
    timer.update();
    EXPECT_NEAR(timer.get_ticks(), 2.5f, 1e-6);
    EXPECT_DOUBLE_EQ(myGetTicks(), double(0xFFFFF000ull + 16900 + 2500000) / 1000.0);
}

TEST_F(Timing, FrameRateIsAMovingAverageThatALongPauseDragsDown) {
    DrivenClock_Start();
    int fps = 0;
    for (int i = 0; i < 200; i++) {
        fps = GetFPS();
        DrivenClock_Advance(16667);
    }
    EXPECT_NEAR(fps, 60, 1);
    DrivenClock_Advance(100000 - 16667);  // one slow frame of 100 ms
    EXPECT_NEAR(GetFPS(), 30, 1);         // 0.8 * 16.67 + 0.2 * 100 = 33.3 ms
    DrivenClock_Advance(16667);
    EXPECT_GT(GetFPS(), 30) << "recovers over the following frames";

    DrivenClock_Advance(10 * 1000000);  // the meter was not shown for ten seconds
    EXPECT_LT(GetFPS(), 1);
    for (int i = 0; i < 40; i++) {
        DrivenClock_Advance(10000);
        fps = GetFPS();
    }
    EXPECT_GT(fps, 90);
}
