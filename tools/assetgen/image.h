// Float RGBA canvas and the few painting operations the texture makers share.
// Pixels are straight (not premultiplied) colour, rows top-down as displayed;
// the Targa writer turns them into the bottom-up BGR(A) rows the game reads.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Rgba {
    float r = 0, g = 0, b = 0, a = 0;
};

inline Rgba rgba(float r, float g, float b, float a = 1.0f) { return Rgba{r, g, b, a}; }
Rgba mix(const Rgba& a, const Rgba& b, float t);

// One coverage or value channel, used for masks, blurs and glows.
struct Mask {
    int w = 0, h = 0;
    std::vector<float> v;
    Mask() = default;
    Mask(int width, int height) : w(width), h(height), v(size_t(width) * height, 0.0f) {}
    float& at(int x, int y) { return v[size_t(y) * w + x]; }
    float at(int x, int y) const { return v[size_t(y) * w + x]; }
    float get(int x, int y) const { return (x < 0 || y < 0 || x >= w || y >= h) ? 0.0f : at(x, y); }
};

struct Image {
    int w = 0, h = 0;
    std::vector<Rgba> px;
    Image() = default;
    Image(int width, int height, Rgba fill = Rgba{}) : w(width), h(height), px(size_t(width) * height, fill) {}
    Rgba& at(int x, int y) { return px[size_t(y) * w + x]; }
    const Rgba& at(int x, int y) const { return px[size_t(y) * w + x]; }
    // Porter-Duff "over" with an extra coverage factor.
    void blend(int x, int y, const Rgba& c, float coverage = 1.0f);
    // Adds light: colour scaled by coverage is added and alpha raised to match.
    void add(int x, int y, const Rgba& c, float coverage);
};

// Paints colour through a mask placed with its top-left at (ox, oy).
void paintMask(Image& img, const Mask& m, int ox, int oy, const Rgba& c);
// As paintMask, but the colour comes from a callback per pixel (gradients).
template <class F>
void paintMaskWith(Image& img, const Mask& m, int ox, int oy, F colourAt) {
    for (int y = 0; y < m.h; y++)
        for (int x = 0; x < m.w; x++) {
            float cov = m.at(x, y);
            int tx = x + ox, ty = y + oy;
            if (cov <= 0 || tx < 0 || ty < 0 || tx >= img.w || ty >= img.h)
                continue;
            img.blend(tx, ty, colourAt(tx, ty), cov);
        }
}

Mask blur(const Mask& m, int radius, int passes = 3);  // repeated box blur ~ gaussian
Mask dilate(const Mask& m, int radius);                // round structuring element
Mask shifted(const Mask& m, int dx, int dy);

// Coverage of a rounded rectangle, anti-aliased, in pixel units.
float roundRectCoverage(float px, float py, float x0, float y0, float x1, float y1, float radius);
float clamp01(float v);
float smoothstep(float e0, float e1, float x);

// Deterministic generator (fixed seed at every use): same bytes on every build.
struct Rng {
    uint64_t s;
    explicit Rng(uint64_t seed) : s(seed * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull) {}
    uint32_t next() {
        s ^= s << 13;
        s ^= s >> 7;
        s ^= s << 17;
        return uint32_t(s >> 32);
    }
    float uniform() { return (next() >> 8) * (1.0f / 16777216.0f); }  // [0,1)
    float range(float a, float b) { return a + (b - a) * uniform(); }
};

// Smooth value noise that repeats every `period` cells in both axes, so a
// texture built from it tiles without seams.
float tileNoise(float x, float y, int period, uint32_t seed);
float tileFbm(float x, float y, int period, int octaves, uint32_t seed);

// Writes an uncompressed type 2 Targa: no ID, no colour map, origin 0, rows
// bottom-up, BGR or BGRA. Returns false when the file cannot be written.
bool writeTga(const std::string& path, const Image& img, bool withAlpha);

// Writes an 8-bit RGBA PNG (colour type 6, no interlace, every row filter 0,
// zlib at level 9): what desktops want for application icons. Returns false
// when the file cannot be written.
bool writePng(const std::string& path, const Image& img);
