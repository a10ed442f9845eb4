// The generated music decodes, has the promised length and format, and
// sounds like music rather than silence or a single tone.
#include <gtest/gtest.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "assets_support.h"

namespace {

struct Decoded {
    int channels = 0;
    long rate = 0;
    long long declaredFrames = 0;
    std::vector<float> mono;            // channel average, -1..1
    std::vector<float> left, right;
};

bool Decode(const std::string& path, Decoded& out) {
    OggVorbis_File vf;
    if (ov_fopen(path.c_str(), &vf) != 0) return false;
    vorbis_info* vi = ov_info(&vf, -1);
    out.channels = vi->channels;
    out.rate = vi->rate;
    out.declaredFrames = ov_pcm_total(&vf, -1);
    char buf[8192];
    int section = 0;
    std::vector<short> samples;
    for (;;) {
        long n = ov_read(&vf, buf, sizeof buf, 0, 2, 1, &section);
        if (n <= 0) break;
        const short* s = reinterpret_cast<const short*>(buf);
        samples.insert(samples.end(), s, s + n / 2);
    }
    ov_clear(&vf);
    const int ch = std::max(1, out.channels);
    for (size_t i = 0; i + ch - 1 < samples.size(); i += ch) {
        float l = samples[i] / 32768.0f, r = samples[i + ch - 1] / 32768.0f;
        out.left.push_back(l);
        out.right.push_back(r);
        out.mono.push_back((l + r) * 0.5f);
    }
    return true;
}

double Rms(const std::vector<float>& x, size_t from, size_t to) {
    double s = 0;
    for (size_t i = from; i < to; i++) s += double(x[i]) * x[i];
    return std::sqrt(s / std::max<size_t>(1, to - from));
}

// Share of the energy below ~200 Hz, above ~4 kHz and in between, from
// one-pole filters: a bare tone lands almost entirely in one band.
struct Bands {
    double low = 0, mid = 0, high = 0;
};
Bands BandShares(const std::vector<float>& x, long rate) {
    const double kLow = 1 - std::exp(-2 * M_PI * 200.0 / rate);
    const double kHigh = 1 - std::exp(-2 * M_PI * 4000.0 / rate);
    double lp1 = 0, lp2 = 0;
    Bands e;
    for (float v : x) {
        lp1 += kLow * (v - lp1);
        lp2 += kHigh * (v - lp2);
        double low = lp1, high = v - lp2, mid = lp2 - lp1;
        e.low += low * low;
        e.mid += mid * mid;
        e.high += high * high;
    }
    double total = e.low + e.mid + e.high;
    return {e.low / total, e.mid / total, e.high / total};
}

// How much the zero-crossing rate changes from one 50 ms window to the next:
// notes and drums change it all the time, a held tone never does.
double ZeroCrossingVariation(const std::vector<float>& x, long rate) {
    const size_t win = size_t(rate / 20);
    std::vector<double> rates;
    for (size_t start = 0; start + win <= x.size(); start += win) {
        int crossings = 0;
        for (size_t i = start + 1; i < start + win; i++) crossings += (x[i - 1] < 0) != (x[i] < 0);
        rates.push_back(crossings);
    }
    double mean = 0, var = 0;
    for (double r : rates) mean += r;
    mean /= rates.size();
    for (double r : rates) var += (r - mean) * (r - mean);
    return std::sqrt(var / rates.size()) / std::max(1.0, mean);
}

void ExpectMusical(const Decoded& d, const char* name) {
    SCOPED_TRACE(name);
    EXPECT_GT(Rms(d.mono, 0, d.mono.size()), 0.05) << "too quiet";
    Bands b = BandShares(d.mono, d.rate);
    EXPECT_GT(b.low, 0.03) << "no bass";
    EXPECT_GT(b.mid, 0.10) << "no melody or chords";
    EXPECT_GT(b.high, 0.001) << "no percussion or brightness";
    EXPECT_GT(ZeroCrossingVariation(d.mono, d.rate), 0.15);
    // Stereo, not the same signal twice.
    double diff = 0;
    for (size_t i = 0; i < d.left.size(); i++) diff += std::fabs(d.left[i] - d.right[i]);
    EXPECT_GT(diff / d.left.size(), 0.002);
}

// A loop that is meant to repeat must not click where it wraps: the step
// from the last frame to the first is no bigger than steps inside the piece.
void ExpectSeamless(const Decoded& d, const char* name) {
    SCOPED_TRACE(name);
    std::vector<float> steps;
    for (size_t i = 1; i < d.mono.size(); i++) steps.push_back(std::fabs(d.mono[i] - d.mono[i - 1]));
    std::nth_element(steps.begin(), steps.begin() + steps.size() * 999 / 1000, steps.end());
    float p999 = steps[steps.size() * 999 / 1000];
    EXPECT_LE(std::fabs(d.left.front() - d.left.back()), p999);
    EXPECT_LE(std::fabs(d.right.front() - d.right.back()), p999);
    // Level at the end is like the level at the start: no fade-out in a loop.
    size_t tenth = d.rate / 10;
    double head = Rms(d.mono, 0, tenth * 10), tail = Rms(d.mono, d.mono.size() - tenth * 10, d.mono.size());
    EXPECT_GT(tail, head * 0.4);
}

}  // namespace

TEST(AssetsMusic, MenuLoopDecodesToFortySecondsOfStereoMusic) {
    Decoded d;
    ASSERT_TRUE(Decode(GameData("sound/menu.ogg"), d));
    EXPECT_EQ(d.channels, 2);
    EXPECT_EQ(d.rate, 44100);
    EXPECT_EQ(d.declaredFrames, 1764000);  // 16 bars at 96 beats a minute
    EXPECT_EQ(d.mono.size(), 1764000u);
    ExpectMusical(d, "menu.ogg");
    ExpectSeamless(d, "menu.ogg");
}

TEST(AssetsMusic, GameLoopDecodesToThirtyTwoSecondsOfStereoMusic) {
    Decoded d;
    ASSERT_TRUE(Decode(GameData("sound/game.ogg"), d));
    EXPECT_EQ(d.channels, 2);
    EXPECT_EQ(d.rate, 44100);
    EXPECT_EQ(d.declaredFrames, 1411200);  // 16 bars at 120 beats a minute
    EXPECT_EQ(d.mono.size(), 1411200u);
    ExpectMusical(d, "game.ogg");
    ExpectSeamless(d, "game.ogg");
}

TEST(AssetsMusic, SplashJingleIsShortAndEndsInSilence) {
    Decoded d;
    ASSERT_TRUE(Decode(GameData("sound/splashscreen.ogg"), d));
    EXPECT_EQ(d.channels, 2);
    EXPECT_EQ(d.rate, 44100);
    EXPECT_EQ(d.declaredFrames, 114660);  // 2.6 s
    EXPECT_GT(Rms(d.mono, 0, d.mono.size()), 0.05);
    EXPECT_GT(ZeroCrossingVariation(d.mono, d.rate), 0.15);
    // Shown for three seconds: the jingle must be over before the menu music.
    EXPECT_LT(Rms(d.mono, d.mono.size() - 2205, d.mono.size()), 0.01);
}

TEST(AssetsMusic, AFileThatIsNotVorbisIsRefusedByTheDecoder) {
    // Guards the helper: a decoder that accepted anything would pass the rest.
    Decoded d;
    EXPECT_FALSE(Decode(GameData("levels/lvl1.xml"), d));
}
