// Text conversions, byte order and the frame timer.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "app/timer.h"
#include "app/utils.h"
#include "platform/clock.h"
#include "test_support.h"

TEST(Utils, ConversionsFollowStreamExtraction) {
    const std::pair<const char*, int> ints[] = {{" 42", 42}, {"-7", -7}, {"12abc", 12}, {"3.7", 3},
                                                {"1e3", 1},  {"", 0},    {"abc", 0},    {"800\r", 800}};
    for (const auto& [text, value] : ints)
        EXPECT_EQ(StringToInt(text), value) << "'" << text << "'";
    const std::pair<const char*, float> floats[] = {{"2.5", 2.5f}, {".5", 0.5f}, {"0.3x", 0.3f}, {"1e3", 1000.0f},
                                                    {" x", 0.0f}};
    for (const auto& [text, value] : floats)
        EXPECT_FLOAT_EQ(StringToFloat(text), value) << "'" << text << "'";
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

// The shell's reset restores the real clock and a fresh frame-rate meter.
class Timing : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        SetMicrosecondsSource(FakeClock);
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

TEST_F(Timing, FrameRateIsAMovingAverageThatALongPauseDragsDown) {
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

    g_fakeNow += 10 * 1000000;  // the meter was not shown for ten seconds
    EXPECT_LT(GetFPS(), 1);
    for (int i = 0; i < 40; i++) {
        g_fakeNow += 10000;
        fps = GetFPS();
    }
    EXPECT_GT(fps, 90);
}
