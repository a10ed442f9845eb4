// Levels, models and particle effects: they parse as the game reads them,
// their sizes match the rules the ball follows, and every picture they name
// is in the runnable folder.
#include <gtest/gtest.h>
#include <tinyxml.h>
#include <unzip.h>

#include <cmath>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "assets_support.h"

namespace {

struct Brick {
    int type, x, z;
    bool operator<(const Brick& o) const { return std::tie(type, x, z) < std::tie(o.type, o.x, o.z); }
};

// Reads a level as the game does, but refuses anything the game would turn
// into a phantom brick (comments, text, other elements inside "entities").
std::vector<Brick> ReadLevel(const std::string& path, std::string& error) {
    std::vector<Brick> out;
    TiXmlDocument doc(path.c_str());
    if (!doc.LoadFile()) {
        error = "not well-formed";
        return out;
    }
    TiXmlElement* world = doc.FirstChildElement("World");
    if (!world) {
        error = "no World root";
        return out;
    }
    for (TiXmlElement* ent = world->FirstChildElement("entities"); ent; ent = ent->NextSiblingElement("entities"))
        for (TiXmlNode* n = ent->FirstChild(); n; n = n->NextSibling()) {
            TiXmlElement* e = n->ToElement();
            if (!e || std::string(e->Value()) != "breakout") {
                error = std::string("non-brick node inside entities: ") + n->Value();
                return out;
            }
            Brick b{};
            if (e->QueryIntAttribute("type", &b.type) != TIXML_SUCCESS ||
                e->QueryIntAttribute("x", &b.x) != TIXML_SUCCESS || e->QueryIntAttribute("z", &b.z) != TIXML_SUCCESS) {
                error = "brick without integer type, x and z";
                return out;
            }
            out.push_back(b);
        }
    return out;
}

struct Box {
    double x0 = 1e9, x1 = -1e9, y0 = 1e9, y1 = -1e9, z0 = 1e9, z1 = -1e9;
};

// A model's extent in world units, after the scale the game draws it with.
Box WorldBox(const SolidFile& s, double sx, double sy, double sz) {
    Box b;
    for (const SolidVertex& v : s.vertices) {
        b.x0 = std::min(b.x0, v.x * sx), b.x1 = std::max(b.x1, v.x * sx);
        b.y0 = std::min(b.y0, v.y * sy), b.y1 = std::max(b.y1, v.y * sy);
        b.z0 = std::min(b.z0, v.z * sz), b.z1 = std::max(b.z1, v.z * sz);
    }
    return b;
}

SolidFile Model(const std::string& name) {
    SolidFile s = ReadSolid(SourceData("models/" + name));
    EXPECT_EQ(s.error, "") << name;
    return s;
}

// Every triangle of a closed convex model faces away from its centre, so
// back-face culling shows the outside.
int InwardTriangles(const SolidFile& s) {
    double cx = 0, cy = 0, cz = 0;
    for (const SolidVertex& v : s.vertices) cx += v.x, cy += v.y, cz += v.z;
    cx /= s.vertices.size(), cy /= s.vertices.size(), cz /= s.vertices.size();
    int inward = 0;
    for (size_t i = 0; i + 2 < s.vertices.size(); i += 3) {
        const SolidVertex &a = s.vertices[i], &b = s.vertices[i + 1], &c = s.vertices[i + 2];
        double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z, vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
        double nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
        double mx = (a.x + b.x + c.x) / 3 - cx, my = (a.y + b.y + c.y) / 3 - cy, mz = (a.z + b.z + c.z) / 3 - cz;
        inward += nx * mx + ny * my + nz * mz <= 0;
    }
    return inward;
}

std::string ZipMember(const std::string& zipPath, const std::string& member) {
    unzFile z = unzOpen(zipPath.c_str());
    if (!z) return "<no archive>";
    std::string out = "<missing>";
    if (unzLocateFile(z, member.c_str(), 1) == UNZ_OK && unzOpenCurrentFile(z) == UNZ_OK) {
        out.clear();
        char buf[4096];
        int n;
        while ((n = unzReadCurrentFile(z, buf, sizeof buf)) > 0) out.append(buf, size_t(n));
        unzCloseCurrentFile(z);
    }
    unzClose(z);
    return out;
}

const double kBallRadius = 0.3 * 4.0 / 3.0;  // checked against ball.solid below

}  // namespace

TEST(AssetsData, ModelsKeepToTheSolidFormatAndNameSkinsThatExist) {
    for (const char* name : {"barr.solid", "ball.solid", "box.solid", "box2.solid", "box3.solid", "box4.solid",
                             "bumper.solid"}) {
        SolidFile s = Model(name);
        EXPECT_GT(s.declared, 0) << name;
        EXPECT_EQ(s.vertices.size(), size_t(s.declared) * 3) << name;
        ASSERT_FALSE(s.texture.empty()) << name;
        EXPECT_TRUE(FileExistsAt(GameData("textures/" + s.texture))) << name << " names " << s.texture;
        EXPECT_EQ(ReadBytes(SourceData("models/") + name), ReadBytes(GameData("models/") + name))
            << name << " is copied into the runnable folder";
    }
    // One skin per brick kind, so hit points show.
    std::set<std::string> skins;
    for (const char* name : {"box.solid", "box2.solid", "box3.solid", "box4.solid"}) skins.insert(Model(name).texture);
    EXPECT_EQ(skins.size(), 4u);
}

