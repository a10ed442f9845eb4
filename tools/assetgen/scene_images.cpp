// Pictures of the game world and the frame around it: the sky, the splash
// screen, the console background and the model skins.
//
// Skin layouts match the texture coordinates written in data/models/*.solid:
// pictures are shown with v = 1 at the top row, and the bricks, the paddle
// and the frame keep their side faces in a band at the bottom of the picture.
#include <cmath>
#include <cstdio>
#include <vector>

#include "assets.h"
#include "image.h"

namespace {

constexpr float kPi = 3.14159265358979f;

// Tiling pictures wrap light round the edges; others clip it.
void addPixel(Image& img, int x, int y, const Rgba& c, float k, bool wrap) {
    if (wrap) {
        x = ((x % img.w) + img.w) % img.w;
        y = ((y % img.h) + img.h) % img.h;
    } else if (x < 0 || y < 0 || x >= img.w || y >= img.h) {
        return;
    }
    img.add(x, y, c, k);
}

void addStar(Image& img, float cx, float cy, float radius, const Rgba& c, bool wrap, float aspectY = 1.0f) {
    int r = int(std::ceil(radius * 4)) + 1;
    for (int dy = -r; dy <= r; dy++)
        for (int dx = -r; dx <= r; dx++) {
            int x = int(std::floor(cx)) + dx, y = int(std::floor(cy)) + dy;
            float fx = x + 0.5f - cx, fy = (y + 0.5f - cy) / aspectY;
            float d2 = (fx * fx + fy * fy) / (radius * radius);
            float k = std::exp(-d2 * 1.6f);
            if (k < 0.004f)
                continue;
            addPixel(img, x, y, c, k, wrap);
        }
}

void addFlare(Image& img, float cx, float cy, float len, const Rgba& c, bool wrap) {
    int n = int(len);
    for (int i = -n; i <= n; i++) {
        float k = std::pow(1 - std::fabs(float(i)) / (n + 1), 3.0f) * 0.8f;
        int pts[2][2] = {{int(cx) + i, int(cy)}, {int(cx), int(cy) + i}};
        for (auto& p : pts) {
            int x = p[0], y = p[1];
            addPixel(img, x, y, c, k, wrap);
        }
    }
}

Rgba starColour(Rng& rng) {
    float t = rng.uniform();
    if (t < 0.55f)
        return rgba(1, 1, 1);
    if (t < 0.80f)
        return rgba(0.72f, 0.84f, 1.0f);
    if (t < 0.93f)
        return rgba(1.0f, 0.90f, 0.72f);
    return rgba(1.0f, 0.72f, 0.62f);
}

// Seamless star field with faint nebula clouds; every face of the sky shows it.
Image makeSky() {
    const int N = 512;
    Image img(N, N);
    for (int y = 0; y < N; y++)
        for (int x = 0; x < N; x++) {
            float u = x / float(N) * 4, v = y / float(N) * 4;
            // Warping the lookup by more noise of the same period breaks up
            // the square lattice and still tiles.
            float wu = u + 1.2f * tileFbm(u, v, 4, 3, 51), wv = v + 1.2f * tileFbm(u, v, 4, 3, 52);
            float cloud = tileFbm(wu, wv, 4, 5, 11);
            float wisps = tileFbm(wu * 2 + 3.1f, wv * 2 + 1.7f, 8, 4, 23);
            float neb = smoothstep(0.45f, 0.80f, cloud);
            float neb2 = smoothstep(0.50f, 0.85f, wisps) * (0.4f + 0.6f * neb);
            Rgba c = rgba(0.010f, 0.012f, 0.035f);
            c = mix(c, rgba(0.16f, 0.06f, 0.26f), neb * 0.75f);
            c = mix(c, rgba(0.05f, 0.20f, 0.38f), neb2 * 0.55f);
            img.at(x, y) = c;
        }
    Rng rng(7);
    for (int i = 0; i < 1400; i++) {  // dim dust
        float x = rng.range(0, N), y = rng.range(0, N);
        float b = 0.15f + 0.35f * rng.uniform();
        Rgba c = starColour(rng);
        c.a = b;
        addStar(img, x, y, 0.55f, c, true);
    }
    for (int i = 0; i < 160; i++) {  // ordinary stars
        float x = rng.range(0, N), y = rng.range(0, N);
        Rgba c = starColour(rng);
        c.a = 0.6f + 0.4f * rng.uniform();
        addStar(img, x, y, 0.8f + 0.5f * rng.uniform(), c, true);
    }
    for (int i = 0; i < 9; i++) {  // a few bright ones with spikes
        float x = rng.range(0, N), y = rng.range(0, N);
        Rgba c = starColour(rng);
        addStar(img, x, y, 1.6f, c, true);
        addStar(img, x, y, 5.0f, rgba(c.r, c.g, c.b, 0.18f), true);
        addFlare(img, x, y, 9, rgba(c.r, c.g, c.b, 0.5f), true);
    }
    return img;
}

// Full-screen splash, shown stretched to the window (4:3 for every preset
// but the widest), so it is drawn for a 1024 x 768 view squeezed to 1024 x 512.
Image makeSplash(TextRenderer& tr) {
    const int W = 1024, H = 512;
    const float sy = H / 768.0f;  // texture rows per on-screen row
    Image img(W, H);
    const float horizon = 500 * sy;
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            float vy = y / sy;  // on-screen row
            Rgba c;
            if (y < horizon) {
                float t = vy / 500;
                c = mix(rgba(0.01f, 0.01f, 0.04f), rgba(0.10f, 0.04f, 0.22f), t * t);
                float neb = smoothstep(0.5f, 0.85f, tileFbm(x / 170.0f, vy / 170.0f, 16, 5, 5));
                c = mix(c, rgba(0.20f, 0.08f, 0.35f), neb * 0.6f * (1 - t * 0.5f));
            } else {
                // A floor of light lines running to the horizon.
                float d = (vy - 500) / 268;  // 0 at the horizon, 1 at the bottom
                float depth = 1 / (d + 0.02f);
                float gx = (x - W * 0.5f) / W * depth * 2.0f;
                float gz = depth * 1.2f;
                float lx = std::fabs(gx - std::round(gx)), lz = std::fabs(gz - std::round(gz));
                float lineW = 0.02f * depth * 0.5f + 0.01f;
                float grid = std::max(smoothstep(lineW, 0, lx), smoothstep(lineW * 1.5f, 0, lz));
                float fade = clamp01(d * 3);
                c = mix(rgba(0.03f, 0.01f, 0.08f), rgba(0.01f, 0.02f, 0.06f), d);
                c = mix(c, rgba(0.20f, 0.75f, 1.0f), grid * fade * 0.85f);
            }
            // Glow along the horizon.
            float g = std::exp(-std::pow((vy - 500) / 22.0f, 2.0f));
            c = mix(c, rgba(0.85f, 0.45f, 1.0f), g * 0.55f);
            img.at(x, y) = c;
        }
    Rng rng(99);
    for (int i = 0; i < 420; i++) {
        float x = rng.range(0, W), vy = rng.range(0, 480);
        Rgba c = starColour(rng);
        c.a = 0.3f + 0.7f * rng.uniform() * (1 - vy / 600);
        addStar(img, x, vy * sy, 0.7f + rng.uniform() * 0.6f, c, false, sy);
    }
    // The ball skimming over the floor, its glowing trail curving in from the left.
    const float bx = 735, by = 655, br = 24;
    for (int i = 0; i < 90; i++) {
        float t = i / 89.0f;  // 0 at the tail, 1 at the ball
        float tx = 120 + (bx - 120) * t, ty = 610 + (by - 610) * t - 120 * t * (1 - t) * 2.2f;
        float r = br * (0.25f + 0.75f * t);
        addStar(img, tx, ty * sy, r * 0.9f, rgba(0.25f, 0.75f, 1.0f, 0.22f * t * t), false, sy);
    }
    addStar(img, bx, by * sy, br * 2.2f, rgba(0.4f, 0.8f, 1.0f, 0.35f), false, sy);
    for (int y = int((by - br - 2) * sy); y <= int((by + br + 2) * sy) + 1; y++)
        for (int x = int(bx - br - 2); x <= int(bx + br + 2); x++) {
            float dx = (x + 0.5f - bx) / br, dy = ((y + 0.5f) / sy - by) / br;
            float d = std::sqrt(dx * dx + dy * dy);
            float cov = clamp01((1 - d) * br);
            if (cov <= 0 || x < 0 || y < 0 || x >= W || y >= H)
                continue;
            float z = std::sqrt(std::max(0.0f, 1 - d * d));
            float light = clamp01(0.3f + 0.7f * (z * 0.5f - dx * 0.35f - dy * 0.55f));
            float shine = std::pow(clamp01(1 - std::hypot(dx + 0.35f, dy + 0.45f) * 2.5f), 2.0f);
            Rgba c = mix(mix(rgba(0.10f, 0.30f, 0.70f), rgba(0.60f, 0.92f, 1.0f), light), rgba(1, 1, 1), shine);
            img.blend(x, y, c, cov);
        }
    // Title and a line beneath it.
    Mask title(W, H), sub(W, H);
    tr.setSize(Face::SansBold, 150, 150 * sy);
    float tw = tr.measure(Face::SansBold, "VELTHRA");
    float tcap = tr.capHeight(Face::SansBold);
    float tBase = 330 * sy;
    tr.draw(Face::SansBold, "VELTHRA", title, (W - tw) / 2, tBase, false);
    const char* subtitle = "BREAK  THROUGH  THE  STARS";
    tr.setSize(Face::Sans, 30, 30 * sy);
    float sw = tr.measure(Face::Sans, subtitle);
    tr.draw(Face::Sans, subtitle, sub, (W - sw) / 2, 410 * sy, false);
    paintMask(img, blur(dilate(title, 6), 14), 0, 0, rgba(0.45f, 0.25f, 1.0f, 0.8f));
    paintMask(img, dilate(title, 3), 0, 0, rgba(0.02f, 0.02f, 0.10f, 1));
    float top = tBase - tcap;
    paintMaskWith(img, title, 0, 0, [&](int, int y) {
        float k = clamp01((y - top) / tcap);
        return k < 0.5f ? mix(rgba(1, 1, 1), rgba(0.75f, 0.90f, 1.0f), k * 2)
                        : mix(rgba(0.25f, 0.45f, 1.0f), rgba(0.95f, 0.55f, 1.0f), (k - 0.5f) * 2);
    });
    paintMask(img, blur(sub, 3), 0, 0, rgba(0.4f, 0.8f, 1.0f, 0.6f));
    paintMask(img, sub, 0, 0, rgba(0.85f, 0.95f, 1.0f));
    return img;
}

