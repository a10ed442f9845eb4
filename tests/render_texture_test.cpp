// The Targa reader, the texture cache, the fallback texture and the BMP path.
#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "app/appstatus.h"
#include "app/log.h"
#include "gl_test_env.h"
#include "render/texture.h"
#include "render/tga.h"

namespace {

// A 3 x 2 picture (odd width, rows not 4-byte aligned at 24 bits): every
// texel different so a swap, a flip or a padding fault shows.
S_Texel Sample(int x, int row) { return MakeTexel(10 + x * 40, 100 + row * 50, 200 - x * 30, 60 + x * 20 + row * 100); }

std::vector<unsigned char> TexImage(unsigned int id, int width, int height, GLenum format) {
    int channels = format == GL_RGBA ? 4 : 3;
    std::vector<unsigned char> texels(size_t(width * height * channels));
    glBindTexture(GL_TEXTURE_2D, id);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, format, GL_UNSIGNED_BYTE, texels.data());
    return texels;
}

size_t Count(const std::string& text, const std::string& what) {
    size_t n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        n++;
    return n;
}

// Caps the address space at what the process uses now plus 1 GB, so that a
// reader which allocates what a damaged header claims fails at once instead
// of quietly succeeding on a machine with plenty of memory.
class AddressSpaceCap {
public:
    AddressSpaceCap() {
        if (getrlimit(RLIMIT_AS, &saved_) != 0)
            return;
        std::ifstream status("/proc/self/status");
        std::string key;
        unsigned long long kilobytes = 0;
        while (status >> key) {
            if (key == "VmSize:") {
                status >> kilobytes;
                break;
            }
        }
        if (kilobytes == 0)
            return;
        rlimit capped = saved_;
        capped.rlim_cur = rlim_t(kilobytes * 1024ull + (1ull << 30));
        if (saved_.rlim_max != RLIM_INFINITY && capped.rlim_cur > saved_.rlim_max)
            capped.rlim_cur = saved_.rlim_max;
        active_ = setrlimit(RLIMIT_AS, &capped) == 0;
    }
    ~AddressSpaceCap() {
        if (active_)
            setrlimit(RLIMIT_AS, &saved_);
    }
    bool active() const { return active_; }

private:
    rlimit saved_{};
    bool active_ = false;
};

class RenderTexture : public ::testing::Test {
protected:
    void SetUp() override {
        AppStatus = S_AppStatus();
        Texture_Reset();
    }
    void TearDown() override { Texture_Reset(); }
};

} // namespace

TEST(RenderTga, ReadsTrueColourFilesWithTheChannelSwapAndRowsInFileOrder) {
    TestFolder folder;
    WriteBytes("rgb.tga", TgaFile(3, 2, 24, Sample));
    WriteBytes("rgba.tga", TgaFile(3, 2, 32, Sample) + "TRUEVISION-XFILE footer after the data");

    S_TgaImage image;
    ASSERT_TRUE(TGA_Read("rgb.tga", image));
    EXPECT_EQ(image.width, 3);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.bpp, 24);
    ASSERT_EQ(image.pixels.size(), 18u);
    for (int row = 0; row < 2; row++) {
        for (int x = 0; x < 3; x++) {
            const unsigned char* p = &image.pixels[size_t((row * 3 + x) * 3)];
            S_Texel t = Sample(x, row);
            EXPECT_EQ(p[0], t.r) << x << "," << row;
            EXPECT_EQ(p[1], t.g) << x << "," << row;
            EXPECT_EQ(p[2], t.b) << x << "," << row;
        }
    }

    ASSERT_TRUE(TGA_Read("rgba.tga", image));
    EXPECT_EQ(image.bpp, 32);
    ASSERT_EQ(image.pixels.size(), 24u);
    const unsigned char* last = &image.pixels[20];
    EXPECT_EQ(last[0], Sample(2, 1).r);
    EXPECT_EQ(last[2], Sample(2, 1).b);
    EXPECT_EQ(last[3], Sample(2, 1).a) << "alpha is kept";
}

