#include "render/tga.h"

#include <cstdio>
#include <cstring>

namespace {

// Type 2 (uncompressed true-colour), no ID field, no colour map, origin 0, 0.
const unsigned char TGA_HEADER[12] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};

// What is left of the file after the current position, or -1 when the
// stream cannot tell (a pipe, say); the caller then refuses the file.
long RemainingBytes(FILE* file) {
    long here = std::ftell(file);
    if (here < 0 || std::fseek(file, 0, SEEK_END) != 0)
        return -1;
    long end = std::ftell(file);
    if (end < 0 || std::fseek(file, here, SEEK_SET) != 0)
        return -1;
    return end - here;
}

bool ReadBody(FILE* file, S_TgaImage& image) {
    unsigned char header[12];
    if (std::fread(header, 1, sizeof header, file) != sizeof header ||
        std::memcmp(header, TGA_HEADER, sizeof header) != 0)
        return false;

    unsigned char size[6];
    if (std::fread(size, 1, sizeof size, file) != sizeof size)
        return false;
    // size[5], the image descriptor, is ignored: rows stay in file order.
    image.width = size[0] | (size[1] << 8);
    image.height = size[2] | (size[3] << 8);
    image.bpp = size[4];
    if (image.width == 0 || image.height == 0 || (image.bpp != 24 && image.bpp != 32))
        return false;

    const size_t bytesPerPixel = size_t(image.bpp) / 8;
    const size_t dataSize = bytesPerPixel * size_t(image.width) * size_t(image.height);
    long remaining = RemainingBytes(file);
    if (remaining < 0 || size_t(remaining) < dataSize)
        return false;

    image.pixels.resize(dataSize);
    if (std::fread(image.pixels.data(), 1, dataSize, file) != dataSize)
        return false;

    // The file stores blue, green, red[, alpha]; OpenGL is given red first.
    for (size_t i = 0; i < dataSize; i += bytesPerPixel) {
        unsigned char blue = image.pixels[i];
        image.pixels[i] = image.pixels[i + 2];
        image.pixels[i + 2] = blue;
    }
    return true;
}

}  // namespace

bool TGA_Read(const std::string& path, S_TgaImage& image) {
    image = S_TgaImage();
    FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return false;
    bool ok = ReadBody(file, image);
    std::fclose(file);
    if (!ok) {
        image.pixels.clear();
        image.pixels.shrink_to_fit();
    }
    return ok;
}
