// The smallest PNG writer that desktops accept: one IHDR, one IDAT, one IEND.
// The bytes depend only on the picture (no time chunk, fixed zlib level).
#include <zlib.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "image.h"

namespace {
void put32(std::vector<unsigned char>& out, uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back((unsigned char)(v >> shift));
}

void chunk(std::vector<unsigned char>& out, const char type[4], const std::vector<unsigned char>& data) {
    put32(out, uint32_t(data.size()));
    size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data.begin(), data.end());
    uLong crc = crc32(0L, out.data() + start, uInt(out.size() - start));
    put32(out, uint32_t(crc));
}

unsigned char toByte(float v) { return (unsigned char)std::lround(clamp01(v) * 255.0f); }
}  // namespace

bool writePng(const std::string& path, const Image& img) {
    std::vector<unsigned char> raw;
    raw.reserve(size_t(img.h) * (1 + size_t(img.w) * 4));
    for (int y = 0; y < img.h; y++) {
        raw.push_back(0);  // filter: none
        for (int x = 0; x < img.w; x++) {
            const Rgba& c = img.at(x, y);
            raw.insert(raw.end(), {toByte(c.r), toByte(c.g), toByte(c.b), toByte(c.a)});
        }
    }
    uLongf packedSize = compressBound(uLong(raw.size()));
    std::vector<unsigned char> packed(packedSize);
    if (compress2(packed.data(), &packedSize, raw.data(), uLong(raw.size()), 9) != Z_OK)
        return false;
    packed.resize(packedSize);

    std::vector<unsigned char> file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<unsigned char> header;
    put32(header, uint32_t(img.w));
    put32(header, uint32_t(img.h));
    header.insert(header.end(), {8, 6, 0, 0, 0});  // depth, RGBA, deflate, adaptive filters, no interlace
    chunk(file, "IHDR", header);
    chunk(file, "IDAT", packed);
    chunk(file, "IEND", {});

    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f)
        return false;
    bool ok = std::fwrite(file.data(), 1, file.size(), f) == file.size();
    return (std::fclose(f) == 0) && ok;
}
