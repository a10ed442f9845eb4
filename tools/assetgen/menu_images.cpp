// Menu pictures: the title, one captioned image per button and label, the
// widget parts (slider track and knob, check box states, list arrows) and the
// mouse pointer.
//
// Buttons and labels are stretched by the game to boxes whose shape changes
// with the resolution, so each caption is drawn for the on-screen shape it
// mostly has (its aspect), squeezed into the texture; the stretch then
// restores the letter shapes. Everything around the text stays transparent.
#include <cmath>
#include <cstdio>
#include <vector>

#include "assets.h"
#include "image.h"

namespace {

enum class Style { Button, Heading, Label };
enum class Align { Left, Centre };

struct Caption {
    const char* file;
    const char* text;
    int texW, texH;
    float aspect;  // on-screen width / height the picture is made for
    Style style;
    Align align;
    float capFrac;  // capital height as a share of the picture height
};

// Keep in step with data/scripts/menu.xml (sizes and the converted shapes).
const Caption kCaptions[] = {
    {"btn_newgame.tga", "New Game", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"btn_options.tga", "Options", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"btn_scores.tga", "High Scores", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"btn_quit.tga", "Quit", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"btn_back.tga", "Back", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"btn_resume.tga", "Resume", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"btn_mainmenu.tga", "Main Menu", 256, 128, 2.5f, Style::Button, Align::Centre, 0.26f},
    {"lbl_options.tga", "Options", 256, 128, 2.5f, Style::Heading, Align::Centre, 0.34f},
    {"lbl_scores.tga", "High Scores", 256, 128, 2.5f, Style::Heading, Align::Centre, 0.34f},
    {"lbl_paused.tga", "Paused", 256, 128, 2.5f, Style::Heading, Align::Centre, 0.34f},
    {"lbl_gameover.tga", "Game Over", 256, 128, 2.5f, Style::Heading, Align::Centre, 0.34f},
    {"lbl_entername.tga", "Enter your name", 256, 128, 3.1f, Style::Label, Align::Left, 0.24f},
    {"lbl_returnhint.tga", "Press Return to confirm", 256, 128, 3.1f, Style::Label, Align::Left, 0.18f},
    {"lbl_fullscreen.tga", "Fullscreen", 256, 128, 2.5f, Style::Label, Align::Left, 0.24f},
    {"lbl_blur.tga", "Motion blur", 256, 128, 2.5f, Style::Label, Align::Left, 0.24f},
    {"lbl_particles.tga", "Particles", 256, 128, 2.5f, Style::Label, Align::Left, 0.24f},
    {"lbl_showfps.tga", "Show FPS", 256, 128, 2.5f, Style::Label, Align::Left, 0.24f},
    {"lbl_volume.tga", "Volume", 256, 128, 1.87f, Style::Label, Align::Left, 0.24f},
    {"lbl_brightness.tga", "Brightness", 256, 128, 1.87f, Style::Label, Align::Left, 0.24f},
    {"lbl_resolution.tga", "Resolution", 256, 128, 1.87f, Style::Label, Align::Left, 0.24f},
};

// Text placed in a picture: its coverage mask and where the capitals sit.
struct PlacedText {
    Mask mask;
    float top, baseline, left, right;
};

PlacedText placeText(TextRenderer& tr, Face face, const Caption& c, float marginX, float maxCapFrac) {
    float sx = c.texW / (c.texH * c.aspect);  // texture pixels per on-screen pixel, across
    tr.setSize(face, 100 * sx, 100);
    float capAt100 = tr.capHeight(face);
    float widthAt100 = tr.measure(face, c.text);
    float em = maxCapFrac * c.texH / capAt100 * 100;
    float room = c.texW * (1 - 2 * marginX);
    if (widthAt100 * em / 100 > room)
        em = room / widthAt100 * 100;
    tr.setSize(face, em * sx, em);
    float width = tr.measure(face, c.text);
    float cap = tr.capHeight(face);
    PlacedText p{Mask(c.texW, c.texH), 0, 0, 0, 0};
    p.left = c.align == Align::Centre ? (c.texW - width) * 0.5f : c.texW * marginX;
    p.right = p.left + width;
    p.baseline = std::round(c.texH * 0.5f + cap * 0.5f);
    p.top = p.baseline - cap;
    tr.draw(face, c.text, p.mask, p.left, p.baseline, false);
    return p;
}

Image makeCaption(TextRenderer& tr, const Caption& c) {
    Image img(c.texW, c.texH, rgba(0.6f, 0.8f, 1.0f, 0));
    const float sx = c.texW / (c.texH * c.aspect);
    if (c.style == Style::Button) {
        // A glassy plate: the hover tint multiplies it, so it is kept light enough to show.
        float vw = c.texH * c.aspect, vh = float(c.texH);
        float x0 = vw * 0.03f, x1 = vw * 0.97f, y0 = vh * 0.12f, y1 = vh * 0.88f, r = vh * 0.22f;
        for (int y = 0; y < c.texH; y++)
            for (int x = 0; x < c.texW; x++) {
                float px = (x + 0.5f) / sx, py = y + 0.5f;
                float outer = roundRectCoverage(px, py, x0, y0, x1, y1, r);
                if (outer <= 0)
                    continue;
                float inner = roundRectCoverage(px, py, x0 + 3, y0 + 3, x1 - 3, y1 - 3, r - 3);
                float t = (py - y0) / (y1 - y0);
                Rgba fill = mix(rgba(0.16f, 0.30f, 0.52f, 0.80f), rgba(0.03f, 0.07f, 0.18f, 0.88f), t);
                // Sheen across the upper half of the plate.
                float sheen = smoothstep(0.55f, 0.15f, t) * 0.22f;
                fill = mix(fill, rgba(0.75f, 0.90f, 1.0f, fill.a), sheen);
                Rgba rim = mix(rgba(0.70f, 0.92f, 1.0f, 0.95f), rgba(0.25f, 0.55f, 0.95f, 0.95f), t);
                img.blend(x, y, rim, outer - inner);
                img.blend(x, y, fill, inner);
            }
        PlacedText t = placeText(tr, Face::SansBold, c, 0.12f, c.capFrac);
        paintMask(img, blur(shifted(t.mask, 2, 3), 2), 0, 0, rgba(0, 0, 0.05f, 0.75f));
        paintMaskWith(img, t.mask, 0, 0, [&](int, int y) {
            float k = clamp01((y - t.top) / (t.baseline - t.top));
            return mix(rgba(1, 1, 1), rgba(0.72f, 0.90f, 1.0f), k);
        });
    } else if (c.style == Style::Heading) {
        PlacedText t = placeText(tr, Face::SansBold, c, 0.08f, c.capFrac);
        paintMask(img, blur(dilate(t.mask, 3), 6), 0, 0, rgba(0.15f, 0.55f, 1.0f, 0.55f));
        paintMask(img, dilate(t.mask, 2), 0, 0, rgba(0.02f, 0.05f, 0.16f, 0.95f));
        paintMaskWith(img, t.mask, 0, 0, [&](int, int y) {
            float k = clamp01((y - t.top) / (t.baseline - t.top));
            // Chrome: bright above a horizon line, deeper blue below it.
            return k < 0.5f ? mix(rgba(1, 1, 1), rgba(0.78f, 0.93f, 1.0f), k * 2)
                            : mix(rgba(0.30f, 0.62f, 1.0f), rgba(0.62f, 0.95f, 1.0f), (k - 0.5f) * 2);
        });
    } else {
        PlacedText t = placeText(tr, Face::SansBold, c, 0.04f, c.capFrac);
        paintMask(img, blur(shifted(t.mask, 1, 2), 2), 0, 0, rgba(0, 0, 0, 0.85f));
        paintMaskWith(img, t.mask, 0, 0, [&](int, int y) {
            float k = clamp01((y - t.top) / (t.baseline - t.top));
            return mix(rgba(0.97f, 0.99f, 1.0f), rgba(0.70f, 0.86f, 1.0f), k);
        });
    }
    return img;
}

// The game's name, drawn large: chrome letters with a dark rim and a blue glow.
Image makeTitle(TextRenderer& tr) {
    const int W = 512, H = 128;
    Image img(W, H, rgba(0.5f, 0.8f, 1.0f, 0));
    Caption c{"title.tga", "VELTHRA", W, H, 4.0f, Style::Heading, Align::Centre, 0.5f};
    PlacedText t = placeText(tr, Face::SansBold, c, 0.06f, c.capFrac);
    // A thin flare through the letters' middle.
    Mask flare(W, H);
    float mid = (t.top + t.baseline) * 0.5f;
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            float dx = (x - W * 0.5f) / (W * 0.48f), dy = (y - mid) / 2.5f;
            flare.at(x, y) = clamp01(1 - dx * dx) * std::exp(-dy * dy);
        }
    paintMask(img, blur(dilate(t.mask, 4), 8), 0, 0, rgba(0.10f, 0.45f, 1.0f, 0.70f));
    paintMask(img, flare, 0, 0, rgba(0.55f, 0.85f, 1.0f, 0.85f));
    paintMask(img, dilate(t.mask, 3), 0, 0, rgba(0.02f, 0.04f, 0.14f, 1.0f));
    paintMaskWith(img, t.mask, 0, 0, [&](int x, int y) {
        float k = clamp01((y - t.top) / (t.baseline - t.top));
        Rgba chrome = k < 0.52f ? mix(rgba(1, 1, 1), rgba(0.70f, 0.88f, 1.0f), k / 0.52f)
                                : mix(rgba(0.12f, 0.38f, 0.95f), rgba(0.55f, 0.92f, 1.0f), (k - 0.52f) / 0.48f);
        // A diagonal glint across the chrome.
        float g = std::exp(-std::pow((x - y * 0.8f - W * 0.3f) / 10.0f, 2.0f));
        return mix(chrome, rgba(1, 1, 1), g * 0.6f);
    });
    return img;
}

