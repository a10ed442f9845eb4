// Helpers for the tests of the shipped data: where the runnable folder and
// the repository's data are, reading files, and the picture facts the
// layout tests need.
#pragma once

#include <string>
#include <vector>

#include "render/tga.h"

// build/game/data/<rel> and <repo>/data/<rel>.
std::string GameData(const std::string& rel);
std::string SourceData(const std::string& rel);

bool FileExistsAt(const std::string& path);
std::string ReadBytes(const std::string& path);
// Every regular file below `root`, as paths relative to it, sorted.
std::vector<std::string> ListFiles(const std::string& root);

// A picture as displayed: rows top-down, four channels (alpha 255 for 24-bit).
struct Picture {
    int width = 0, height = 0;
    std::vector<unsigned char> rgba;
    const unsigned char* at(int x, int y) const { return &rgba[(size_t(y) * width + x) * 4]; }
};
// Reads through the game's Targa reader and turns rows the right way up.
bool LoadPicture(const std::string& path, Picture& out);

// Smallest box holding every pixel with alpha above `threshold`, as
// fractions of the picture (0..1, top-down). Empty picture: all zero.
struct Extent {
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    bool empty = true;
};
Extent VisibleExtent(const Picture& p, int threshold = 24);

// One brick, a triangle list, the vertex positions of a ".solid" model.
struct SolidVertex {
    double x, y, z, u, v;
};
struct SolidFile {
    int declared = 0;          // sum of the NUMPOLLIES lines
    std::string texture;       // first TEXTURE name that is not "none"
    std::vector<SolidVertex> vertices;  // three per triangle, in file order
    std::string error;         // empty when the file kept to the format
};
SolidFile ReadSolid(const std::string& path);
