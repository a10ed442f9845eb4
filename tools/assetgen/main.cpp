// assetgen DATA_DIR
// Writes every generated picture and piece of music under DATA_DIR
// (textures/, textures/sky/, sound/). The output depends only on this
// program and the fonts it reads: no clock, no unseeded randomness.
// assetgen --icons HICOLOR_DIR
// Writes the application icons as PNG, laid out like an icon theme
// (HICOLOR_DIR/32x32/apps/velthra.png ... 256x256), for installing.
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "assets.h"
#include "image.h"

static bool makeDir(const std::string& path) {
    if (mkdir(path.c_str(), 0755) == 0 || errno == EEXIST)
        return true;
    std::fprintf(stderr, "assetgen: cannot create %s\n", path.c_str());
    return false;
}

bool saveTga(const std::string& path, const Image& img, bool withAlpha) {
    if (writeTga(path, img, withAlpha))
        return true;
    std::fprintf(stderr, "assetgen: cannot write %s\n", path.c_str());
    return false;
}

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--icons")
        return makeIcons(argv[2]) ? 0 : 1;
    if (argc != 2) {
        std::fprintf(stderr, "usage: assetgen DATA_DIR | assetgen --icons HICOLOR_DIR\n");
        return 2;
    }
    const std::string data = argv[1];
    const std::string textures = data + "/textures", sound = data + "/sound";
    if (!makeDir(data) || !makeDir(textures) || !makeDir(textures + "/sky") || !makeDir(sound))
        return 1;

    TextRenderer text;
    if (!text.open(ASSETGEN_FONT_DIR))
        return 1;
    bool ok = makeFontSheet(text, textures);
    ok &= makeMenuImages(text, textures);
    ok &= makeSceneImages(text, textures);
    ok &= makeParticleSprites(textures);
    ok &= makeMusic(sound);
    return ok ? 0 : 1;
}
