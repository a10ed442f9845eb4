// The Targa reader and the texture cache on the real driver.
#include <GL/gl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "common/appstatus.h"
#include "gl_test_env.h"
#include "render/texture.h"
#include "render/tga.h"

namespace {

// 3 x 2 (rows not 4-byte aligned at 24 bits), every texel different so that
// a missed swap, a flip or row padding shows.
S_Texel Sample(int x, int row) {
    return {uint8_t(10 + x * 40), uint8_t(100 + row * 50), uint8_t(200 - x * 30), uint8_t(60 + x * 20 + row * 100)};
}

std::vector<unsigned char> SampleBytes(int bpp) {  // red first, rows in file order
    std::vector<unsigned char> bytes;
    for (int i = 0; i < 6; i++) {
        const S_Texel t = Sample(i % 3, i / 3);
        bytes.insert(bytes.end(), {t.r, t.g, t.b});
        if (bpp == 32)
            bytes.push_back(t.a);
    }
    return bytes;
}

std::vector<unsigned char> TexImage(unsigned int id, GLenum format) {
    GLint w = 0, h = 0;
    glBindTexture(GL_TEXTURE_2D, id);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &w);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &h);
    std::vector<unsigned char> texels(size_t(w * h * (format == GL_RGBA ? 4 : 3)));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, format, GL_UNSIGNED_BYTE, texels.data());
    return texels;
}

// While alive, the address space is capped at what is in use plus 1 GB: a
// reader that allocates what a damaged header claims fails at once.
struct AddressSpaceCap {
    rlimit saved{};
    AddressSpaceCap() {
        unsigned long long pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        getrlimit(RLIMIT_AS, &saved);
        rlimit capped = saved;
        capped.rlim_cur = rlim_t(pages * sysconf(_SC_PAGESIZE) + (1ull << 30));
        EXPECT_EQ(setrlimit(RLIMIT_AS, &capped), 0);
    }
    ~AddressSpaceCap() { setrlimit(RLIMIT_AS, &saved); }
};

const std::string WARNING = "WARNING! could not load texture data/textures/";

}  // namespace

using GLTexture = GLTest;

TEST_F(GLTexture, BadFilesFailWithTheWarningAndTheFallback) {
    const std::string good = TgaFile(2, 2, 24, Sample);
    auto patched = [&good](std::vector<std::pair<int, int>> changes) {
        std::string bytes = good;
        for (auto [at, value] : changes)
            bytes[size_t(at)] = char(value);
        return bytes;
    };
    std::string withId = patched({{0, 3}});
    withId.insert(18, "abc");
    const std::pair<std::string, std::string> cases[] = {
        {"rle", patched({{2, 10}})},
        {"mapped", patched({{1, 1}, {2, 1}, {16, 8}})},
        {"id", withId},
        {"zero", patched({{12, 0}})},
        {"truncated", good.substr(0, good.size() - 1)},
        // 65535 x 65535 x 4 bytes claimed by a 30-byte file: 17 GB if allocated first.
        {"oversized", patched({{12, 255}, {13, 255}, {14, 255}, {15, 255}, {16, 32}})},
    };
    DefaultTexture();
    ASSERT_NE(g_DefaultTex, 0u);
    for (const auto& [name, bytes] : cases) {
        SCOPED_TRACE(name);
        WriteFile("data/textures/" + name + ".tga", bytes);
        S_TgaImage image;
        {
            AddressSpaceCap cap;  // a bad_alloc fails the test
            EXPECT_FALSE(TGA_Read("data/textures/" + name + ".tga", image));
            EXPECT_EQ(GetTexture(name + ".tga", 0), g_DefaultTex);
        }
        EXPECT_EQ(image.pixels.capacity(), 0u);
        EXPECT_NE(ReadFile("log.txt").find(WARNING + name + ".tga\n"), std::string::npos);
    }
    EXPECT_TRUE(CTexture::TextureManger.empty());
}

TEST_F(GLTexture, UploadsOnceUnderTheExactPath) {
    const std::string footer = "TRUEVISION-XFILE footer";  // what follows the pixels is ignored
    WriteFile("data/textures/rgb.tga", TgaFile(3, 2, 24, Sample) + footer);
    WriteFile("data/textures/rgba.tga", TgaFile(3, 2, 32, Sample) + footer);
    WriteFile("data/textures/Box.tga", TgaFill(2, 2, {255, 0, 0, 255}));
    WriteFile("data/textures/box.tga", TgaFill(2, 2, {0, 0, 255, 255}));
    const unsigned int rgb = GetTexture("rgb.tga", 0);
    EXPECT_EQ(TexImage(rgb, GL_RGB), SampleBytes(24)) << "red first, no flip, no padding";
    EXPECT_EQ(TexImage(GetTexture("rgba.tga", 0), GL_RGBA), SampleBytes(32)) << "alpha reaches the texture";

    // The file is gone, yet the second use answers the same name, bound, and makes no object.
    std::filesystem::remove("data/textures/rgb.tga");
    glBindTexture(GL_TEXTURE_2D, 0);
    EXPECT_EQ(GetTexture("rgb.tga", 0), rgb);
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(unsigned(bound), rgb);
    EXPECT_EQ(CTexture::Count(), 2);

    const unsigned int upper = GetTexture("Box.tga", 0), lower = GetTexture("box.tga", 0);
    EXPECT_EQ(TexImage(upper, GL_RGB)[0], 255) << "keys differ in case";
    EXPECT_EQ(TexImage(lower, GL_RGB)[2], 255);
    for (const char* key : {"data/textures/BOX.tga", "box.tga", "data/textures/box.tga ", "data/textures/box"})
        EXPECT_EQ(CTexture::CheckPreLoaded(key), 0u) << key;
}

TEST_F(GLTexture, PreCacheWarnsOnlyBeforeTheFallbackExists) {
    AppStatus.verboseLog = true;
    PreCacheImage("early.tga", 1);
    DefaultTexture();
    PreCacheImage("late.tga", 1);
    EXPECT_EQ(FindTexture("never.tga"), g_DefaultTex);

    const std::string log = ReadFile("log.txt");
    const size_t early = log.find(WARNING + "early.tga\n");
    const size_t preCache = log.find("WARNING: could not pre-cache early.tga!\n");
    const size_t late = log.find(WARNING + "late.tga\n");
    ASSERT_NE(late, std::string::npos) << log;
    EXPECT_LT(early, preCache);
    EXPECT_LT(preCache, late);
    EXPECT_EQ(log.find("pre-cache", late), std::string::npos) << "no pre-cache warning after the fallback";
    EXPECT_NE(log.find("  ---- WARNING! could not find texture * never.tga * in list!\n"), std::string::npos);
}
