// The generated music decodes with libvorbisfile to the promised length and
// format, and sounds like music rather than silence or a bare tone.
#include <gtest/gtest.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>

#include "assets_support.h"

TEST(AssetsMusic, EveryPieceDecodesToItsLengthInStereoAndSoundsLikeMusic) {
    // frames: whole bars of 4 beats at 44.1 kHz; the jingle 2.6 s.
    const struct {
        const char* name;
        long long frames;
        bool loop;
    } pieces[] = {{"menu.ogg", 16 * 4 * 44100 * 60 / 96, true},
                  {"game.ogg", 16 * 4 * 44100 * 60 / 120, true},
                  {"splashscreen.ogg", 114660, false}};
    for (const auto& piece : pieces) {
        SCOPED_TRACE(piece.name);
        OggVorbis_File vf;
        ASSERT_EQ(ov_fopen(GameData(std::string("sound/") + piece.name).c_str(), &vf), 0);
        EXPECT_EQ(std::make_pair(ov_info(&vf, -1)->channels, ov_info(&vf, -1)->rate), std::make_pair(2, 44100L));
        EXPECT_EQ(ov_pcm_total(&vf, -1), piece.frames);
        std::vector<float> mono;  // channel average, -1..1
        char buf[8192];
        for (int section = 0, n; (n = ov_read(&vf, buf, sizeof buf, 0, 2, 1, &section)) > 0;) {
            const short* s = reinterpret_cast<const short*>(buf);
            for (long i = 0; i + 1 < n / 2; i += 2)
                mono.push_back((s[i] + s[i + 1]) / 65536.0f);
        }
        ov_clear(&vf);
        ASSERT_EQ(mono.size(), size_t(piece.frames)) << "decoded length";
        auto rms = [&](size_t from, size_t to) {
            double s = 0;
            for (size_t i = from; i < to; i++)
                s += double(mono[i]) * mono[i];
            return std::sqrt(s / (to - from));
        };
        EXPECT_GT(rms(0, mono.size()), 0.05) << "too quiet";

        // Energy below ~200 Hz, above ~4 kHz and in between from one-pole
        // filters: bass, melody and percussion each take a share, a bare tone
        // lands almost entirely in one band.
        const double kLow = 1 - std::exp(-2 * M_PI * 200.0 / 44100), kHigh = 1 - std::exp(-2 * M_PI * 4000.0 / 44100);
        double lp1 = 0, lp2 = 0, low = 0, mid = 0, high = 0;
        for (float v : mono) {
            lp1 += kLow * (v - lp1), lp2 += kHigh * (v - lp2);
            low += lp1 * lp1, mid += (lp2 - lp1) * (lp2 - lp1), high += (v - lp2) * (v - lp2);
        }
        const double total = low + mid + high;
        EXPECT_GT(low / total, 0.03) << "no bass";
        EXPECT_GT(mid / total, 0.10) << "no melody or chords";
        EXPECT_GT(high / total, 0.001) << "no percussion or brightness";
        if (piece.loop) {
            // No click where the loop wraps: the step from the last frame to
            // the first is no bigger than the 99.9th percentile of steps inside.
            std::vector<float> steps;
            for (size_t i = 1; i < mono.size(); i++)
                steps.push_back(std::fabs(mono[i] - mono[i - 1]));
            std::nth_element(steps.begin(), steps.begin() + steps.size() * 999 / 1000, steps.end());
            EXPECT_LE(std::fabs(mono.front() - mono.back()), steps[steps.size() * 999 / 1000]);
        }
        // Shown for three seconds: the jingle is over before the menu music starts.
        EXPECT_TRUE(piece.loop || rms(mono.size() - 2205, mono.size()) < 0.01) << "still sounding at its end";
    }
}
