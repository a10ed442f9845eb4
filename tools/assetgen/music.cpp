// The three pieces of music: a calm menu loop, a driving in-game loop and
// the splash jingle, each composed here as note lists and encoded to Ogg
// Vorbis with a fixed stream serial so the bytes repeat build after build.
#include <vorbis/vorbisenc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "assets.h"
#include "synth.h"

namespace {

struct Note {
    float beat;    // from the start of the bar
    float length;  // in beats
    float pitch;   // MIDI note number
};

struct Bar {
    std::vector<Note> notes;
};

// Note starts are rounded to whole frames; the loop length is exact for both tempos.
struct Grid {
    double framesPerBeat;
    int64_t at(int bar, float beat) const { return int64_t(std::lround((bar * 4 + beat) * framesPerBeat)); }
    int64_t len(float beats) const { return int64_t(std::lround(beats * framesPerBeat)); }
};

// ---- Menu: A minor, 96 beats a minute, 16 bars (40 s). Pads and a plucked
// arpeggio open; bass and soft drums join at bar 5, the melody at bar 9.
Mix composeMenu() {
    const Grid g{kRate * 60.0 / 96};
    const int bars = 16;
    Mix m(int(g.at(bars, 0)), true);
    Rng rng(1);
    const std::vector<std::vector<float>> chords = {
        {57, 60, 64, 67}, {53, 57, 60, 64}, {48, 55, 60, 64}, {55, 59, 62, 67}};  // Am7 Fmaj7 C G
    const float roots[4] = {33, 29, 36, 31};
    const std::vector<Bar> melody = {
        {{{0, 1.5f, 76}, {1.5f, 0.5f, 74}, {2, 1, 72}, {3, 0.5f, 71}, {3.5f, 0.5f, 72}}},
        {{{0, 2, 69}, {2, 1, 72}, {3, 1, 77}}},
        {{{0, 1.5f, 76}, {1.5f, 0.5f, 79}, {2, 1, 76}, {3, 1, 74}}},
        {{{0, 2, 74}, {2, 1, 71}, {3, 1, 67}}},
        {{{0, 1, 69}, {1, 0.5f, 72}, {1.5f, 1.5f, 76}, {3, 1, 81}}},
        {{{0, 1.5f, 79}, {1.5f, 0.5f, 77}, {2, 1, 76}, {3, 1, 72}}},
        {{{0, 1, 76}, {1, 1, 74}, {2, 1, 72}, {3, 1, 74}}},
        {{{0, 2, 71}, {2, 1, 74}, {3, 1, 76}}},
    };
    const int arpOrder[8] = {0, 1, 2, 3, 2, 1, 2, 3};
    for (int bar = 0; bar < bars; bar++) {
        int c = bar % 4;
        pad(m, g.at(bar, 0), g.len(4), chords[c], 1.0f);
        for (int s = 0; s < 8; s++) {
            float pitch = chords[c][arpOrder[s]] + 12;
            float vel = (s % 2 == 0 ? 0.55f : 0.38f) * (bar < 4 ? 0.8f : 1.0f);
            pluck(m, g.at(bar, s * 0.5f), pitch, vel, s % 2 ? 0.45f : -0.45f, rng);
        }
        if (bar >= 4) {
            const float pattern[4][2] = {{0, 1.5f}, {1.5f, 1.0f}, {2.5f, 1.0f}, {3.5f, 0.5f}};
            for (auto& p : pattern)
                bass(m, g.at(bar, p[0]), g.len(p[1] * 0.9f), roots[c], 0.9f, 0.35f);
            kick(m, g.at(bar, 0), 0.75f);
            kick(m, g.at(bar, 2.5f), 0.55f);
            snare(m, g.at(bar, 1), 0.35f, rng);
            snare(m, g.at(bar, 3), 0.35f, rng);
            for (int h = 0; h < 8; h++)
                hat(m, g.at(bar, h * 0.5f), h % 2 ? 0.5f : 0.8f, h == 7, rng);
        }
        if (bar >= 8) {
            for (const Note& n : melody[bar - 8].notes)
                lead(m, g.at(bar, n.beat), g.len(n.length * 0.92f), float(n.pitch), 0.85f, 0.1f);
        }
    }
    finish(m, 60.0f / 96 * 0.75f, 0.38f, 0.30f, 0.55f, 0.85f);
    return m;
}

// ---- Game: E minor, 120 beats a minute, 16 bars (32 s). Four-on-the-floor
// drums, a pumping octave bass, a square arpeggio and a lead from bar 5.
Mix composeGame() {
    const Grid g{kRate * 60.0 / 120};
    const int bars = 16;
    Mix m(int(g.at(bars, 0)), true);
    Rng rng(2);
    const std::vector<std::vector<float>> chords = {
        {64, 67, 71}, {60, 64, 67}, {62, 67, 71}, {62, 66, 69}};  // Em C G/D D
    const float roots[4] = {40, 36, 43, 38};
    const std::vector<Bar> themeA = {
        {{{0, 0.5f, 71},
          {0.5f, 0.5f, 76},
          {1, 0.5f, 79},
          {1.5f, 0.5f, 78},
          {2, 1, 76},
          {3, 0.5f, 71},
          {3.5f, 0.5f, 74}}},
        {{{0, 1.5f, 76}, {1.5f, 0.5f, 79}, {2, 0.5f, 76}, {2.5f, 0.5f, 74}, {3, 1, 72}}},
        {{{0, 0.5f, 74},
          {0.5f, 0.5f, 79},
          {1, 1, 83},
          {2, 0.5f, 81},
          {2.5f, 0.5f, 79},
          {3, 0.5f, 78},
          {3.5f, 0.5f, 79}}},
        {{{0, 1.5f, 81}, {1.5f, 0.5f, 78}, {2, 1, 74}, {3, 1, 69}}},
    };
    const std::vector<Bar> themeEnd = {{{{0, 1, 78}, {1, 1, 81}, {2, 2, 86}}}};
    const std::vector<Bar> themeB = {
        {{{0, 2, 83}, {2, 2, 81}}},
        {{{0, 3, 79}, {3, 0.5f, 81}, {3.5f, 0.5f, 79}}},
        {{{0, 2, 83}, {2, 2, 86}}},
        {{{0, 3, 81}, {3, 1, 78}}},
    };
    for (int bar = 0; bar < bars; bar++) {
        int c = bar % 4;
        bool last = bar == bars - 1;
        // Drums.
        for (int b = 0; b < 4; b++)
            kick(m, g.at(bar, float(b)), 0.9f);
        clap(m, g.at(bar, 1), 0.7f, rng);
        if (!last)
            clap(m, g.at(bar, 3), 0.7f, rng);
        for (int h = 0; h < 16; h++) {
            bool off = h % 4 == 2;
            hat(m, g.at(bar, h * 0.25f), off ? 0.9f : (h % 2 ? 0.35f : 0.55f), off, rng);
        }
        if (last)  // a snare fill leads back to the top of the loop
            for (int s = 0; s < 4; s++)
                snare(m, g.at(bar, 3 + s * 0.25f), 0.35f + s * 0.12f, rng);
        // Bass: eighth notes jumping between root and octave.
        for (int e = 0; e < 8; e++)
            bass(m, g.at(bar, e * 0.5f), g.len(0.42f), roots[c] + (e % 2 ? 12 : 0), e % 2 ? 0.7f : 0.95f, 0.7f);
        // Arpeggio across two octaves of the chord.
        for (int s = 0; s < 16; s++) {
            int k = s % 6 < 3 ? s % 6 : 5 - s % 6;
            float pitch = chords[c][k] + (s / 8 == 1 ? 12 : 0);
            pluck(m, g.at(bar, s * 0.25f), pitch, s % 4 == 0 ? 0.45f : 0.28f, (s % 2 ? 0.5f : -0.5f), rng);
        }
        if (bar >= 2)
            pad(m, g.at(bar, 0), g.len(4), chords[c], 0.55f);
        // Lead.
        const Bar* phrase = nullptr;
        if (bar >= 4 && bar < 8)
            phrase = &themeA[bar - 4];
        if (bar >= 8 && bar < 11)
            phrase = &themeA[bar - 8];
        if (bar == 11)
            phrase = &themeEnd[0];
        if (bar >= 12)
            phrase = &themeB[bar - 12];
        if (phrase)
            for (const Note& n : phrase->notes)
                lead(m, g.at(bar, n.beat), g.len(n.length * 0.9f), n.pitch, 0.9f, -0.1f);
    }
    finish(m, 60.0f / 120 * 0.75f, 0.30f, 0.22f, 0.35f, 0.88f);
    return m;
}

// ---- Splash: a rising A major bell arpeggio onto a held chord, about 2.6 s,
// fading to silence.
Mix composeSplash() {
    const int frames = kRate * 26 / 10;
    Mix m(frames, false);
    Rng rng(3);
    const float arp[5] = {69, 73, 76, 81, 85};
    for (int i = 0; i < 5; i++) {
        int64_t at = int64_t(i * 0.09f * kRate);
        bell(m, at, int64_t(2.2f * kRate), arp[i], 0.55f, -0.6f + 0.3f * i);
        pluck(m, at, arp[i] - 12, 0.35f, 0.6f - 0.3f * i, rng);
    }
    riser(m, 0, int64_t(0.45f * kRate), 0.6f, rng);
    const int64_t hit = int64_t(0.45f * kRate);
    kick(m, hit, 1.0f);
    pad(m, hit, int64_t(1.3f * kRate), {57, 64, 69, 73, 76}, 1.6f);
    bass(m, hit, int64_t(1.2f * kRate), 33, 1.0f, 0.5f);
    bell(m, hit, int64_t(2.0f * kRate), 88, 0.35f, 0.3f);
    lead(m, hit, int64_t(1.1f * kRate), 81, 0.7f, 0);
    finish(m, 0.18f, 0.35f, 0.25f, 0.6f, 0.85f);
    // Fade the last half second so the jingle ends in silence.
    const int fade = kRate / 2;
    for (int i = 0; i < fade; i++) {
        float k = float(fade - i) / fade;
        m.left[frames - fade + i] *= k * k;
        m.right[frames - fade + i] *= k * k;
    }
    return m;
}

bool writeOgg(const std::string& path, const Mix& m) {
    FILE* out = std::fopen(path.c_str(), "wb");
    if (!out) {
        std::fprintf(stderr, "assetgen: cannot write %s\n", path.c_str());
        return false;
    }
    vorbis_info vi;
    vorbis_info_init(&vi);
    if (vorbis_encode_init_vbr(&vi, 2, kRate, 0.4f) != 0) {
        std::fprintf(stderr, "assetgen: vorbis encoder set-up failed\n");
        std::fclose(out);
        return false;
    }
    vorbis_comment vc;
    vorbis_comment_init(&vc);
    vorbis_comment_add_tag(&vc, "TITLE", path.substr(path.rfind('/') + 1).c_str());
    vorbis_dsp_state vd;
    vorbis_block vb;
    vorbis_analysis_init(&vd, &vi);
    vorbis_block_init(&vd, &vb);
    ogg_stream_state os;
    ogg_stream_init(&os, 0x56454C54);  // fixed serial: same bytes every build
    ogg_packet header, comments, codebooks;
    vorbis_analysis_headerout(&vd, &vc, &header, &comments, &codebooks);
    ogg_stream_packetin(&os, &header);
    ogg_stream_packetin(&os, &comments);
    ogg_stream_packetin(&os, &codebooks);
    ogg_page page;
    bool ok = true;
    auto writePage = [&](const ogg_page& p) {
        ok &= std::fwrite(p.header, 1, size_t(p.header_len), out) == size_t(p.header_len);
        ok &= std::fwrite(p.body, 1, size_t(p.body_len), out) == size_t(p.body_len);
    };
    while (ogg_stream_flush(&os, &page))
        writePage(page);

    const int chunk = 4096;
    int done = 0;
    bool eos = false;
    while (!eos) {
        int count = std::min(chunk, m.frames - done);
        if (count > 0) {
            float** buf = vorbis_analysis_buffer(&vd, count);
            for (int i = 0; i < count; i++) {
                buf[0][i] = m.left[done + i];
                buf[1][i] = m.right[done + i];
            }
            vorbis_analysis_wrote(&vd, count);
            done += count;
        } else {
            vorbis_analysis_wrote(&vd, 0);  // end of stream
        }
        while (vorbis_analysis_blockout(&vd, &vb) == 1) {
            vorbis_analysis(&vb, nullptr);
            vorbis_bitrate_addblock(&vb);
            ogg_packet packet;
            while (vorbis_bitrate_flushpacket(&vd, &packet)) {
                ogg_stream_packetin(&os, &packet);
                while (ogg_stream_pageout(&os, &page)) {
                    writePage(page);
                    if (ogg_page_eos(&page))
                        eos = true;
                }
            }
        }
        if (count <= 0 && !eos) {
            while (ogg_stream_flush(&os, &page)) {
                writePage(page);
                if (ogg_page_eos(&page))
                    eos = true;
            }
            eos = true;
        }
    }
    ogg_stream_clear(&os);
    vorbis_block_clear(&vb);
    vorbis_dsp_clear(&vd);
    vorbis_comment_clear(&vc);
    vorbis_info_clear(&vi);
    ok &= std::fclose(out) == 0;
    if (!ok)
        std::fprintf(stderr, "assetgen: error writing %s\n", path.c_str());
    return ok;
}

}  // namespace

bool makeMusic(const std::string& sound) {
    bool ok = writeOgg(sound + "/menu.ogg", composeMenu());
    ok &= writeOgg(sound + "/game.ogg", composeGame());
    ok &= writeOgg(sound + "/splashscreen.ogg", composeSplash());
    return ok;
}