// Dark rounded square that the opaque widgets sit on.
Rgba widgetBase(float px, float py, float size, float& rimOut) {
    float outer = roundRectCoverage(px, py, 1, 1, size - 1, size - 1, 6);
    float inner = roundRectCoverage(px, py, 3, 3, size - 3, size - 3, 4);
    rimOut = outer - inner;
    float t = py / size;
    Rgba bg = rgba(0, 0, 0);
    Rgba face = mix(rgba(0.10f, 0.16f, 0.30f), rgba(0.03f, 0.05f, 0.12f), t);
    Rgba c = mix(bg, face, inner);
    return mix(c, mix(rgba(0.65f, 0.88f, 1.0f), rgba(0.25f, 0.50f, 0.90f), t), rimOut);
}

// Anti-aliased polygon coverage by 4 x 4 supersampling.
float polyCoverage(const std::vector<float>& xy, float px, float py) {
    int inside = 0;
    for (int sy = 0; sy < 4; sy++)
        for (int sx = 0; sx < 4; sx++) {
            float x = px + (sx + 0.5f) / 4, y = py + (sy + 0.5f) / 4;
            bool in = false;
            size_t n = xy.size() / 2;
            for (size_t i = 0, j = n - 1; i < n; j = i++) {
                float xi = xy[2 * i], yi = xy[2 * i + 1], xj = xy[2 * j], yj = xy[2 * j + 1];
                if ((yi > y) != (yj > y) && x < (xj - xi) * (y - yi) / (yj - yi) + xi)
                    in = !in;
            }
            inside += in;
        }
    return inside / 16.0f;
}

