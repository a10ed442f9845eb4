// Font.tga: 16 x 16 cells of 16 pixels. The game draws each cell as a
// 16 x 16 quad and advances the pen 10 units, so every glyph must sit in the
// left 10 or so pixels of its cell; a 15-pixel DejaVu Sans Mono advances 9.
// Cells 0-127 are codes 32-159 in the regular face, 128-255 the same codes in
// bold. Codes 128-159 take the Windows-1252 characters of those bytes.
#include <cstdio>

#include "assets.h"
#include "image.h"

namespace {

constexpr int kCell = 16;
constexpr int kBaseline = 12;  // pixels from the cell top; leaves 4 for descenders

unsigned long unicodeFor(int code) {
    static const unsigned short cp1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                              0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    if (code >= 128 && code < 160)
        return cp1252[code - 128];
    return (unsigned long)code;
}

}  // namespace

bool makeFontSheet(TextRenderer& text, const std::string& textures) {
    const int size = kCell * 16;
    Image sheet(size, size, rgba(1, 1, 1, 0));  // white everywhere: filtering never darkens edges
    for (int set = 0; set < 2; set++) {
        Face face = set == 0 ? Face::Mono : Face::MonoBold;
        text.setSize(face, 15, 15);
        for (int i = 0; i < 128; i++) {
            int cell = set * 128 + i;
            int code = 32 + i;
            unsigned long uc = unicodeFor(code);
            if (code == 32 || uc == 0)
                continue;
            Mask glyph(kCell, kCell);
            // One pixel in from the left keeps linear filtering off the neighbour.
            if (!text.drawChar(face, uc, glyph, 1, kBaseline))
                continue;
            // The bold set is the HUD's: give it a faint halo so it reads over the field.
            Mask halo = set == 1 ? blur(dilate(glyph, 1), 1, 1) : Mask(kCell, kCell);
            int ox = (cell % 16) * kCell, oy = (cell / 16) * kCell;
            for (int y = 1; y < kCell; y++)
                for (int x = 0; x < kCell - 1; x++) {
                    float a = glyph.at(x, y);
                    if (set == 1)
                        a = a + (1 - a) * 0.35f * halo.at(x, y);
                    sheet.at(ox + x, oy + y).a = clamp01(a);
                }
        }
    }
    return saveTga(textures + "/Font.tga", sheet, true);
}
