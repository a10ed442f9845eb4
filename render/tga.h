// Reading uncompressed true-colour Targa files into memory, with no OpenGL
// involved. The texture loader uploads what this returns; asset tools and
// tests call it to check pictures without a window.
//
// Only one kind of file is accepted: no image ID, no colour map, image type 2,
// origin (0, 0), 24 or 32 bits per pixel and a non-zero size. Anything else
// (run-length encoded, colour-mapped, grey-scale, an ID field, 8 or 16 bits)
// is refused, and so is a file whose header promises more pixel bytes than the
// file holds: that is checked against the file length before any allocation,
// so a damaged header cannot ask for gigabytes.
#pragma once

#include <string>
#include <vector>

struct S_TgaImage {
    int width = 0, height = 0, bpp = 0;
    std::vector<unsigned char> pixels; /* RGB(A) after the channel swap, rows in file order */
};

// True when the whole image was read. On failure pixels is empty; width,
// height and bpp hold what the size record said if it was read, else 0.
bool TGA_Read(const std::string& path, S_TgaImage& image);
