// The application icon: a violet tile with three rows of bricks (one already
// broken), a glowing ball and the paddle, in the colours of the game's glows.
// Each size is drawn from the same shapes rather than scaled down from the
// largest, so the small ones stay sharp; edges are supersampled.
#include <sys/stat.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "assets.h"
#include "image.h"

namespace {

// Premultiplied colour, so supersamples average without dark fringes.
struct Premul {
    float r = 0, g = 0, b = 0, a = 0;
    void over(const Rgba& c, float coverage) {
        float k = clamp01(c.a * coverage);
        r = c.r * k + r * (1 - k);
        g = c.g * k + g * (1 - k);
        b = c.b * k + b * (1 - k);
        a = k + a * (1 - k);
    }
};

// 1 inside the rounded rectangle, 0 outside (the supersampling smooths it).
float inRoundRect(float u, float v, float x0, float y0, float x1, float y1, float radius) {
    float cx = std::fmax(x0 + radius, std::fmin(u, x1 - radius));
    float cy = std::fmax(y0 + radius, std::fmin(v, y1 - radius));
    float dx = u - cx, dy = v - cy;
    return (u >= x0 && u <= x1 && v >= y0 && v <= y1 && dx * dx + dy * dy <= radius * radius) ? 1.0f : 0.0f;
}

const float kBallX = 0.60f, kBallY = 0.62f, kBallR = 0.075f;

Premul shade(float u, float v) {
    Premul p;
    float tile = inRoundRect(u, v, 0.03f, 0.03f, 0.97f, 0.97f, 0.20f);
    if (tile <= 0)
        return p;
    p.over(rgba(0.42f, 0.30f, 0.72f), 1);  // rim
    if (inRoundRect(u, v, 0.06f, 0.06f, 0.94f, 0.94f, 0.17f) > 0)
        p.over(mix(rgba(0.13f, 0.07f, 0.27f), rgba(0.02f, 0.03f, 0.10f), v), 1);

    static const Rgba rows[3] = {rgba(0.66f, 0.38f, 0.98f), rgba(0.25f, 0.82f, 0.98f), rgba(1.00f, 0.70f, 0.24f)};
    for (int row = 0; row < 3; row++)
        for (int col = 0; col < 4; col++) {
            if (row == 2 && col == 1)
                continue;  // broken by the ball
            float x0 = 0.15f + col * 0.18f, y0 = 0.17f + row * 0.11f;
            if (inRoundRect(u, v, x0, y0, x0 + 0.16f, y0 + 0.09f, 0.02f) <= 0)
                continue;
            float light = v < y0 + 0.03f ? 0.35f : 0.0f;  // lit top edge
            p.over(mix(rows[row], rgba(1, 1, 1), light), 1);
        }

    // Light from the ball, added over everything under it.
    float dx = u - kBallX, dy = v - kBallY, d2 = dx * dx + dy * dy;
    float glow = 0.55f * std::exp(-d2 / 0.010f);
    p.r = std::fmin(p.a, p.r + glow * 0.55f * p.a);
    p.g = std::fmin(p.a, p.g + glow * 0.90f * p.a);
    p.b = std::fmin(p.a, p.b + glow * 1.00f * p.a);
    if (d2 <= kBallR * kBallR) {
        float shine = clamp01(
            1 - std::sqrt((u - kBallX + 0.03f) * (u - kBallX + 0.03f) + (v - kBallY + 0.03f) * (v - kBallY + 0.03f)) /
                    (kBallR * 1.6f));
        p.over(mix(rgba(0.70f, 0.90f, 1.0f), rgba(1, 1, 1), shine), 1);
    }

    if (inRoundRect(u, v, 0.28f, 0.80f, 0.72f, 0.87f, 0.035f) > 0)
        p.over(v < 0.825f ? rgba(0.96f, 0.97f, 1.0f) : rgba(0.62f, 0.68f, 0.82f), 1);
    return p;
}

Image drawIcon(int size) {
    const int S = 8;  // samples per pixel along each axis
    Image img(size, size);
    for (int y = 0; y < size; y++)
        for (int x = 0; x < size; x++) {
            Premul sum;
            for (int sy = 0; sy < S; sy++)
                for (int sx = 0; sx < S; sx++) {
                    Premul s = shade((x + (sx + 0.5f) / S) / size, (y + (sy + 0.5f) / S) / size);
                    sum.r += s.r, sum.g += s.g, sum.b += s.b, sum.a += s.a;
                }
            float n = float(S * S);
            Rgba& out = img.at(x, y);
            out.a = sum.a / n;
            if (out.a > 0)
                out.r = sum.r / n / out.a, out.g = sum.g / n / out.a, out.b = sum.b / n / out.a;
        }
    return img;
}

bool makeDirs(const std::string& path) {
    for (size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        mkdir(path.substr(0, slash).c_str(), 0755);
        if (slash == std::string::npos)
            break;
    }
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

}  // namespace

bool makeIcons(const std::string& hicolor) {
    bool ok = true;
    for (int size : {32, 48, 64, 128, 256}) {
        const std::string dir = hicolor + "/" + std::to_string(size) + "x" + std::to_string(size) + "/apps";
        const std::string path = dir + "/velthra.png";
        if (!makeDirs(dir) || !writePng(path, drawIcon(size))) {
            std::fprintf(stderr, "assetgen: cannot write %s\n", path.c_str());
            ok = false;
        }
    }
    return ok;
}
