#include "synth.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kPi = 3.14159265358979f;
constexpr float kDt = 1.0f / kRate;

// Band-limited sawtooth: the polyBLEP correction removes most aliasing.
struct Saw {
    float phase = 0;
    float next(float hz) {
        float inc = hz * kDt;
        phase += inc;
        if (phase >= 1)
            phase -= 1;
        float v = 2 * phase - 1;
        if (phase < inc) {
            float t = phase / inc;
            v -= t + t - t * t - 1;
        } else if (phase > 1 - inc) {
            float t = (phase - 1) / inc;
            v -= t * t + t + t + 1;
        }
        return v;
    }
};

// Chamberlin state-variable low-pass; cut-offs stay well under rate / 6.
struct LowPass {
    float low = 0, band = 0;
    float run(float in, float cutoff, float q) {
        float f = 2 * std::sin(kPi * std::min(cutoff, kRate / 7.0f) * kDt);
        low += f * band;
        float high = in - low - q * band;
        band += f * high;
        return low;
    }
};

float envelope(float t, float length, float attack, float release) {
    float a = attack > 0 ? std::min(1.0f, t / attack) : 1.0f;
    float r = t > length ? std::max(0.0f, 1 - (t - length) / release) : 1.0f;
    return a * r;
}

float noise(Rng& rng) { return rng.uniform() * 2 - 1; }

}  // namespace

void Mix::put(int64_t i, float v, float pan, float sendLevel) {
    if (loop) {
        i %= frames;
        if (i < 0)
            i += frames;
    } else if (i < 0 || i >= frames) {
        return;
    }
    float angle = (pan + 1) * kPi * 0.25f;
    left[i] += v * std::cos(angle);
    right[i] += v * std::sin(angle);
    send[i] += v * sendLevel;
}

float midiToHz(float note) { return 440.0f * std::pow(2.0f, (note - 69) / 12.0f); }

void kick(Mix& m, int64_t start, float vel) {
    const int n = int(0.40f * kRate);
    float phase = 0;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        float hz = 44 + 120 * std::exp(-t * 28);
        phase += hz * kDt;
        float body = std::sin(2 * kPi * phase) * std::exp(-t * 7.5f);
        float click = std::exp(-t * 400) * 0.4f * std::min(1.0f, t / 0.0007f);  // no hard edge
        m.put(start + i, vel * 0.95f * std::tanh(1.6f * (body + click)), 0, 0.02f);
    }
}

void snare(Mix& m, int64_t start, float vel, Rng& rng) {
    const int n = int(0.28f * kRate);
    float prev = 0, phase = 0;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        phase += 190 * kDt;
        float tone = std::sin(2 * kPi * phase) * std::exp(-t * 30) * 0.55f;
        float w = noise(rng);
        float hp = w - prev * 0.6f;
        prev = w;
        float rattle = hp * std::exp(-t * 16) * 0.5f;
        m.put(start + i, vel * (tone + rattle), 0.05f, 0.25f);
    }
}

void hat(Mix& m, int64_t start, float vel, bool open, Rng& rng) {
    const float decay = open ? 12.0f : 70.0f;
    const int n = int((open ? 0.30f : 0.07f) * kRate);
    float p1 = 0, p2 = 0;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        float w = noise(rng);
        float h1 = w - p1;  // two differentiators: only the hiss is left
        p1 = w;
        float h2 = h1 - p2;
        p2 = h1;
        m.put(start + i, vel * 0.12f * h2 * std::exp(-t * decay), 0.3f, 0.08f);
    }
}

void clap(Mix& m, int64_t start, float vel, Rng& rng) {
    const int n = int(0.25f * kRate);
    float prev = 0;
    LowPass lp;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        float bursts = 0;
        for (int b = 0; b < 3; b++) {
            float tb = t - b * 0.011f;
            if (tb >= 0)
                bursts += std::exp(-tb * (b == 2 ? 18.0f : 160.0f));
        }
        float w = noise(rng);
        float hp = w - prev * 0.9f;
        prev = w;
        float v = lp.run(hp, 2600, 0.8f) * bursts;
        m.put(start + i, vel * 0.55f * v, -0.1f, 0.35f);
    }
}