// Console background: the game tints it with the console colour cvars.
Image makeConsoleBack() {
    const int W = 256, H = 128;
    Image img(W, H);
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            float t = y / float(H - 1);
            float scan = (y % 2) ? 0.92f : 1.0f;
            float n = tileFbm(x / 32.0f, y / 32.0f, 8, 3, 41);
            Rgba c = mix(rgba(0.18f, 0.22f, 0.34f), rgba(0.30f, 0.36f, 0.52f), t);
            c.r *= scan * (0.9f + 0.2f * n);
            c.g *= scan * (0.9f + 0.2f * n);
            c.b *= scan * (0.9f + 0.2f * n);
            c.a = 0.92f;
            if (y >= H - 3)
                c = rgba(0.75f, 0.90f, 1.0f, 1.0f);  // bright lower edge
            img.at(x, y) = c;
        }
    return img;
}

// Shading for a bevelled top face drawn into a rectangle of the skin.
float bevelLight(float x, float y, float x0, float y0, float x1, float y1, float bevel) {
    float l = x - x0, r = x1 - x, t = y - y0, b = y1 - y;
    float m = std::min(std::min(l, r), std::min(t, b));
    if (m >= bevel)
        return 0;
    if (m == t || m == l)
        return (m == t) ? 0.55f : 0.35f;  // lit from the far left
    return (m == b) ? -0.45f : -0.30f;
}

