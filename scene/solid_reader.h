// The ".solid" model text, read into triangles with no OpenGL, so the reader
// can be tested (and fuzzed) without a window; CSolid uploads and draws.
//
// The file: one or more "NUMPOLLIES n" lines (the triangle count is their
// sum), then per triangle a header line ("TEXTURE name", or any other line,
// usually blank) and three vertex lines "x;y;z;u;v" read with atof. A file
// shorter than its count reads zeros for the missing vertices.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

// A model's box: position truncated toward zero, and fixed extents.
struct GL_Rect {
    int16_t x = 0, y = 0, z = 0;
    int16_t width = 0, height = 0, depth = 0;
};

struct S_SolidVertex {
    float x = 0.0f, y = 0.0f, z = 0.0f, u = 0.0f, v = 0.0f;
};

struct S_SolidTriangle {
    S_SolidVertex vertex[3];
};

// A count above this is taken for a damaged file, not a model: the game's
// models have a few hundred triangles.
constexpr int MAX_SOLID_TRIANGLES = 1 << 18;

struct S_SolidText {
    std::vector<S_SolidTriangle> triangles;
    std::vector<std::string> textures;  // the name of every TEXTURE header, in file order
};

// Sum of the NUMPOLLIES numbers (0 for none); MAX_SOLID_TRIANGLES + 1 or -1
// as soon as the sum passes the limit either way, so it never overflows.
int Solid_CountTriangles(std::istream& in);
// The name after the first TEXTURE keyword ("" if none).
std::string Solid_FirstTexture(std::istream& in);
// Reads `count` triangles from the start of `in`: a NUMPOLLIES line where a
// header is due is skipped once; a TEXTURE header is recorded.
void Solid_ReadTriangles(std::istream& in, int count, S_SolidText& out);
