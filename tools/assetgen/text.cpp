#include "text.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>
#include <cstdio>

struct TextRenderer::Impl {
    FT_Library lib = nullptr;
    FT_Face faces[5] = {};
};

TextRenderer::TextRenderer() : impl_(new Impl) {}

TextRenderer::~TextRenderer() {
    for (FT_Face f : impl_->faces)
        if (f)
            FT_Done_Face(f);
    if (impl_->lib)
        FT_Done_FreeType(impl_->lib);
    delete impl_;
}

bool TextRenderer::open(const std::string& fontDir) {
    if (FT_Init_FreeType(&impl_->lib)) {
        std::fprintf(stderr, "assetgen: FreeType does not start\n");
        return false;
    }
    const char* files[5] = {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSansMono.ttf", "DejaVuSansMono-Bold.ttf",
                            "DejaVuSansCondensed-Bold.ttf"};
    for (int i = 0; i < 5; i++) {
        std::string path = fontDir + "/" + files[i];
        if (FT_New_Face(impl_->lib, path.c_str(), 0, &impl_->faces[i])) {
            std::fprintf(stderr, "assetgen: cannot open font %s\n", path.c_str());
            return false;
        }
    }
    return true;
}

void TextRenderer::setSize(Face face, float sizeX, float sizeY) {
    FT_Set_Char_Size(impl_->faces[int(face)], FT_F26Dot6(std::lround(sizeX * 64)), FT_F26Dot6(std::lround(sizeY * 64)),
                     72, 72);
}

float TextRenderer::measure(Face face, const std::string& text) {
    FT_Face f = impl_->faces[int(face)];
    float w = 0;
    for (unsigned char ch : text) {
        if (FT_Load_Char(f, ch, FT_LOAD_NO_HINTING))
            continue;
        w += f->glyph->advance.x / 64.0f;
    }
    return w;
}

float TextRenderer::capHeight(Face face) {
    FT_Face f = impl_->faces[int(face)];
    if (FT_Load_Char(f, 'H', FT_LOAD_NO_HINTING))
        return 0;
    return f->glyph->metrics.horiBearingY / 64.0f;
}

static void blitGlyph(FT_GlyphSlot g, Mask& mask, int left, int top) {
    const FT_Bitmap& bm = g->bitmap;
    for (unsigned row = 0; row < bm.rows; row++)
        for (unsigned col = 0; col < bm.width; col++) {
            int x = left + int(col), y = top + int(row);
            if (x < 0 || y < 0 || x >= mask.w || y >= mask.h)
                continue;
            float v = bm.buffer[row * bm.pitch + col] / 255.0f;
            float& d = mask.at(x, y);
            d = std::min(1.0f, d + v);
        }
}

void TextRenderer::draw(Face face, const std::string& text, Mask& mask, float x, float baseline, bool hinted) {
    FT_Face f = impl_->faces[int(face)];
    float pen = x;
    for (unsigned char ch : text) {
        // Sub-pixel pen positions are honoured by shifting the outline.
        FT_Vector delta{FT_Pos(std::lround((pen - std::floor(pen)) * 64)), 0};
        FT_Set_Transform(f, nullptr, &delta);
        FT_Int32 flags = FT_LOAD_RENDER | (hinted ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING);
        if (FT_Load_Char(f, ch, flags) == 0) {
            FT_GlyphSlot g = f->glyph;
            blitGlyph(g, mask, int(std::floor(pen)) + g->bitmap_left, int(std::lround(baseline)) - g->bitmap_top);
            pen += g->advance.x / 64.0f;
        }
    }
    FT_Set_Transform(f, nullptr, nullptr);
}

bool TextRenderer::drawChar(Face face, unsigned long code, Mask& mask, int x, int baseline) {
    FT_Face f = impl_->faces[int(face)];
    FT_UInt index = FT_Get_Char_Index(f, code);
    if (index == 0)
        return false;
    if (FT_Load_Glyph(f, index, FT_LOAD_RENDER | FT_LOAD_TARGET_NORMAL))
        return false;
    blitGlyph(f->glyph, mask, x + f->glyph->bitmap_left, baseline - f->glyph->bitmap_top);
    return true;
}