struct BrickLook {
    Rgba base, dark, accent;
    int stripes;
    bool rivets;
};

// 128 x 128; rows 0-111 the top face, rows 112-127 the sides.
Image makeBrick(const BrickLook& k, uint32_t seed) {
    const int S = 128, faceH = 112;
    Image img(S, S);
    for (int y = 0; y < S; y++)
        for (int x = 0; x < S; x++) {
            float px = x + 0.5f, py = y + 0.5f;
            if (y >= faceH) {  // side band: darker, with a lit upper lip
                float t = (py - faceH) / (S - faceH);
                Rgba c = mix(k.base, k.dark, 0.55f + 0.35f * t);
                if (t < 0.15f)
                    c = mix(c, rgba(1, 1, 1), 0.35f);
                img.at(x, y) = c;
                continue;
            }
            float t = py / faceH;
            Rgba c = mix(k.base, k.dark, 0.15f + 0.55f * t);
            float grain = tileFbm(px / 16, py / 16, 8, 3, seed) - 0.5f;
            c = mix(c, k.dark, std::fabs(grain) * 0.5f);
            // Diagonal stripes mark the tougher kinds, one more per hit point.
            if (k.stripes > 0) {
                float pitch = S / float(k.stripes + 1);
                for (int s = 1; s <= k.stripes; s++) {
                    float centre = pitch * s;
                    float d = std::fabs((px - py * 0.35f) - centre + faceH * 0.17f);
                    c = mix(c, k.accent, smoothstep(7, 4, d) * 0.85f);
                }
            }
            float light = bevelLight(px, py, 0, 0, S, faceH, 10);
            c = light > 0 ? mix(c, rgba(1, 1, 1), light) : mix(c, rgba(0, 0, 0), -light);
            // Thin outline where bricks meet.
            float edge = std::min(std::min(px, S - px), std::min(py, faceH - py));
            if (edge < 1.5f)
                c = mix(c, rgba(0, 0, 0), 0.6f);
            img.at(x, y) = c;
        }
    if (k.rivets) {
        const float pts[4][2] = {{20, 20}, {108, 20}, {20, 92}, {108, 92}};
        for (auto& p : pts)
            for (int y = -6; y <= 6; y++)
                for (int x = -6; x <= 6; x++) {
                    float d = std::sqrt(float(x * x + y * y));
                    float cov = clamp01(5.0f - d);
                    if (cov <= 0)
                        continue;
                    float light = clamp01(0.5f - (x + y) / 10.0f);
                    img.blend(int(p[0]) + x, int(p[1]) + y, mix(k.dark, rgba(1, 0.95f, 0.8f), light), cov);
                }
    }
    // Soft glass highlight near the far edge.
    for (int y = 12; y < 30; y++)
        for (int x = 14; x < S - 14; x++) {
            float a = smoothstep(12, 18, float(y)) * smoothstep(30, 22, float(y)) * 0.22f;
            img.blend(x, y, rgba(1, 1, 1), a);
        }
    return img;
}