TEST(RenderTga, RefusesEveryOtherKindOfFileWithoutAllocating) {
    TestFolder folder;
    const std::string body = TgaFile(2, 2, 24, Sample).substr(18);
    auto withHeader = [&](const std::function<void(S_TgaHeader&)>& change, const std::string& data) {
        S_TgaHeader h;
        h.width = 2;
        h.height = 2;
        h.bpp = 24;
        change(h);
        return TgaHeaderBytes(h) + data;
    };
    struct Case {
        const char* name;
        std::string bytes;
    };
    const std::vector<Case> cases = {
        {"run-length encoded", withHeader([](S_TgaHeader& h) { h.imageType = 10; }, body)},
        {"colour-mapped", withHeader([](S_TgaHeader& h) { h.imageType = 1; h.colourMapType = 1; h.bpp = 8; },
                                     std::string(4, '\1'))},
        {"grey-scale", withHeader([](S_TgaHeader& h) { h.imageType = 3; h.bpp = 8; }, std::string(4, '\1'))},
        {"ID field", withHeader([](S_TgaHeader& h) { h.idLength = 3; }, "abc" + body)},
        {"non-zero origin", withHeader([](S_TgaHeader& h) { h.originX = 1; }, body)},
        {"zero width", withHeader([](S_TgaHeader& h) { h.width = 0; }, body)},
        {"zero height", withHeader([](S_TgaHeader& h) { h.height = 0; }, body)},
        {"16 bits", withHeader([](S_TgaHeader& h) { h.bpp = 16; }, body)},
        {"truncated data", withHeader([](S_TgaHeader&) {}, body.substr(0, body.size() - 1))},
        {"short header", std::string(10, '\0')},
        {"no size record", TgaHeaderBytes(S_TgaHeader()).substr(0, 15)},
        {"empty", ""},
        // 65535 x 65535 x 4 bytes claimed by a 30-byte file: a reader that
        // allocated first would ask for 17 GB.
        {"oversized", withHeader([](S_TgaHeader& h) { h.width = h.height = 65535; h.bpp = 32; }, "tiny")},
    };
    for (const Case& c : cases) {
        WriteBytes("bad.tga", c.bytes);
        S_TgaImage image;
        image.pixels.assign(5, 1);  // stale content must not survive
        bool read = true;
        {
            AddressSpaceCap cap;
            EXPECT_TRUE(cap.active());
            EXPECT_NO_THROW(read = TGA_Read("bad.tga", image)) << c.name;
        }
        EXPECT_FALSE(read) << c.name;
        EXPECT_TRUE(image.pixels.empty()) << c.name;
        EXPECT_EQ(image.pixels.capacity(), 0u) << c.name;
    }
    S_TgaImage image;
    EXPECT_FALSE(TGA_Read("no-such-file.tga", image));
}

TEST_F(RenderTexture, LoadsBothDepthsOnceAndKeysThemByTheExactPath) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    WriteBytes("data/textures/rgb.tga", TgaFile(3, 2, 24, Sample));
    WriteBytes("data/textures/rgba.tga", TgaFile(3, 2, 32, Sample));
    WriteBytes("data/textures/Box.tga", SolidColourTga(2, 2, 24, MakeTexel(255, 0, 0)));
    WriteBytes("data/textures/box.tga", SolidColourTga(2, 2, 24, MakeTexel(0, 0, 255)));

    unsigned int rgb = GetTexture("rgb.tga", 0);
    ASSERT_NE(rgb, 0u);
    std::vector<unsigned char> texels = TexImage(rgb, 3, 2, GL_RGB);
    EXPECT_EQ(texels[0], Sample(0, 0).r) << "file row 0 is texture row 0: nothing flipped";
    EXPECT_EQ(texels[2], Sample(0, 0).b);
    EXPECT_EQ(texels[9 + 3 * 2 + 1], Sample(2, 1).g) << "odd rows are packed, not padded";

    unsigned int rgba = GetTexture("rgba.tga", 0);
    ASSERT_NE(rgba, 0u);
    EXPECT_NE(rgba, rgb);
    texels = TexImage(rgba, 3, 2, GL_RGBA);
    for (int i = 0; i < 6; i++)
        EXPECT_EQ(texels[size_t(i * 4 + 3)], Sample(i % 3, i / 3).a) << "alpha of texel " << i;
    GLint alphaBits = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_ALPHA_SIZE, &alphaBits);
    EXPECT_GT(alphaBits, 0);
    EXPECT_EQ(CTexture::texture[0].bpp, 32) << "record 0 is the working record";
    EXPECT_EQ(CTexture::texture[0].fileName, "data/textures/rgba.tga");
    EXPECT_EQ(CTexture::texture[0].imageData.size(), 24u) << "the pixels stay after the upload";

    ASSERT_EQ(CTexture::TextureManger.size(), 2u);
    EXPECT_EQ(CTexture::TextureManger[0], "data/textures/rgb.tga " + std::to_string(rgb));
    EXPECT_EQ(CTexture::Count(), 2);

    // Second use: the file is gone, yet the same name comes back, bound.
    std::filesystem::remove("data/textures/rgb.tga");
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
    EXPECT_EQ(GetTexture("rgb.tga", 0), rgb);
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(unsigned(bound), rgb);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(CTexture::Count(), 2) << "no second object for a cached picture";
    EXPECT_EQ(CTexture::TextureManger.size(), 2u);
    EXPECT_EQ(FindTexture("rgb.tga"), rgb);

    unsigned int upper = GetTexture("Box.tga", 0);
    unsigned int lower = GetTexture("box.tga", 0);
    EXPECT_NE(upper, lower);
    EXPECT_EQ(TexImage(upper, 2, 2, GL_RGB)[0], 255);
    EXPECT_EQ(TexImage(lower, 2, 2, GL_RGB)[2], 255);
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/Box.tga"), upper);
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/box.tga"), lower);
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/BOX.tga"), 0u);
    EXPECT_EQ(CTexture::CheckPreLoaded("box.tga"), 0u) << "keys are full paths";
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/box.tga "), 0u);
}

