// Helpers for the tests of the shipped data: the runnable folder, the files
// below a folder, and pictures as the game's Targa reader returns them.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "render/tga.h"
#include "test_support.h"

inline std::string GameData(const std::string& rel) { return std::string(VELTHRA_GAME_DIR) + "/data/" + rel; }

// Every regular file below `root`, relative to it, sorted.
inline std::vector<std::string> ListFiles(const std::string& root) {
    std::vector<std::string> out;
    for (const auto& e : std::filesystem::recursive_directory_iterator(root))
        if (e.is_regular_file())
            out.push_back(std::filesystem::relative(e.path(), root).string());
    std::sort(out.begin(), out.end());
    return out;
}

// Alpha at (x, y) counted from the top as displayed: Targa rows run bottom-up.
inline int Alpha(const S_TgaImage& t, int x, int y) {
    return t.bpp == 32 ? t.pixels[(size_t(t.height - 1 - y) * t.width + x) * 4 + 3] : 255;
}

// Smallest box around the pixels with alpha above 24, as fractions of the
// picture, top-down; all zero for an empty picture.
struct Extent {
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};
inline Extent VisibleExtent(const S_TgaImage& t) {
    int x0 = t.width, y0 = t.height, x1 = -1, y1 = -1;
    for (int y = 0; y < t.height; y++)
        for (int x = 0; x < t.width; x++)
            if (Alpha(t, x, y) > 24)
                x0 = std::min(x0, x), y0 = std::min(y0, y), x1 = std::max(x1, x), y1 = std::max(y1, y);
    if (x1 < 0)
        return {};
    return {double(x0) / t.width, double(y0) / t.height, double(x1 + 1) / t.width, double(y1 + 1) / t.height};
}