// Frame: rows 0-127 the rail (lengthwise along x of the picture), rows
// 128-255 one tile of the floor.
Image makeFrame() {
    const int S = 256;
    Image img(S, S);
    for (int y = 0; y < S; y++)
        for (int x = 0; x < S; x++) {
            float px = x + 0.5f, py = y + 0.5f;
            Rgba c;
            if (y < 128) {
                float t = py / 128;
                // Gunmetal rail with a neon channel down its middle.
                float brushed = tileFbm(px / 64, py / 2, 4, 3, 77);
                c = mix(rgba(0.42f, 0.46f, 0.55f), rgba(0.16f, 0.18f, 0.24f), t);
                c = mix(c, rgba(0.60f, 0.64f, 0.72f), (brushed - 0.5f) * 0.5f + 0.1f);
                float ch = std::fabs(t - 0.5f);
                c = mix(c, rgba(0.05f, 0.06f, 0.10f), smoothstep(0.16f, 0.12f, ch));
                c = mix(c, rgba(0.35f, 0.95f, 1.0f), smoothstep(0.07f, 0.02f, ch));
                c = mix(c, rgba(0.85f, 1.0f, 1.0f), smoothstep(0.025f, 0.0f, ch) * 0.7f);
                // Bolt heads every quarter.
                for (int b = 0; b < 4; b++) {
                    float bx = 32 + b * 64, by = 22;
                    float d = std::hypot(px - bx, py - by);
                    c = mix(c, rgba(0.75f, 0.78f, 0.85f), clamp01(5 - d) * 0.8f);
                    float d2 = std::hypot(px - bx, py - (128 - by));
                    c = mix(c, rgba(0.35f, 0.38f, 0.45f), clamp01(5 - d2) * 0.8f);
                }
            } else {
                float fy = py - 128;
                float n = tileFbm(px / 32, fy / 32, 8, 4, 5);
                c = mix(rgba(0.03f, 0.05f, 0.11f), rgba(0.06f, 0.09f, 0.18f), n);
                // Grid lines: the tile border and one line through the middle.
                float lx = std::min(std::fabs(px - 0), std::fabs(px - 256));
                float ly = std::min(std::fabs(fy - 0), std::fabs(fy - 128));
                float mx = std::fabs(px - 128), my = std::fabs(fy - 64);
                float line =
                    std::max(smoothstep(3, 0.5f, std::min(lx, ly)), 0.55f * smoothstep(2, 0.3f, std::min(mx, my)));
                float glow = std::max(smoothstep(12, 0, std::min(lx, ly)) * 0.25f, 0.0f);
                c = mix(c, rgba(0.10f, 0.45f, 0.75f), glow);
                c = mix(c, rgba(0.30f, 0.80f, 1.0f), line * 0.8f);
            }
            img.at(x, y) = c;
        }
    return img;
}

