// The generated pictures, read back as the game reads them.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "assets_support.h"

namespace {

std::vector<std::string> AllPictures() {
    std::vector<std::string> out;
    for (const std::string& f : ListFiles(GameData("textures")))
        if (f.size() > 4 && f.compare(f.size() - 4, 4, ".tga") == 0) out.push_back(f);
    return out;
}

Picture Load(const std::string& name) {
    Picture p;
    EXPECT_TRUE(LoadPicture(GameData("textures/" + name), p)) << name;
    return p;
}

bool IsPowerOfTwo(int v) { return v > 0 && (v & (v - 1)) == 0; }

// Font cells as the game's font code indexes them: cell k at column k % 16,
// row k / 16 counted from the top of the picture.
struct Ink {
    int pixels = 0, minX = 99, maxX = -1, minY = 99, maxY = -1;
};
Ink CellInk(const Picture& font, int cell) {
    const int size = font.width / 16;
    Ink ink;
    for (int y = 0; y < size; y++)
        for (int x = 0; x < size; x++) {
            const unsigned char* p = font.at((cell % 16) * size + x, (cell / 16) * size + y);
            if (p[3] < 128) continue;
            ink.pixels++;
            ink.minX = std::min(ink.minX, x);
            ink.maxX = std::max(ink.maxX, x);
            ink.minY = std::min(ink.minY, y);
            ink.maxY = std::max(ink.maxY, y);
        }
    return ink;
}

double MeanColourDistance(const Picture& a, const Picture& b) {
    double sum = 0;
    for (size_t i = 0; i + 3 < a.rgba.size() && i + 3 < b.rgba.size(); i += 4)
        for (int c = 0; c < 3; c++) sum += std::fabs(double(a.rgba[i + c]) - b.rgba[i + c]);
    return sum / (a.rgba.size() / 4 * 3);
}

}  // namespace

TEST(AssetsImages, EveryPictureHasTheHeaderSizeAndDepthTheLoaderAccepts) {
    std::vector<std::string> pictures = AllPictures();
    ASSERT_GE(pictures.size(), 40u);
    const unsigned char expected[12] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    for (const std::string& name : pictures) {
        std::string bytes = ReadBytes(GameData("textures/" + name));
        ASSERT_GE(bytes.size(), 18u) << name;
        EXPECT_EQ(0, std::memcmp(bytes.data(), expected, 12)) << name << ": header must be 0,0,2,0,0,0,0,0,0,0,0,0";
        const auto* b = reinterpret_cast<const unsigned char*>(bytes.data());
        int width = b[12] | (b[13] << 8), height = b[14] | (b[15] << 8), bpp = b[16];
        EXPECT_TRUE(bpp == 24 || bpp == 32) << name;
        EXPECT_TRUE(IsPowerOfTwo(width) && IsPowerOfTwo(height)) << name << " " << width << "x" << height;
        EXPECT_EQ(bytes.size(), 18u + size_t(width) * height * (bpp / 8)) << name;
        S_TgaImage img;
        EXPECT_TRUE(TGA_Read(GameData("textures/" + name), img)) << name;
        EXPECT_EQ(img.width, width);
        EXPECT_EQ(img.height, height);
    }
}

TEST(AssetsImages, PicturesTheGameDrawsAtFixedSizesHaveThoseSizes) {
    struct Want {
        const char* name;
        int w, h, bpp;
    } wants[] = {{"volume.tga", 128, 32, 0}, {"dot.tga", 32, 32, 32},   {"check.tga", 32, 32, 0},
                 {"box.tga", 32, 32, 0},     {"arrowlt.tga", 32, 32, 0}, {"arrowrt.tga", 32, 32, 0},
                 {"cursor.tga", 32, 32, 32}, {"Font.tga", 256, 256, 32}};
    for (const Want& w : wants) {
        S_TgaImage img;
        ASSERT_TRUE(TGA_Read(GameData(std::string("textures/") + w.name), img)) << w.name;
        EXPECT_EQ(img.width, w.w) << w.name;
        EXPECT_EQ(img.height, w.h) << w.name;
        if (w.bpp) {
            EXPECT_EQ(img.bpp, w.bpp) << w.name << " needs its transparency";
        }
    }
}

TEST(AssetsImages, ChannelsAreStoredBlueGreenRedAndRowsBottomUp) {
    // The toughest brick is orange: red well above blue once the reader has
    // swapped the channels, blue first in the file itself.
    Picture orange = Load("brick3.tga");
    Picture blue = Load("brick1.tga");
    double r = 0, b = 0, rb = 0, bb = 0;
    for (size_t i = 0; i < orange.rgba.size(); i += 4) {
        r += orange.rgba[i];
        b += orange.rgba[i + 2];
        rb += blue.rgba[i];
        bb += blue.rgba[i + 2];
    }
    EXPECT_GT(r, b * 2);
    EXPECT_GT(bb, rb * 1.5);
    std::string raw = ReadBytes(GameData("textures/brick3.tga"));
    long fileBlue = 0, fileRed = 0;
    for (size_t i = 18; i + 2 < raw.size(); i += 3) {
        fileBlue += (unsigned char)raw[i];
        fileRed += (unsigned char)raw[i + 2];
    }
    EXPECT_LT(fileBlue * 2, fileRed);

    // The cursor's tip is its hot spot: the top-left corner as displayed,
    // which is the last row of the file.
    Picture cursor = Load("cursor.tga");
    EXPECT_GT(cursor.at(1, 1)[3], 128);
    EXPECT_EQ(cursor.at(30, 30)[3], 0);
}