TEST(AssetsData, ModelSizesMatchWhereTheBallTurns) {
    Box ball = WorldBox(Model("ball.solid"), 0.3, 0.3, 0.3);
    EXPECT_NEAR((ball.x1 - ball.x0) / 2, kBallRadius, 0.02);
    EXPECT_NEAR((ball.y1 - ball.y0) / 2, kBallRadius, 0.02);

    // Bricks: the ball turns within x +-3 and z +-4 of the centre; the brick
    // must fit inside that less the ball's radius, and columns 4 apart, rows
    // 3 apart must not overlap.
    for (const char* name : {"box.solid", "box2.solid", "box3.solid", "box4.solid"}) {
        Box b = WorldBox(Model(name), 0.07, 0.02, 0.02);
        EXPECT_LE(b.x1 + kBallRadius, 3.0 + 1e-6) << name;
        EXPECT_LT(b.x1 - b.x0, 4.0) << name;
        EXPECT_LT(b.z1 - b.z0, 3.0) << name;
        EXPECT_GT(b.x1 - b.x0, 3.0) << name << " too small to see";
        EXPECT_NEAR(b.x0, -b.x1, 1e-6) << name;
        EXPECT_NEAR(b.z0, -b.z1, 1e-6) << name;
        EXPECT_EQ(InwardTriangles(Model(name)), 0) << name;
    }

    // Paddle: caught within +-3; the resting ball (one unit in front) touches it.
    Box pad = WorldBox(Model("bumper.solid"), 0.5, 0.8, 0.5);
    EXPECT_NEAR(pad.x1 + kBallRadius, 3.0, 0.05);
    EXPECT_NEAR(pad.x0, -pad.x1, 1e-6);
    EXPECT_NEAR(7.0 + pad.z0, 6.0 + kBallRadius, 0.05);
    EXPECT_EQ(InwardTriangles(Model("bumper.solid")), 0);
    EXPECT_EQ(InwardTriangles(Model("ball.solid")), 0);

    // Frame: the ball turns when its centre passes x = +-8 and z = -16, so
    // the inner faces stand one radius further out.
    SolidFile frame = Model("barr.solid");
    double minZ = 0, floorY = 1e9;
    for (const SolidVertex& v : frame.vertices) {
        minZ = std::min(minZ, v.z * 2.7);
        floorY = std::min(floorY, v.y);
    }
    // Walls are what stands above the floor; none of it may reach into the field.
    std::set<long> wallX;
    for (const SolidVertex& v : frame.vertices)
        if (v.y > floorY + 0.01) wallX.insert(std::lround(v.x * 1.5 * 100));
    EXPECT_TRUE(wallX.count(std::lround((8 + kBallRadius) * 100)));
    EXPECT_TRUE(wallX.count(std::lround(-(8 + kBallRadius) * 100)));
    for (long x : wallX) EXPECT_GE(std::abs(x), std::lround((8 + kBallRadius) * 100)) << x;
    EXPECT_LT(minZ, -16 - kBallRadius);
    EXPECT_LE(floorY, ball.y0 - 0.05) << "floor cuts through the ball";
    // The floor faces up, or culling would hide it from the camera above.
    for (size_t i = 0; i + 2 < frame.vertices.size(); i += 3) {
        const SolidVertex &a = frame.vertices[i], &b = frame.vertices[i + 1], &c = frame.vertices[i + 2];
        if (a.y != floorY || b.y != floorY || c.y != floorY) continue;
        double ny = (b.z - a.z) * (c.x - a.x) - (b.x - a.x) * (c.z - a.z);
        EXPECT_GT(ny, 0) << "floor triangle " << i / 3 << " faces down";
    }
}