Mask polyMask(int w, int h, const std::vector<float>& xy) {
    Mask m(w, h);
    for (int y = 0; y < h; y++)
        for (int x = 0; x < w; x++)
            m.at(x, y) = polyCoverage(xy, float(x), float(y));
    return m;
}

// The rounded 32 x 32 plate under the checkbox and the list arrows.
Image widgetPlate() {
    Image img(32, 32);
    for (int y = 0; y < 32; y++)
        for (int x = 0; x < 32; x++) {
            float rim;
            img.at(x, y) = widgetBase(x + 0.5f, y + 0.5f, 32, rim);
        }
    return img;
}

Image makeCheckBox(bool checked) {
    Image img = widgetPlate();
    if (checked) {
        std::vector<float> tick = {7, 16, 11, 12, 14.5f, 16, 24, 5.5f, 27, 9, 14.5f, 24};
        Mask m = polyMask(32, 32, tick);
        paintMask(img, blur(m, 2), 0, 0, rgba(0.2f, 1.0f, 0.6f, 0.6f));
        paintMaskWith(img, m, 0, 0,
                      [](int, int y) { return mix(rgba(0.75f, 1, 0.85f), rgba(0.15f, 0.85f, 0.45f), y / 32.0f); });
    }
    return img;
}

Image makeArrow(bool right) {
    Image img = widgetPlate();
    std::vector<float> tri =
        right ? std::vector<float>{11, 8, 23, 16, 11, 24} : std::vector<float>{21, 8, 9, 16, 21, 24};
    Mask m = polyMask(32, 32, tri);
    paintMask(img, blur(m, 2), 0, 0, rgba(0.3f, 0.7f, 1.0f, 0.7f));
    paintMaskWith(img, m, 0, 0, [](int, int y) { return mix(rgba(1, 1, 1), rgba(0.55f, 0.80f, 1.0f), y / 32.0f); });
    return img;
}