void bass(Mix& m, int64_t start, int64_t length, float note, float vel, float brightness) {
    const float hz = midiToHz(note), len = length * kDt, release = 0.04f;
    const int n = int((len + release) * kRate);
    Saw saw;
    LowPass lp;
    float subPhase = 0;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        subPhase += hz * 0.5f * kDt;
        float raw = saw.next(hz) * 0.6f + std::sin(2 * kPi * subPhase) * 0.7f;
        float cutoff = 180 + brightness * 1600 * std::exp(-t * 9);
        float v = lp.run(raw, cutoff, 0.6f) * envelope(t, len, 0.004f, release);
        m.put(start + i, vel * 0.55f * v, 0, 0.03f);
    }
}

void lead(Mix& m, int64_t start, int64_t length, float note, float vel, float pan) {
    const float hz = midiToHz(note), len = length * kDt, release = 0.18f;
    const int n = int((len + release) * kRate);
    Saw a, b;
    LowPass lp;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        float vib = 1 + 0.006f * std::sin(2 * kPi * 5.2f * t) * smoothstep(0.15f, 0.45f, t);
        float f = hz * vib;
        float raw = a.next(f * 1.004f) + b.next(f * 0.996f);
        float cutoff = 1400 + 2600 * std::exp(-t * 5);
        float env = envelope(t, len, 0.012f, release) * (0.75f + 0.25f * std::exp(-t * 6));
        m.put(start + i, vel * 0.16f * lp.run(raw, cutoff, 0.7f) * env, pan, 0.45f);
    }
}

void pad(Mix& m, int64_t start, int64_t length, const std::vector<float>& notes, float vel) {
    const float len = length * kDt, release = 0.8f;
    const int n = int((len + release) * kRate);
    const float detune[3] = {0.994f, 1.0f, 1.006f};
    const float pans[3] = {-0.6f, 0.0f, 0.6f};
    for (size_t k = 0; k < notes.size(); k++) {
        float hz = midiToHz(notes[k]);
        Saw saw[3];
        for (int j = 0; j < 3; j++)
            saw[j].phase = 0.31f * j + 0.17f * k;  // decorrelated starts
        LowPass lp[3];
        for (int i = 0; i < n; i++) {
            float t = i * kDt;
            float env = envelope(t, len, 0.5f, release);
            float wob = 1 + 0.15f * std::sin(2 * kPi * 0.3f * t + k);
            for (int j = 0; j < 3; j++) {
                float v = lp[j].run(saw[j].next(hz * detune[j]), 900 * wob, 1.0f);
                m.put(start + i, vel * 0.045f * v * env, pans[j], 0.6f);
            }
        }
    }
}

void pluck(Mix& m, int64_t start, float note, float vel, float pan, Rng& rng) {
    // Karplus-Strong: a burst of soft noise recirculated through a damped delay.
    const float hz = midiToHz(note);
    const int period = std::max(2, int(std::lround(kRate / hz)));
    std::vector<float> line(period);
    float smooth = 0;
    for (float& s : line) {
        smooth = smooth * 0.5f + noise(rng) * 0.5f;
        s = smooth;
    }
    const int n = int(1.1f * kRate);
    int idx = 0;
    for (int i = 0; i < n; i++) {
        int nextIdx = (idx + 1) % period;
        float out = line[idx];
        line[idx] = 0.5f * (line[idx] + line[nextIdx]) * 0.994f;
        idx = nextIdx;
        float fade = i > n - 2000 ? (n - i) / 2000.0f : 1.0f;
        m.put(start + i, vel * 0.5f * out * fade, pan, 0.5f);
    }
}

void bell(Mix& m, int64_t start, int64_t length, float note, float vel, float pan) {
    const float hz = midiToHz(note), len = length * kDt;
    const int n = int(len * kRate);
    float pc = 0, pm = 0;
    for (int i = 0; i < n; i++) {
        float t = i * kDt;
        pm += hz * 3.5f * kDt;
        float index = 0.6f + 3.0f * std::exp(-t * 6);
        pc += hz * kDt;
        float v = std::sin(2 * kPi * pc + index * std::sin(2 * kPi * pm));
        float env = std::exp(-t * 2.2f) * std::min(1.0f, t / 0.002f) * std::min(1.0f, (len - t) / 0.05f);
        m.put(start + i, vel * 0.3f * v * env, pan, 0.55f);
    }
}

