#include "scene/solid_reader.h"

#include <algorithm>
#include <cstdlib>
#include <istream>

#include "common/utils.h"

namespace {

std::string Keyword(const std::string& line) { return line.substr(0, line.find(' ')); }

// The text from `column` on, or "" for a shorter line.
std::string From(const std::string& line, size_t column) {
    return line.size() > column ? line.substr(column) : std::string();
}

// "x;y;z;u;v"; a missing field reads 0.
S_SolidVertex ParseVertex(const std::string& line) {
    float values[5] = {0, 0, 0, 0, 0};
    size_t start = 0;
    for (int i = 0; i < 5 && start <= line.size(); i++) {
        size_t end = line.find(';', start);
        if (end == std::string::npos)
            end = line.size();
        // A field is read from at most 255 characters.
        std::string field = line.substr(start, std::min<size_t>(end - start, 255));
        values[i] = float(std::atof(field.c_str()));
        start = end + 1;
    }
    S_SolidVertex v;
    v.x = values[0];
    v.y = values[1];
    v.z = values[2];
    v.u = values[3];
    v.v = values[4];
    return v;
}

// Past the end of the file every line reads empty.
std::string NextLine(std::istream& in) {
    std::string line;
    if (!std::getline(in, line))
        line.clear();
    return line;
}

}  // namespace

int Solid_CountTriangles(std::istream& in) {
    long long count = 0;
    std::string line;
    while (std::getline(in, line)) {
        if (Keyword(line) == "NUMPOLLIES")
            count += StringToInt(From(line, 11));
        // Far beyond any model, either way: the file is refused whatever
        // follows, and the sum stops before it can overflow.
        if (count > MAX_SOLID_TRIANGLES)
            return MAX_SOLID_TRIANGLES + 1;
        if (count < -MAX_SOLID_TRIANGLES)
            return -1;
    }
    return int(count);
}

std::string Solid_FirstTexture(std::istream& in) {
    std::string line;
    while (std::getline(in, line)) {
        if (Keyword(line) == "TEXTURE")
            return From(line, 8);
    }
    return "";
}

void Solid_ReadTriangles(std::istream& in, int count, S_SolidText& out) {
    out.triangles.assign(size_t(std::max(count, 0)), S_SolidTriangle());
    out.textures.clear();
    for (S_SolidTriangle& triangle : out.triangles) {
        std::string line = NextLine(in);
        if (Keyword(line) == "NUMPOLLIES")
            line = NextLine(in);
        if (Keyword(line) == "TEXTURE")
            out.textures.push_back(From(line, 8));
        for (S_SolidVertex& vertex : triangle.vertex)
            vertex = ParseVertex(NextLine(in));
    }
}