// Slider track, drawn opaque at 128 x 32. The knob's centre runs from 16 to
// 112 pixels, so the groove spans exactly that, filling from dim to bright.
Image makeTrack() {
    Image img(128, 32, rgba(0, 0, 0));
    for (int y = 0; y < 32; y++)
        for (int x = 0; x < 128; x++) {
            float px = x + 0.5f, py = y + 0.5f;
            float outer = roundRectCoverage(px, py, 10, 11, 118, 21, 5);
            float inner = roundRectCoverage(px, py, 12, 13, 116, 19, 3);
            float t = clamp01((px - 16) / 96);
            Rgba glow = mix(rgba(0.05f, 0.20f, 0.45f), rgba(0.25f, 0.80f, 1.0f), t);
            Rgba c = mix(rgba(0, 0, 0), rgba(0.55f, 0.75f, 1.0f), outer - inner);
            c = mix(c, glow, inner);
            img.at(x, y) = c;
        }
    // Tick marks every quarter of the range, below the groove.
    for (int i = 0; i <= 4; i++) {
        int x = 16 + i * 24;
        for (int y = 24; y < 28; y++)
            img.at(x, y) = rgba(0.45f, 0.65f, 0.9f);
    }
    return img;
}

// Slider knob: a glossy sphere, blended.
Image makeKnob() {
    Image img(32, 32, rgba(0.6f, 0.85f, 1.0f, 0));
    for (int y = 0; y < 32; y++)
        for (int x = 0; x < 32; x++) {
            float dx = (x + 0.5f - 16) / 12, dy = (y + 0.5f - 16) / 12;
            float d = std::sqrt(dx * dx + dy * dy);
            float cov = clamp01((1 - d) * 12);
            // Dark rim so the knob stands out on the bright end of the track.
            float rim = clamp01((1.18f - d) * 12);
            if (rim > 0)
                img.blend(x, y, rgba(0.0f, 0.03f, 0.10f, 0.9f), rim);
            if (cov <= 0)
                continue;
            float z = std::sqrt(std::max(0.0f, 1 - d * d));
            float light = clamp01(0.35f + 0.65f * (z * 0.6f - dx * 0.3f - dy * 0.5f));
            float shine = std::pow(clamp01(1 - std::hypot(dx + 0.35f, dy + 0.4f) * 2.2f), 2.0f);
            Rgba c = mix(rgba(0.08f, 0.25f, 0.55f), rgba(0.55f, 0.88f, 1.0f), light);
            c = mix(c, rgba(1, 1, 1), shine);
            img.blend(x, y, c, cov);
        }
    return img;
}

// Mouse pointer; the game puts the picture's top-left corner at the hot spot.
Image makeCursor() {
    Image img(32, 32, rgba(1, 1, 1, 0));
    std::vector<float> arrow = {1, 1, 1, 21, 6, 16.5f, 10, 25, 13.5f, 23.5f, 9.5f, 15, 16, 15};
    Mask m = polyMask(32, 32, arrow);
    Mask rim = dilate(m, 1);
    paintMask(img, blur(shifted(rim, 2, 2), 1), 0, 0, rgba(0, 0, 0, 0.5f));
    paintMask(img, rim, 0, 0, rgba(0.02f, 0.05f, 0.15f, 1));
    paintMaskWith(img, m, 0, 0,
                  [](int x, int y) { return mix(rgba(1, 1, 1), rgba(0.55f, 0.85f, 1.0f), clamp01((x + y) / 30.0f)); });
    return img;
}

}  // namespace

bool makeMenuImages(TextRenderer& tr, const std::string& textures) {
    bool ok = saveTga(textures + "/title.tga", makeTitle(tr), true);
    for (const Caption& c : kCaptions)
        ok &= saveTga(textures + "/" + c.file, makeCaption(tr, c), true);
    ok &= saveTga(textures + "/box.tga", makeCheckBox(false), false);
    ok &= saveTga(textures + "/check.tga", makeCheckBox(true), false);
    ok &= saveTga(textures + "/arrowlt.tga", makeArrow(false), false);
    ok &= saveTga(textures + "/arrowrt.tga", makeArrow(true), false);
    ok &= saveTga(textures + "/volume.tga", makeTrack(), false);
    ok &= saveTga(textures + "/dot.tga", makeKnob(), true);
    ok &= saveTga(textures + "/cursor.tga", makeCursor(), true);
    return ok;
}
