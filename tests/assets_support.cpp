#include "assets_support.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

std::string GameData(const std::string& rel) { return std::string(VELTHRA_GAME_DIR) + "/data/" + rel; }
std::string SourceData(const std::string& rel) { return std::string(VELTHRA_SOURCE_DIR) + "/data/" + rel; }

bool FileExistsAt(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::vector<std::string> ListFiles(const std::string& root) {
    std::vector<std::string> out;
    std::error_code ec;
    for (auto it = std::filesystem::recursive_directory_iterator(root, ec);
         !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec))
        if (it->is_regular_file()) out.push_back(std::filesystem::relative(it->path(), root).string());
    std::sort(out.begin(), out.end());
    return out;
}

bool LoadPicture(const std::string& path, Picture& out) {
    S_TgaImage img;
    if (!TGA_Read(path, img)) return false;
    const int bytes = img.bpp / 8;
    out.width = img.width;
    out.height = img.height;
    out.rgba.assign(size_t(img.width) * img.height * 4, 255);
    for (int fileRow = 0; fileRow < img.height; fileRow++) {
        int y = img.height - 1 - fileRow;  // Targa rows run bottom-up
        for (int x = 0; x < img.width; x++) {
            const unsigned char* s = &img.pixels[(size_t(fileRow) * img.width + x) * bytes];
            unsigned char* d = &out.rgba[(size_t(y) * img.width + x) * 4];
            std::copy(s, s + bytes, d);
        }
    }
    return true;
}

Extent VisibleExtent(const Picture& p, int threshold) {
    Extent e;
    int x0 = p.width, y0 = p.height, x1 = -1, y1 = -1;
    for (int y = 0; y < p.height; y++)
        for (int x = 0; x < p.width; x++)
            if (p.at(x, y)[3] > threshold) {
                x0 = std::min(x0, x);
                y0 = std::min(y0, y);
                x1 = std::max(x1, x);
                y1 = std::max(y1, y);
            }
    if (x1 < 0) return e;
    e.empty = false;
    e.x0 = double(x0) / p.width;
    e.y0 = double(y0) / p.height;
    e.x1 = double(x1 + 1) / p.width;
    e.y1 = double(y1 + 1) / p.height;
    return e;
}

SolidFile ReadSolid(const std::string& path) {
    SolidFile f;
    std::ifstream in(path);
    if (!in) {
        f.error = "cannot open " + path;
        return f;
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    size_t i = 0;
    if (lines.empty() || lines[0].rfind("NUMPOLLIES ", 0) != 0) {
        f.error = "first line is not NUMPOLLIES";
        return f;
    }
    f.declared = std::atoi(lines[0].c_str() + 11);
    i = 1;
    for (int t = 0; t < f.declared; t++) {
        if (i >= lines.size()) {
            f.error = "file ends inside triangle " + std::to_string(t);
            return f;
        }
        const std::string& header = lines[i++];
        if (header.rfind("TEXTURE ", 0) == 0) {
            std::string name = header.substr(8);
            if (f.texture.empty() && name != "none") f.texture = name;
        } else if (!header.empty()) {
            f.error = "triangle " + std::to_string(t) + " header is neither TEXTURE nor blank: " + header;
            return f;
        }
        for (int k = 0; k < 3; k++) {
            if (i >= lines.size()) {
                f.error = "missing vertex line";
                return f;
            }
            std::stringstream ss(lines[i++]);
            std::string field;
            std::vector<double> v;
            while (std::getline(ss, field, ';')) {
                char* end = nullptr;
                double d = std::strtod(field.c_str(), &end);
                if (field.empty() || *end != '\0') {
                    f.error = "bad number '" + field + "' in triangle " + std::to_string(t);
                    return f;
                }
                v.push_back(d);
            }
            if (v.size() != 5) {
                f.error = "vertex line without five fields in triangle " + std::to_string(t);
                return f;
            }
            f.vertices.push_back({v[0], v[1], v[2], v[3], v[4]});
        }
    }
    for (; i < lines.size(); i++)
        if (!lines[i].empty()) {
            f.error = "text after the last declared triangle";
            return f;
        }
    return f;
}
