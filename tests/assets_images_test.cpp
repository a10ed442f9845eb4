// The generated pictures, read back with the game's own Targa reader.
#include <gtest/gtest.h>

#include "assets_support.h"

TEST(AssetsImages, EveryPictureIsATargaTheGameLoads) {
    std::vector<std::string> pictures = ListFiles(GameData("textures"));
    ASSERT_GE(pictures.size(), 40u);
    for (const char* name : {"Font.tga", "cursor.tga", "splashscreen.tga", "conback.tga", "sky/stars_b.tga",
                             "volume.tga", "dot.tga", "check.tga", "box.tga", "arrowrt.tga", "arrowlt.tga"})
        EXPECT_EQ(std::count(pictures.begin(), pictures.end(), name), 1) << name << " is loaded by name";
    for (const std::string& name : pictures) {
        SCOPED_TRACE(name);
        S_TgaImage t;
        ASSERT_TRUE(TGA_Read(GameData("textures/" + name), t));
        EXPECT_TRUE((t.width & (t.width - 1)) == 0 && (t.height & (t.height - 1)) == 0) << "power of two";
        // Drawn over the scene: they need their alpha, clear edges and something to show.
        if (name == "cursor.tga" || name == "title.tga" || name.rfind("btn_", 0) == 0 || name.rfind("lbl_", 0) == 0 ||
            name.rfind("glow_", 0) == 0 || name == "spark.tga") {
            EXPECT_EQ(t.bpp, 32);
            EXPECT_EQ(Alpha(t, t.width - 1, t.height - 1), 0);
            Extent e = VisibleExtent(t);
            EXPECT_GT((e.x1 - e.x0) * (e.y1 - e.y0), 0.05) << "shows hardly anything";
        }
    }
}

TEST(AssetsImages, FontSheetHasGlyphsInTheCellsTheFontCodeIndexes) {
    S_TgaImage font;
    ASSERT_TRUE(TGA_Read(GameData("textures/Font.tga"), font));
    ASSERT_TRUE(font.bpp == 32 && font.width == font.height) << "square sheet with alpha";
    const int size = font.width / 16;
    // Cell of a code in a set: column cell % 16, row cell / 16 from the top.
    struct Ink {
        int pixels = 0, dark = 0, top = 99, bottom = -1, right = -1;
    };
    auto ink = [&](int set, int code) {
        Ink k;
        const int cell = set * 128 + code - 32, cx = cell % 16 * size, cy = cell / 16 * size;
        for (int y = 0; y < size; y++)
            for (int x = 0; x < size; x++) {
                if (Alpha(font, cx + x, cy + y) < 128)
                    continue;
                const unsigned char* p = &font.pixels[(size_t(font.height - 1 - cy - y) * font.width + cx + x) * 4];
                k.pixels++, k.dark += p[0] + p[1] + p[2] < 600;
                k.top = std::min(k.top, y), k.bottom = std::max(k.bottom, y), k.right = std::max(k.right, x);
            }
        return k;
    };
    for (int set = 0; set < 2; set++) {
        SCOPED_TRACE(set);
        EXPECT_EQ(ink(set, ' ').pixels, 0) << "space must be empty";
        for (int code = 33; code < 127; code++) {
            Ink k = ink(set, code);
            EXPECT_GT(k.pixels, 0) << char(code);
            EXPECT_EQ(k.dark, 0) << char(code) << " must be light";
            EXPECT_LE(k.right, 11) << char(code) << " runs past the 10-unit advance";
        }
        // Rows the right way up: an underscore sits low in its cell, a caret high.
        EXPECT_GE(ink(set, '_').top, 11);
        EXPECT_LE(ink(set, '^').bottom, 8);
    }
    EXPECT_GT(ink(1, 'W').pixels, ink(0, 'W').pixels) << "set 1 is the bolder face";
}