TEST(AssetsData, TenLevelsParseWithAtMostThirtyTwoBricksInsideTheField) {
    Box brick[4];
    const char* models[4] = {"box.solid", "box2.solid", "box3.solid", "box4.solid"};
    for (int k = 0; k < 4; k++) brick[k] = WorldBox(Model(models[k]), 0.07, 0.02, 0.02);
    std::set<std::set<Brick>> seen;
    int previousHits = 0;
    for (int level = 1; level <= 10; level++) {
        SCOPED_TRACE(level);
        std::string name = "levels/lvl" + std::to_string(level) + ".xml";
        std::string error;
        std::vector<Brick> bricks = ReadLevel(GameData(name), error);
        ASSERT_EQ(error, "");
        ASSERT_GE(bricks.size(), 1u);
        EXPECT_LE(bricks.size(), 32u);
        int hits = 0;
        for (size_t i = 0; i < bricks.size(); i++) {
            const Brick& b = bricks[i];
            ASSERT_GE(b.type, 0);
            ASSERT_LE(b.type, 3);
            hits += b.type + 1;
            const Box& m = brick[b.type];
            EXPECT_LE(b.x + m.x1, 8.0) << "brick " << i << " pokes through the right wall";
            EXPECT_GE(b.x + m.x0, -8.0) << "brick " << i << " pokes through the left wall";
            EXPECT_GE(b.z + m.z0, -16.0) << "brick " << i << " pokes through the far wall";
            EXPECT_LE(b.z, -2) << "brick " << i << " too near the paddle";
            for (size_t j = 0; j < i; j++) {
                const Brick& o = bricks[j];
                bool apart = std::abs(b.x - o.x) >= m.x1 - m.x0 || std::abs(b.z - o.z) >= m.z1 - m.z0;
                EXPECT_TRUE(apart) << "bricks " << j << " and " << i << " overlap";
            }
        }
        EXPECT_TRUE(seen.insert(std::set<Brick>(bricks.begin(), bricks.end())).second) << "same as an earlier level";
        EXPECT_GT(hits, previousHits) << "levels must get harder";
        previousHits = hits;
        // The archive carries the same level for a loader that reads from it.
        EXPECT_EQ(ZipMember(std::string(VELTHRA_GAME_DIR) + "/assets.zip", "data/" + name),
                  ReadBytes(SourceData(name)));
    }
}

TEST(AssetsData, TheLevelReaderRefusesCommentsInsideEntities) {
    // The game turns a comment inside "entities" into an extra brick; the
    // reader above must notice one, or the level test would prove nothing.
    std::string path = ::testing::TempDir() + "/assets_commented_level.xml";
    std::ofstream(path) << "<World><entities><breakout type=\"0\" x=\"0\" z=\"-5\" /><!-- oops --></entities></World>";
    std::string error;
    ReadLevel(path, error);
    EXPECT_NE(error, "");
}

TEST(AssetsData, ArchiveStillCarriesThePackagedSettings) {
    EXPECT_EQ(ZipMember(std::string(VELTHRA_GAME_DIR) + "/assets.zip", "data/default.cfg"),
              ReadBytes(std::string(VELTHRA_SOURCE_DIR) + "/assets/default.cfg"));
}

TEST(AssetsData, ParticleFilesUseTheKnownKeysAndExistingSprites) {
    const std::set<std::string> keys = {"texture", "life", "spray", "color", "speed", "wind", "direction"};
    for (int i = 1; i <= 4; i++) {
        std::string name = "scripts/particles" + std::to_string(i) + ".txt";
        SCOPED_TRACE(name);
        std::ifstream in(GameData(name));
        ASSERT_TRUE(in.good());
        std::map<std::string, std::string> values;
        for (std::string line; std::getline(in, line);) {
            if (line.empty()) continue;
            size_t blank = line.find(' ');
            ASSERT_NE(blank, std::string::npos) << line;
            std::string key = line.substr(0, blank);
            EXPECT_TRUE(keys.count(key)) << "unknown key " << key;
            values[key] = line.substr(blank + 1);
        }
        EXPECT_EQ(values.size(), keys.size()) << "every key given";
        EXPECT_TRUE(FileExistsAt(GameData("textures/" + values["texture"]))) << values["texture"];
        EXPECT_GT(std::atof(values["life"].c_str()), 0.0);
        for (const char* list : {"color", "speed", "wind", "direction"}) {
            std::stringstream ss(values[list]);
            std::string part;
            int parts = 0;
            while (std::getline(ss, part, ';')) {
                char* end = nullptr;
                double v = std::strtod(part.c_str(), &end);
                EXPECT_EQ(*end, '\0') << list << ": " << part;
                // Colours are read as whole numbers: anything between 0 and 1 would be lost.
                if (std::string(list) == "color") {
                    EXPECT_TRUE(v == 0.0 || v == 1.0) << part;
                }
                parts++;
            }
            EXPECT_EQ(parts, 3) << list;
        }
        Picture sprite;
        ASSERT_TRUE(LoadPicture(GameData("textures/" + values["texture"]), sprite));
        // A soft round glow: opaque-ish middle, clear corners.
        EXPECT_GT(sprite.at(sprite.width / 2, sprite.height / 2)[3], 200);
        EXPECT_EQ(sprite.at(0, 0)[3], 0);
    }
}

TEST(AssetsData, PicturesTheLoaderAsksForByNameExist) {
    for (const char* name : {"Font.tga", "cursor.tga", "splashscreen.tga", "conback.tga", "sky/stars_b.tga",
                             "volume.tga", "dot.tga", "check.tga", "box.tga", "arrowrt.tga", "arrowlt.tga",
                             "title.tga"})
        EXPECT_TRUE(FileExistsAt(GameData(std::string("textures/") + name))) << name;
    for (const char* name : {"menu.ogg", "game.ogg", "splashscreen.ogg"})
        EXPECT_TRUE(FileExistsAt(GameData(std::string("sound/") + name))) << name;
}