TEST_F(RenderTexture, CacheListLookupNeedsNoWindow) {
    CTexture::TextureManger = {"data/textures/a.tga 7", "data/textures/b.tga 9", "data/textures/a.tga 11",
                               "data/textures/c.tga"};
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/a.tga"), 7u) << "first match";
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/b.tga"), 9u);
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/c.tga"), 0u);
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/d.tga"), 0u);
    CTexture::TextureManger.clear();
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/a.tga"), 0u);
}

TEST_F(RenderTexture, BadFilesWarnAndFallBack) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    S_TgaHeader rle;
    rle.imageType = 10;
    rle.width = rle.height = 2;
    S_TgaHeader id;
    id.idLength = 2;
    id.width = id.height = 2;
    S_TgaHeader mapped;
    mapped.imageType = 1;
    mapped.colourMapType = 1;
    mapped.bpp = 8;
    mapped.width = mapped.height = 2;
    S_TgaHeader zero;
    zero.width = 0;
    zero.height = 2;
    S_TgaHeader huge;
    huge.width = huge.height = 65535;
    huge.bpp = 32;
    const std::string body(12, '\x40');
    WriteBytes("data/textures/rle.tga", TgaHeaderBytes(rle) + body);
    WriteBytes("data/textures/id.tga", TgaHeaderBytes(id) + "xx" + body);
    WriteBytes("data/textures/mapped.tga", TgaHeaderBytes(mapped) + body);
    WriteBytes("data/textures/zero.tga", TgaHeaderBytes(zero) + body);
    WriteBytes("data/textures/short.tga", TgaFile(4, 4, 24, Sample).substr(0, 18 + 47));
    WriteBytes("data/textures/huge.tga", TgaHeaderBytes(huge) + body);

    DefaultTexture();
    ASSERT_NE(g_DefaultTex, 0u);
    const char* names[] = {"rle.tga", "id.tga", "mapped.tga", "zero.tga", "short.tga", "huge.tga"};
    int objects = 0;
    for (const char* name : names) {
        EXPECT_EQ(GetTexture(name, 0), g_DefaultTex) << name;
        objects++;
        EXPECT_EQ(CTexture::Count(), objects) << name << ": the object stays behind";
        EXPECT_EQ(AppStatus.consoleLines.front(), std::string("WARNING! could not load texture data/textures/") + name);
    }
    EXPECT_EQ(GetTexture("absent.tga", 0), g_DefaultTex);
    EXPECT_EQ(CTexture::Count(), objects) << "no object for a file that does not exist";
    EXPECT_TRUE(CTexture::TextureManger.empty());

    std::string log = folder.Log();
    for (const char* name : names)
        EXPECT_NE(log.find(std::string("WARNING! could not load texture data/textures/") + name + "\n"),
                  std::string::npos)
            << name;
    EXPECT_NE(log.find("WARNING! could not load texture data/textures/absent.tga\n"), std::string::npos);
}

TEST_F(RenderTexture, PreCacheWarnsOnlyBeforeTheFallbackExists) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    AppStatus.verboseLog = true;

    PreCacheImage("early.tga", 1);
    DefaultTexture();
    PreCacheImage("late.tga", 1);
    EXPECT_EQ(FindTexture("never.tga"), g_DefaultTex);

    const std::string log = folder.Log();
    size_t early = log.find("WARNING! could not load texture data/textures/early.tga\n");
    size_t earlyPreCache = log.find("WARNING: could not pre-cache early.tga!\n");
    size_t late = log.find("WARNING! could not load texture data/textures/late.tga\n");
    ASSERT_NE(early, std::string::npos) << log;
    ASSERT_NE(earlyPreCache, std::string::npos) << log;
    ASSERT_NE(late, std::string::npos) << log;
    EXPECT_LT(early, earlyPreCache);
    EXPECT_LT(earlyPreCache, late);
    EXPECT_EQ(log.find("could not pre-cache late.tga"), std::string::npos);
    EXPECT_EQ(Count(log, "pre-cache"), 1u);
    EXPECT_NE(log.find("  ---- WARNING! could not find texture * never.tga * in list!\n"), std::string::npos);
}

