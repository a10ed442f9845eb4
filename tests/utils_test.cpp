// Text conversions, byte order and the frame timer.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "app/timer.h"
#include "app/utils.h"
#include "platform/clock.h"
#include "test_support.h"

TEST(Utils, ConversionsFollowStreamExtraction) {
    EXPECT_EQ(StringToInt(" 42"), 42);
    EXPECT_EQ(StringToInt("-7"), -7);
    EXPECT_EQ(StringToInt("12abc"), 12);
    EXPECT_EQ(StringToInt("3.7"), 3);
    EXPECT_EQ(StringToInt("1e3"), 1);
    EXPECT_EQ(StringToInt(""), 0);
    EXPECT_EQ(StringToInt("abc"), 0);
    EXPECT_EQ(StringToInt("800\r"), 800);

    EXPECT_FLOAT_EQ(StringToFloat("2.5"), 2.5f);
    EXPECT_FLOAT_EQ(StringToFloat(".5"), 0.5f);
    EXPECT_FLOAT_EQ(StringToFloat("0.3x"), 0.3f);
    EXPECT_FLOAT_EQ(StringToFloat("1e3"), 1000.0f);
    EXPECT_FLOAT_EQ(StringToFloat(" x"), 0.0f);

    EXPECT_EQ(StringToChar("  q!"), 'q');
    EXPECT_EQ(StringToChar("   "), '\0');
}

TEST(Utils, SwapsAndByteOrder) {
    EXPECT_EQ(uint32_t(LongSwap(int32_t(0x11223344))), 0x44332211u);
    EXPECT_EQ(uint32_t(LongSwap(int32_t(0x80000001u))), 0x01000080u);
    EXPECT_EQ(uint16_t(ShortSwap(int16_t(0x1122))), 0x2211u);
    uint32_t bits;
    float swapped = FloatSwap(1.0f);  // 0x3F800000 reversed
    std::memcpy(&bits, &swapped, 4);
    EXPECT_EQ(bits, 0x0000803Fu);

    InitEndian();
    EXPECT_FALSE(BigEndianSystem);  // the build machines are little-endian
    EXPECT_EQ(uint32_t(BigLong(0x11223344)), 0x44332211u);
    EXPECT_EQ(LittleLong(0x11223344), 0x11223344);
    EXPECT_NE(BigFloat(2.0f), 2.0f) << "the float pair ignores the machine's order";
}

namespace {
uint64_t g_fakeNow = 0;
void FakeClock(UnsignedWide* out) {
    out->lo = uint32_t(g_fakeNow & 0xFFFFFFFFu);
    out->hi = uint32_t(g_fakeNow >> 32);
}

class Timing : public ::testing::Test {
protected:
    void SetUp() override {
        ResetShellState();
        SetMicrosecondsSource(FakeClock);
        ResetFPS();
    }
    void TearDown() override {
        SetMicrosecondsSource(nullptr);
        ResetFPS();
        ResetShellState();
    }
};
} // namespace

TEST_F(Timing, FrameTimeCrossesTheLowWordBoundary) {
    g_fakeNow = 0xFFFFF000ull;  // 4096 us below the 32-bit wrap
    CTimer timer;
    timer.start();
    g_fakeNow += 16900;
    timer.update();
    EXPECT_NEAR(timer.get_ticks(), 0.0169f, 1e-6);
    EXPECT_EQ(timer.fps(), 16) << "a duration in whole milliseconds";
    g_fakeNow += 2500000;
    timer.update();
    EXPECT_NEAR(timer.get_ticks(), 2.5f, 1e-6);
    UnsignedWide wide{5, 1};
    EXPECT_DOUBLE_EQ(ConvertMicrosecondsToDouble(&wide), 4294967301.0);
    EXPECT_DOUBLE_EQ(myGetTicks(), double(g_fakeNow) / 1000.0);
}

TEST_F(Timing, FrameRateIsAMovingAverage) {
    g_fakeNow = 1000000;
    int fps = 0;
    for (int i = 0; i < 200; i++) {
        fps = GetFPS();
        g_fakeNow += 16667;
    }
    EXPECT_NEAR(fps, 60, 1);
    g_fakeNow += 100000 - 16667;  // one slow frame of 100 ms
    EXPECT_NEAR(GetFPS(), 30, 1);  // 0.8 * 16.67 + 0.2 * 100 = 33.3 ms
    g_fakeNow += 16667;
    EXPECT_GT(GetFPS(), 30) << "recovers over the following frames";
}

TEST_F(Timing, FirstReadingAfterALongPauseStartsLow) {
    g_fakeNow = 5000000;
    GetFPS();
    g_fakeNow += 10 * 1000000;  // the meter was not shown for ten seconds
    int first = GetFPS();
    EXPECT_LT(first, 1);
    int later = first;
    for (int i = 0; i < 40; i++) {
        g_fakeNow += 10000;
        later = GetFPS();
    }
    EXPECT_GT(later, 90);
}
