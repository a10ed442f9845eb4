#include "image.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

float clamp01(float v) { return v < 0 ? 0 : (v > 1 ? 1 : v); }

float smoothstep(float e0, float e1, float x) {
    float t = clamp01((x - e0) / (e1 - e0));
    return t * t * (3 - 2 * t);
}

Rgba mix(const Rgba& a, const Rgba& b, float t) {
    return Rgba{a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t, a.a + (b.a - a.a) * t};
}

void Image::blend(int x, int y, const Rgba& c, float coverage) {
    if (x < 0 || y < 0 || x >= w || y >= h)
        return;
    Rgba& d = at(x, y);
    float sa = clamp01(c.a * coverage);
    if (sa <= 0)
        return;
    float oa = sa + d.a * (1 - sa);
    if (oa <= 0)
        return;
    d.r = (c.r * sa + d.r * d.a * (1 - sa)) / oa;
    d.g = (c.g * sa + d.g * d.a * (1 - sa)) / oa;
    d.b = (c.b * sa + d.b * d.a * (1 - sa)) / oa;
    d.a = oa;
}

void Image::add(int x, int y, const Rgba& c, float coverage) {
    if (x < 0 || y < 0 || x >= w || y >= h)
        return;
    Rgba& d = at(x, y);
    float k = coverage * c.a;
    // Work in premultiplied space so light added to transparency stays bright.
    float pr = d.r * d.a + c.r * k, pg = d.g * d.a + c.g * k, pb = d.b * d.a + c.b * k;
    float na = clamp01(d.a + k);
    if (na > 0) {
        d.r = clamp01(pr / na);
        d.g = clamp01(pg / na);
        d.b = clamp01(pb / na);
    }
    d.a = na;
}

void paintMask(Image& img, const Mask& m, int ox, int oy, const Rgba& c) {
    paintMaskWith(img, m, ox, oy, [&](int, int) { return c; });
}

Mask blur(const Mask& m, int radius, int passes) {
    if (radius <= 0)
        return m;
    Mask a = m, b(m.w, m.h);
    float norm = 1.0f / float(2 * radius + 1);
    for (int p = 0; p < passes; p++) {
        for (int y = 0; y < m.h; y++)
            for (int x = 0; x < m.w; x++) {
                float s = 0;
                for (int k = -radius; k <= radius; k++)
                    s += a.get(x + k, y);
                b.at(x, y) = s * norm;
            }
        for (int y = 0; y < m.h; y++)
            for (int x = 0; x < m.w; x++) {
                float s = 0;
                for (int k = -radius; k <= radius; k++)
                    s += b.get(x, y + k);
                a.at(x, y) = s * norm;
            }
    }
    return a;
}

Mask dilate(const Mask& m, int radius) {
    Mask out(m.w, m.h);
    for (int y = 0; y < m.h; y++)
        for (int x = 0; x < m.w; x++) {
            float best = 0;
            for (int dy = -radius; dy <= radius; dy++)
                for (int dx = -radius; dx <= radius; dx++) {
                    float d = std::sqrt(float(dx * dx + dy * dy));
                    if (d > radius + 0.5f)
                        continue;
                    float fall = clamp01(radius + 0.5f - d);
                    best = std::max(best, m.get(x + dx, y + dy) * fall);
                }
            out.at(x, y) = best;
        }
    return out;
}

Mask shifted(const Mask& m, int dx, int dy) {
    Mask out(m.w, m.h);
    for (int y = 0; y < m.h; y++)
        for (int x = 0; x < m.w; x++)
            out.at(x, y) = m.get(x - dx, y - dy);
    return out;
}

float roundRectCoverage(float px, float py, float x0, float y0, float x1, float y1, float radius) {
    // Signed distance to a rounded box, then one pixel of anti-aliasing.
    float cx = (x0 + x1) * 0.5f, cy = (y0 + y1) * 0.5f;
    float hx = (x1 - x0) * 0.5f - radius, hy = (y1 - y0) * 0.5f - radius;
    float qx = std::fabs(px - cx) - hx, qy = std::fabs(py - cy) - hy;
    float ox = std::max(qx, 0.0f), oy = std::max(qy, 0.0f);
    float dist = std::sqrt(ox * ox + oy * oy) + std::min(std::max(qx, qy), 0.0f) - radius;
    return clamp01(0.5f - dist);
}

static float hashCell(int x, int y, uint32_t seed) {
    uint32_t h = uint32_t(x) * 374761393u + uint32_t(y) * 668265263u + seed * 2246822519u;
    h = (h ^ (h >> 13)) * 1274126177u;
    h ^= h >> 16;
    return (h & 0xFFFFFF) / float(0xFFFFFF);
}

float tileNoise(float x, float y, int period, uint32_t seed) {
    int xi = int(std::floor(x)), yi = int(std::floor(y));
    float fx = x - xi, fy = y - yi;
    auto wrap = [period](int v) { return ((v % period) + period) % period; };
    float a = hashCell(wrap(xi), wrap(yi), seed), b = hashCell(wrap(xi + 1), wrap(yi), seed);
    float c = hashCell(wrap(xi), wrap(yi + 1), seed), d = hashCell(wrap(xi + 1), wrap(yi + 1), seed);
    float sx = fx * fx * (3 - 2 * fx), sy = fy * fy * (3 - 2 * fy);
    return (a + (b - a) * sx) * (1 - sy) + (c + (d - c) * sx) * sy;
}

float tileFbm(float x, float y, int period, int octaves, uint32_t seed) {
    float sum = 0, amp = 0.5f, norm = 0;
    for (int o = 0; o < octaves; o++) {
        sum += amp * tileNoise(x, y, period, seed + uint32_t(o) * 101u);
        norm += amp;
        x *= 2;
        y *= 2;
        period *= 2;
        amp *= 0.5f;
    }
    return sum / norm;
}

static unsigned char toByte(float v) { return (unsigned char)std::lround(clamp01(v) * 255.0f); }

bool writeTga(const std::string& path, const Image& img, bool withAlpha) {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f)
        return false;
    const int bpp = withAlpha ? 32 : 24;
    unsigned char header[18] = {0,
                                0,
                                2,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                (unsigned char)(img.w & 0xFF),
                                (unsigned char)(img.w >> 8),
                                (unsigned char)(img.h & 0xFF),
                                (unsigned char)(img.h >> 8),
                                (unsigned char)bpp,
                                (unsigned char)(withAlpha ? 8 : 0)};
    std::fwrite(header, 1, sizeof header, f);
    std::vector<unsigned char> row(size_t(img.w) * (bpp / 8));
    for (int y = img.h - 1; y >= 0; y--) {  // Targa rows run bottom-up
        unsigned char* p = row.data();
        for (int x = 0; x < img.w; x++) {
            const Rgba& c = img.at(x, y);
            *p++ = toByte(c.b);
            *p++ = toByte(c.g);
            *p++ = toByte(c.r);
            if (withAlpha)
                *p++ = toByte(c.a);
        }
        std::fwrite(row.data(), 1, row.size(), f);
    }
    return std::fclose(f) == 0;
}
