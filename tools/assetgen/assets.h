// The makers of each group of generated files. Each returns false (after
// printing why) when a file could not be written.
#pragma once

#include <string>

#include "text.h"

// `textures` is the data/textures folder, `sound` the data/sound folder.
bool makeFontSheet(TextRenderer& text, const std::string& textures);
bool makeMenuImages(TextRenderer& text, const std::string& textures);
bool makeSceneImages(TextRenderer& text, const std::string& textures);
bool makeParticleSprites(const std::string& textures);
bool makeMusic(const std::string& sound);
// The application icons, `hicolor`/NxN/apps/velthra.png at the desktop's usual sizes.
bool makeIcons(const std::string& hicolor);

// Writes and reports; shared by the makers.
bool saveTga(const std::string& path, const struct Image& img, bool withAlpha);
