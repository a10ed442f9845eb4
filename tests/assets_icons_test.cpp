// The desktop icons the generator draws: real PNG files that a decoder
// accepts (checksums, header, inflated rows), at each size the install puts
// in the icon theme, the same bytes on every run.
#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "assets_support.h"

namespace {
struct Png {
    uint32_t width = 0, height = 0;
    int depth = 0, colourType = 0, interlace = 0;
    std::vector<unsigned char> rgba;  // top-down rows, 4 bytes a pixel
};

uint32_t Be32(const std::string& b, size_t at) {
    return uint32_t((unsigned char)b[at]) << 24 | uint32_t((unsigned char)b[at + 1]) << 16 |
           uint32_t((unsigned char)b[at + 2]) << 8 | uint32_t((unsigned char)b[at + 3]);
}

// Reads a PNG the way a strict decoder does; adds a failure and returns an
// empty picture on anything wrong.
Png Decode(const std::string& bytes, const std::string& name) {
    Png png;
    if (bytes.compare(0, 8, std::string("\x89PNG\r\n\x1a\n", 8)) != 0) {
        ADD_FAILURE() << name << ": no PNG signature";
        return {};
    }
    std::string idat;
    bool ended = false;
    for (size_t at = 8; at + 12 <= bytes.size() && !ended;) {
        uint32_t length = Be32(bytes, at);
        std::string type = bytes.substr(at + 4, 4);
        if (at + 12 + length > bytes.size()) {
            ADD_FAILURE() << name << ": chunk " << type << " runs past the end";
            return {};
        }
        uLong crc = crc32(0L, reinterpret_cast<const Bytef*>(bytes.data() + at + 4), uInt(4 + length));
        EXPECT_EQ(Be32(bytes, at + 8 + length), uint32_t(crc)) << name << ": bad checksum on " << type;
        if (type == "IHDR") {
            png.width = Be32(bytes, at + 8);
            png.height = Be32(bytes, at + 12);
            png.depth = (unsigned char)bytes[at + 16];
            png.colourType = (unsigned char)bytes[at + 17];
            png.interlace = (unsigned char)bytes[at + 20];
        } else if (type == "IDAT") {
            idat += bytes.substr(at + 8, length);
        } else if (type == "IEND") {
            ended = true;
            EXPECT_EQ(at + 12, bytes.size()) << name << ": bytes after IEND";
        }
        at += 12 + length;
    }
    EXPECT_TRUE(ended) << name << ": no IEND";
    if (png.depth != 8 || png.colourType != 6 || png.interlace != 0 || png.width == 0) {
        ADD_FAILURE() << name << ": not a plain 8-bit RGBA picture";
        return {};
    }
    const size_t stride = 1 + size_t(png.width) * 4;
    std::vector<unsigned char> raw(stride * png.height);
    uLongf rawSize = uLongf(raw.size());
    if (uncompress(raw.data(), &rawSize, reinterpret_cast<const Bytef*>(idat.data()), uLong(idat.size())) != Z_OK ||
        rawSize != raw.size()) {
        ADD_FAILURE() << name << ": the image data does not inflate to " << png.height << " rows";
        return {};
    }
    for (uint32_t y = 0; y < png.height; y++) {
        EXPECT_EQ(raw[y * stride], 0) << name << ": row " << y << " uses a filter";
        png.rgba.insert(png.rgba.end(), raw.begin() + long(y * stride + 1), raw.begin() + long((y + 1) * stride));
    }
    return png;
}

const unsigned char* Pixel(const Png& png, double u, double v) {
    return &png.rgba[(size_t(v * png.height) * png.width + size_t(u * png.width)) * 4];
}
} // namespace

TEST(AssetsIcons, EverySizeIsAValidPngOfTheTileBallAndPaddleAndRunsRepeat) {
    ScratchDir scratch;
    for (const char* run : {"a", "b"}) {
        std::string cmd = std::string("'") + VELTHRA_ASSETGEN + "' --icons '" + scratch.path() + "/" + run + "'";
        ASSERT_EQ(std::system(cmd.c_str()), 0) << cmd;
    }
    const std::vector<std::string> expected = {"128x128/apps/velthra.png", "256x256/apps/velthra.png",
                                               "32x32/apps/velthra.png", "48x48/apps/velthra.png",
                                               "64x64/apps/velthra.png"};
    ASSERT_EQ(ListFiles(scratch.path() + "/a"), expected);
    for (const std::string& name : expected) {
        const std::string bytes = ReadFile(scratch.path() + "/a/" + name);
        EXPECT_TRUE(bytes == ReadFile(scratch.path() + "/b/" + name)) << name << " differs between runs";
        Png png = Decode(bytes, name);
        if (png.rgba.empty()) continue;
        const uint32_t size = uint32_t(std::stoi(name));
        EXPECT_EQ(png.width, size) << name;
        EXPECT_EQ(png.height, size) << name;
        EXPECT_EQ(Pixel(png, 0, 0)[3], 0) << name << ": the tile's rounded corner is see-through";
        EXPECT_EQ(Pixel(png, 0.5, 0.5)[3], 255) << name << ": the tile is opaque";
        const unsigned char* ball = Pixel(png, 0.60, 0.62);
        EXPECT_GT(ball[0] + ball[1] + ball[2], 3 * 220) << name << ": the ball is bright";
        const unsigned char* paddle = Pixel(png, 0.5, 0.835);
        const unsigned char* below = Pixel(png, 0.5, 0.90);
        EXPECT_GT(paddle[2], below[2] + 100) << name << ": the paddle stands out from the tile";
    }
}
