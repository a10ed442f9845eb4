// Glyph rasterising through FreeType, for the font sheet and the captions.
#pragma once

#include <string>

#include "image.h"

enum class Face { Sans, SansBold, Mono, MonoBold, CondensedBold };

class TextRenderer {
public:
    TextRenderer();
    ~TextRenderer();
    TextRenderer(const TextRenderer&) = delete;
    TextRenderer& operator=(const TextRenderer&) = delete;

    // Opens the DejaVu faces in `fontDir`; false (with a message) if any is missing.
    bool open(const std::string& fontDir);

    // Horizontal and vertical pixel sizes may differ: captions are stretched
    // by the game to their on-screen boxes, so they are drawn pre-squeezed.
    void setSize(Face face, float sizeX, float sizeY);
    // Width in pixels of `text` at the current size, from the glyph advances.
    float measure(Face face, const std::string& text);
    // Distance from the baseline to the top of a capital letter.
    float capHeight(Face face);
    // Adds the coverage of `text` to `mask`, pen starting at (x, baseline).
    void draw(Face face, const std::string& text, Mask& mask, float x, float baseline, bool hinted);
    // Renders one character code (Unicode) for the font sheet: hinted, with
    // its bitmap origin at (x, baseline); returns false if the face lacks it.
    bool drawChar(Face face, unsigned long code, Mask& mask, int x, int baseline);

private:
    struct Impl;
    Impl* impl_;
};