void riser(Mix& m, int64_t start, int64_t length, float vel, Rng& rng) {
    LowPass lp;
    const float len = length * kDt;
    for (int64_t i = 0; i < length; i++) {
        float t = i * kDt, k = t / len;
        float v = lp.run(noise(rng), 400 + 5000 * k * k, 0.5f) * k * k;
        m.put(start + i, vel * 0.35f * v, 0.2f * std::sin(2 * kPi * 2 * t), 0.5f);
    }
}

namespace {

struct Comb {
    std::vector<float> buf;
    size_t idx = 0;
    float store = 0;
    explicit Comb(size_t n) : buf(n, 0) {}
    float run(float in, float feedback, float damp) {
        float out = buf[idx];
        store = out * (1 - damp) + store * damp;
        buf[idx] = in + store * feedback;
        idx = (idx + 1) % buf.size();
        return out;
    }
};

struct AllPass {
    std::vector<float> buf;
    size_t idx = 0;
    explicit AllPass(size_t n) : buf(n, 0) {}
    float run(float in) {
        float b = buf[idx];
        buf[idx] = in + b * 0.5f;
        idx = (idx + 1) % buf.size();
        return b - in;
    }
};

}  // namespace

void finish(Mix& m, float echoSeconds, float echoFeedback, float echoLevel, float reverbLevel, float peak) {
    const int n = m.frames;
    std::vector<float> wetL(n, 0), wetR(n, 0);
    // Ping-pong echo.
    const size_t echoLen = size_t(echoSeconds * kRate);
    std::vector<float> dl(echoLen, 0), dr(echoLen, 0);
    size_t e = 0;
    // Reverb: parallel damped combs into series all-passes, one set per side.
    const size_t combSizes[4] = {1116, 1188, 1277, 1356};
    std::vector<Comb> combL, combR;
    for (size_t s : combSizes) {
        combL.emplace_back(s);
        combR.emplace_back(s + 23);
    }
    AllPass apL1(556), apL2(441), apR1(579), apR2(464);
    const int passes = m.loop ? 2 : 1;  // the second pass starts from the loop's own tail
    for (int pass = 0; pass < passes; pass++) {
        for (int i = 0; i < n; i++) {
            float in = m.send[i];
            float outL = dl[e], outR = dr[e];
            dl[e] = in + outR * echoFeedback;
            dr[e] = outL * echoFeedback;
            e = (e + 1) % echoLen;
            float rin = in * 0.12f;
            float rl = 0, rr = 0;
            for (int c = 0; c < 4; c++) {
                rl += combL[c].run(rin, 0.84f, 0.25f);
                rr += combR[c].run(rin, 0.84f, 0.25f);
            }
            rl = apL2.run(apL1.run(rl));
            rr = apR2.run(apR1.run(rr));
            if (pass == passes - 1) {
                wetL[i] = outL * echoLevel + rl * reverbLevel;
                wetR[i] = outR * echoLevel + rr * reverbLevel;
            }
        }
    }
    // The kick's shape leaves a small offset; removing the mean keeps loops seamless.
    double sumL = 0, sumR = 0;
    for (int i = 0; i < n; i++) {
        sumL += m.left[i] + wetL[i];
        sumR += m.right[i] + wetR[i];
    }
    const float dcL = float(sumL / n), dcR = float(sumR / n);
    for (int i = 0; i < n; i++) {
        wetL[i] -= dcL;
        wetR[i] -= dcR;
    }
    float top = 0;
    for (int i = 0; i < n; i++) {
        m.left[i] = std::tanh(m.left[i] + wetL[i]);
        m.right[i] = std::tanh(m.right[i] + wetR[i]);
        top = std::max(top, std::max(std::fabs(m.left[i]), std::fabs(m.right[i])));
    }
    if (top > 0) {
        float k = peak / top;
        for (int i = 0; i < n; i++) {
            m.left[i] *= k;
            m.right[i] *= k;
        }
    }
}
