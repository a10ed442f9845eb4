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
uint32_t Be32(const std::string& b, size_t at) {
    return uint32_t((unsigned char)b[at]) << 24 | uint32_t((unsigned char)b[at + 1]) << 16 |
           uint32_t((unsigned char)b[at + 2]) << 8 | uint32_t((unsigned char)b[at + 3]);
}

// The rows of an unfiltered, uninterlaced 8-bit RGBA PNG of `size` x `size`
// (top-down, a filter byte before each row), read the way a strict decoder
// reads it; empty after a failure.
std::string Decode(const std::string& bytes, uint32_t size) {
    EXPECT_EQ(bytes.compare(0, 8, std::string("\x89PNG\r\n\x1a\n", 8)), 0) << "no PNG signature";
    std::string header, idat;
    size_t at = 8;
    for (std::string type; type != "IEND" && at + 12 <= bytes.size(); at += 12 + Be32(bytes, at)) {
        const uint32_t length = Be32(bytes, at);
        type = bytes.substr(at + 4, 4);
        if (at + 12 + length > bytes.size()) {
            ADD_FAILURE() << "chunk " << type << " runs past the end";
            return "";
        }
        const uLong crc = crc32(0L, reinterpret_cast<const Bytef*>(bytes.data() + at + 4), uInt(4 + length));
        EXPECT_EQ(Be32(bytes, at + 8 + length), uint32_t(crc)) << "bad checksum on " << type;
        if (type == "IHDR" || type == "IDAT")
            (type == "IHDR" ? header : idat) += bytes.substr(at + 8, length);
    }
    EXPECT_EQ(at, bytes.size()) << "no IEND, or bytes after it";
    // width, height, depth 8, colour type 6 (RGBA), compression, filter and interlace 0
    const char side[4] = {0, 0, char(size >> 8), char(size)};
    EXPECT_EQ(header, std::string(side, 4) + std::string(side, 4) + std::string({8, 6, 0, 0, 0}));
    std::string raw((1 + size * 4) * size, '\0');
    uLongf rawSize = uLongf(raw.size());
    if (uncompress(reinterpret_cast<Bytef*>(&raw[0]), &rawSize, reinterpret_cast<const Bytef*>(idat.data()),
                   uLong(idat.size())) != Z_OK || rawSize != raw.size()) {
        ADD_FAILURE() << "the image data does not inflate to " << size << " rows";
        return "";
    }
    return raw;
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
        SCOPED_TRACE(name);
        const std::string bytes = ReadFile(scratch.path() + "/a/" + name);
        EXPECT_TRUE(bytes == ReadFile(scratch.path() + "/b/" + name)) << "differs between runs";
        const uint32_t size = uint32_t(std::stoi(name));
        const std::string rows = Decode(bytes, size);
        if (rows.empty())
            continue;
        auto pixel = [&](double u, double v) {  // past the filter byte of row v
            const size_t at = size_t(v * size) * (1 + size * 4) + 1 + size_t(u * size) * 4;
            return reinterpret_cast<const unsigned char*>(&rows[at]);
        };
        EXPECT_EQ(pixel(0, 0)[3], 0) << "the tile's rounded corner is see-through";
        EXPECT_EQ(pixel(0.5, 0.5)[3], 255) << "the tile is opaque";
        const unsigned char* ball = pixel(0.60, 0.62);
        EXPECT_GT(ball[0] + ball[1] + ball[2], 3 * 220) << "the ball is bright";
        EXPECT_GT(pixel(0.5, 0.835)[2], pixel(0.5, 0.90)[2] + 100) << "the paddle stands out from the tile";
    }
}