// Ball: longitude runs across u (u = 0.5 faces the player), latitude up v.
// The light is painted in, since the game draws models unlit.
Image makeBall() {
    const int W = 128, H = 64;
    Image img(W, H);
    const float lx = -0.35f, ly = 0.80f, lz = 0.49f;
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            float u = (x + 0.5f) / W, v = 1 - (y + 0.5f) / H;
            float lon = (u - 0.5f) * 2 * kPi, lat = (v - 0.5f) * kPi;
            float nx = std::cos(lat) * std::sin(lon), ny = std::sin(lat), nz = std::cos(lat) * std::cos(lon);
            float diff = std::max(0.0f, nx * lx + ny * ly + nz * lz);
            // Half vector between the light and a viewer up and in front.
            float hx = lx, hy = ly + 0.45f, hz = lz + 0.9f;
            float hl = std::sqrt(hx * hx + hy * hy + hz * hz);
            float shine = std::pow(std::max(0.0f, (nx * hx + ny * hy + nz * hz) / hl), 40.0f);
            Rgba c = mix(rgba(0.10f, 0.30f, 0.70f), rgba(0.55f, 0.90f, 1.0f), 0.25f + 0.75f * diff);
            // A glowing equator band reads as spin.
            c = mix(c, rgba(0.80f, 1.0f, 1.0f), std::exp(-std::pow(lat / 0.12f, 2.0f)) * 0.6f);
            c = mix(c, rgba(1, 1, 1), clamp01(shine * 1.2f));
            img.at(x, y) = c;
        }
    return img;
}

// Paddle, 128 x 64: rows 0-47 the top face, rows 48-63 the sides.
Image makePaddle() {
    const int W = 128, H = 64, faceH = 48;
    Image img(W, H);
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            float px = x + 0.5f, py = y + 0.5f;
            Rgba c;
            if (y >= faceH) {
                float t = (py - faceH) / (H - faceH);
                c = mix(rgba(0.55f, 0.60f, 0.70f), rgba(0.18f, 0.20f, 0.28f), t);
                float ends = std::min(px, W - px);
                c = mix(c, rgba(0.90f, 0.30f, 0.15f), smoothstep(14, 11, ends));
            } else {
                float t = py / faceH;
                c = mix(rgba(0.85f, 0.88f, 0.95f), rgba(0.40f, 0.45f, 0.58f), t);
                float ends = std::min(px, W - px);
                // Warm caps at both ends and a glowing strip along the middle.
                c = mix(c, mix(rgba(1.0f, 0.55f, 0.25f), rgba(0.75f, 0.18f, 0.08f), t), smoothstep(14, 11, ends));
                float mid = std::fabs(py - faceH * 0.5f);
                float strip = smoothstep(6, 3, mid) * smoothstep(12, 16, ends);
                c = mix(c, rgba(0.30f, 0.90f, 1.0f), strip);
                c = mix(c, rgba(0.9f, 1.0f, 1.0f), smoothstep(2.0f, 0.0f, mid) * smoothstep(12, 16, ends) * 0.7f);
                float light = bevelLight(px, py, 0, 0, W, faceH, 5);
                c = light > 0 ? mix(c, rgba(1, 1, 1), light * 0.6f) : mix(c, rgba(0, 0, 0), -light);
            }
            img.at(x, y) = c;
        }
    return img;
}

}  // namespace

bool makeSceneImages(TextRenderer& tr, const std::string& textures) {
    bool ok = saveTga(textures + "/sky/stars_b.tga", makeSky(), false);
    ok &= saveTga(textures + "/splashscreen.tga", makeSplash(tr), false);
    ok &= saveTga(textures + "/conback.tga", makeConsoleBack(), true);
    ok &= saveTga(textures + "/frame.tga", makeFrame(), false);
    ok &= saveTga(textures + "/ball.tga", makeBall(), false);
    ok &= saveTga(textures + "/paddle.tga", makePaddle(), false);
    // One skin per kind, toughest last; colour, stripes and rivets tell them apart.
    const BrickLook looks[4] = {
        {rgba(0.30f, 0.90f, 0.55f), rgba(0.05f, 0.35f, 0.18f), rgba(0, 0, 0), 0, false},
        {rgba(0.30f, 0.65f, 1.00f), rgba(0.06f, 0.18f, 0.50f), rgba(0.85f, 0.95f, 1.0f), 1, false},
        {rgba(0.85f, 0.40f, 1.00f), rgba(0.30f, 0.06f, 0.45f), rgba(1.0f, 0.85f, 1.0f), 2, false},
        {rgba(1.00f, 0.62f, 0.20f), rgba(0.45f, 0.18f, 0.04f), rgba(0.25f, 0.10f, 0.02f), 3, true},
    };
    for (int i = 0; i < 4; i++) {
        char name[32];
        std::snprintf(name, sizeof name, "/brick%d.tga", i);
        ok &= saveTga(textures + name, makeBrick(looks[i], 300 + i), false);
    }
    return ok;
}