TEST(AssetsImages, FontSheetHasGlyphsWhereTheFontCodeLooks) {
    Picture font = Load("Font.tga");
    ASSERT_EQ(font.width, font.height);
    for (int set = 0; set < 2; set++) {
        SCOPED_TRACE(set);
        EXPECT_EQ(CellInk(font, set * 128 + 0).pixels, 0) << "space must be empty";
        for (int code = 33; code < 127; code++) {
            Ink ink = CellInk(font, set * 128 + code - 32);
            EXPECT_GT(ink.pixels, 0) << "code " << code;
            // Drawn 16 wide with a 10-unit advance: ink must stay in the left part.
            EXPECT_LE(ink.maxX, 11) << "code " << code;
        }
        // Orientation: an underscore sits low in its cell, a caret high.
        Ink under = CellInk(font, set * 128 + '_' - 32), caret = CellInk(font, set * 128 + '^' - 32);
        EXPECT_GE(under.minY, 11);
        EXPECT_LE(caret.maxY, 8);
        // A capital reaches from near the top of the cell to the baseline.
        Ink a = CellInk(font, set * 128 + 'A' - 32);
        EXPECT_GT(a.pixels, 10);
        EXPECT_LE(a.minY, 3);
        EXPECT_GE(a.maxY, 10);
    }
    // The bold set carries more ink than the plain one.
    EXPECT_GT(CellInk(font, 128 + 'W' - 32).pixels, CellInk(font, 'W' - 32).pixels);
    // Light on transparent: every pixel is white, the shape is in alpha.
    for (size_t i = 0; i < font.rgba.size(); i += 4)
        ASSERT_TRUE(font.rgba[i] == 255 && font.rgba[i + 1] == 255 && font.rgba[i + 2] == 255);
}

TEST(AssetsImages, CaptionsAreTransparentAroundTheirText) {
    int checked = 0;
    for (const std::string& name : AllPictures()) {
        if (name.rfind("btn_", 0) != 0 && name.rfind("lbl_", 0) != 0 && name != "title.tga") continue;
        Picture p = Load(name);
        checked++;
        EXPECT_EQ(p.at(0, 0)[3], 0) << name;
        EXPECT_EQ(p.at(p.width - 1, p.height - 1)[3], 0) << name;
        Extent e = VisibleExtent(p);
        ASSERT_FALSE(e.empty) << name;
        EXPECT_GT((e.x1 - e.x0) * (e.y1 - e.y0), 0.05) << name << " shows hardly anything";
    }
    EXPECT_GE(checked, 15);
}

TEST(AssetsImages, BrickKindsLookDifferentAndTheSkyTiles) {
    Picture bricks[4] = {Load("brick0.tga"), Load("brick1.tga"), Load("brick2.tga"), Load("brick3.tga")};
    for (int i = 0; i < 4; i++)
        for (int j = i + 1; j < 4; j++) EXPECT_GT(MeanColourDistance(bricks[i], bricks[j]), 25.0) << i << " vs " << j;

    // Seams: the step from the last column to the first must look like any
    // other step between neighbouring columns (and the same for rows).
    Picture sky = Load("sky/stars_b.tga");
    auto columnStep = [&](int a, int b) {
        double s = 0;
        for (int y = 0; y < sky.height; y++)
            for (int c = 0; c < 3; c++) s += std::fabs(double(sky.at(a, y)[c]) - sky.at(b, y)[c]);
        return s / sky.height;
    };
    auto rowStep = [&](int a, int b) {
        double s = 0;
        for (int x = 0; x < sky.width; x++)
            for (int c = 0; c < 3; c++) s += std::fabs(double(sky.at(x, a)[c]) - sky.at(x, b)[c]);
        return s / sky.width;
    };
    double typicalCol = 0, typicalRow = 0;
    for (int i = 0; i + 1 < sky.width; i++) typicalCol += columnStep(i, i + 1);
    for (int i = 0; i + 1 < sky.height; i++) typicalRow += rowStep(i, i + 1);
    typicalCol /= sky.width - 1;
    typicalRow /= sky.height - 1;
    EXPECT_LT(columnStep(sky.width - 1, 0), typicalCol * 2.5);
    EXPECT_LT(rowStep(sky.height - 1, 0), typicalRow * 2.5);
    // Not a flat colour: some stars stand out.
    int bright = 0;
    for (size_t i = 0; i < sky.rgba.size(); i += 4) bright += sky.rgba[i] > 200 && sky.rgba[i + 2] > 200;
    EXPECT_GT(bright, 30);
}