TEST_F(RenderTexture, FindTextureIsQuietWithoutVerboseLogAndNeverLoads) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    WriteBytes("data/textures/here.tga", SolidColourTga(2, 2, 24, MakeTexel(1, 2, 3)));
    EXPECT_EQ(FindTexture("here.tga"), 0u) << "before DefaultTexture the fallback is 0";
    EXPECT_EQ(CTexture::Count(), 0) << "FindTexture never loads";
    EXPECT_EQ(folder.Log().find("could not find texture"), std::string::npos);
}

TEST_F(RenderTexture, FallbackIsATwoByTwoCheckerWithHardEdges) {
    ASSERT_TRUE(GLTest_Window());
    GLTest_ResetState();
    DefaultTexture();
    ASSERT_NE(g_DefaultTex, 0u);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    std::vector<unsigned char> texels = TexImage(g_DefaultTex, 2, 2, GL_RGBA);
    const std::vector<unsigned char> expected = {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 0, 255};
    EXPECT_EQ(texels, expected);
    GLint minFilter = 0, magFilter = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &minFilter);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &magFilter);
    EXPECT_EQ(minFilter, GL_NEAREST);
    EXPECT_EQ(magFilter, GL_NEAREST);
    glDeleteTextures(1, &g_DefaultTex);
    glDisable(GL_DEPTH_TEST);
}

TEST_F(RenderTexture, CleanupDestroysOneObjectWhichEmptiesTheWholeCache) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    for (const char* name : {"a.tga", "b.tga", "c.tga"})
        WriteBytes(std::string("data/textures/") + name, SolidColourTga(2, 2, 24, MakeTexel(9, 9, 9)));
    unsigned int a = GetTexture("a.tga", 0);
    GetTexture("b.tga", 0);
    unsigned int c = GetTexture("c.tga", 0);
    ASSERT_EQ(CTexture::Count(), 3);
    CTexture* second = Texture[1];
    ASSERT_NE(second, nullptr);

    CleanupTextures();
    EXPECT_EQ(CTexture::Count(), 0);
    EXPECT_TRUE(CTexture::TextureManger.empty());
    EXPECT_FALSE(glIsTexture(c)) << "record 0 held the last name loaded";
    EXPECT_TRUE(glIsTexture(a)) << "the other names were never in a record";
    EXPECT_EQ(Texture[1], second) << "the walk stopped after the first object";

    CleanupTextures();  // count 0: nothing happens
    unsigned int again = GetTexture("a.tga", 0);
    EXPECT_NE(again, 0u);
    EXPECT_EQ(CTexture::Count(), 1) << "an emptied cache loads again";
    glDeleteTextures(1, &a);
    glDeleteTextures(1, &again);
}

TEST_F(RenderTexture, BmpPathFlipsPadsAndUploads) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    SDL_Surface* source = SDL_CreateRGBSurface(SDL_SWSURFACE, 3, 5, 24, 0xFF0000, 0x00FF00, 0x0000FF, 0);
    ASSERT_NE(source, nullptr);
    for (int y = 0; y < 5; y++) {
        SDL_Rect row = {0, Sint16(y), 3, 1};
        SDL_FillRect(source, &row, SDL_MapRGB(source->format, Uint8(y * 50), 0, 255));
    }
    ASSERT_EQ(SDL_SaveBMP(source, "pic.bmp"), 0);
    SDL_FreeSurface(source);

    EXPECT_EQ(load_image("missing.bmp"), nullptr);
    float texcoords[4] = {9, 9, 9, 9};
    EXPECT_EQ(SDL_GL_LoadTexture(nullptr, texcoords), 0u);

    SDL_Surface* surface = load_image("pic.bmp");
    ASSERT_NE(surface, nullptr);
    unsigned int id = SDL_GL_LoadTexture(surface, texcoords);
    ASSERT_NE(id, 0u);
    EXPECT_FLOAT_EQ(texcoords[0], 0.0f);
    EXPECT_FLOAT_EQ(texcoords[1], 0.0f);
    EXPECT_FLOAT_EQ(texcoords[2], 3.0f / 4.0f);
    EXPECT_FLOAT_EQ(texcoords[3], 5.0f / 8.0f);
    GLint w = 0, h = 0;
    glBindTexture(GL_TEXTURE_2D, id);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &w);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &h);
    EXPECT_EQ(w, 4);
    EXPECT_EQ(h, 8);
    std::vector<unsigned char> texels = TexImage(id, 4, 8, GL_RGBA);
    EXPECT_EQ(texels[0], 200) << "texture row 0 is the picture's bottom row";
    EXPECT_EQ(texels[2], 255);
    EXPECT_EQ(texels[size_t(4 * 4 * 4)], 0) << "row 4 is the picture's top row";
    EXPECT_EQ(texels[size_t(4 * 4 * 4 + 2)], 255);
    SDL_FreeSurface(surface);
    glDeleteTextures(1, &id);
}
