// Levels, models and particle files: they parse as the game reads them, sizes
// match where the ball turns, and every picture they name exists.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <tuple>

#include "assets_support.h"
#include "scene/solid.h"

namespace {

using Brick = std::tuple<int, int, int>;  // type, x, z

// Reads a level, refusing anything the game would turn into a phantom brick
// (comments, text or other elements inside "entities").
bool ReadLevel(const std::string& path, std::vector<Brick>& out) {
    TiXmlDocument doc(path.c_str());
    TiXmlElement* world = doc.LoadFile() ? doc.FirstChildElement("World") : nullptr;
    for (TiXmlElement* ent = world ? world->FirstChildElement("entities") : nullptr; ent;
         ent = ent->NextSiblingElement("entities"))
        for (TiXmlNode* n = ent->FirstChild(); n; n = n->NextSibling()) {
            TiXmlElement* e = n->ToElement();
            int type, x, z;
            if (!e || std::string(e->Value()) != "breakout" || e->QueryIntAttribute("type", &type) ||
                e->QueryIntAttribute("x", &x) || e->QueryIntAttribute("z", &z))
                return false;
            out.emplace_back(type, x, z);
        }
    return world != nullptr;
}

// A model's extent after the scale the game draws it with; its vertex lines
// must match its NUMPOLLIES count.
struct Box {
    std::array<double, 3> lo{1e9, 1e9, 1e9}, hi{-1e9, -1e9, -1e9};
};
Box WorldBox(const std::string& name, std::array<double, 3> scale) {
    std::istringstream in(ReadFile(GameData("models/" + name)));
    Box b;
    int triangles = 0, vertices = 0;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("NUMPOLLIES ", 0) == 0)
            triangles += std::atoi(line.c_str() + 11);
        std::array<double, 3> v;
        double u, t;
        if (std::sscanf(line.c_str(), "%lf;%lf;%lf;%lf;%lf", &v[0], &v[1], &v[2], &u, &t) != 5)
            continue;
        for (int k = 0; k < 3; k++)
            v[k] *= scale[k], b.lo[k] = std::min(b.lo[k], v[k]), b.hi[k] = std::max(b.hi[k], v[k]);
        vertices++;
    }
    EXPECT_TRUE(triangles > 0 && vertices == triangles * 3)
        << name << ": " << vertices << " vertices, " << triangles << " triangles";
    return b;
}

const char* kBrickModels[4] = {"box.solid", "box2.solid", "box3.solid", "box4.solid"};
const std::array<double, 3> kBrickScale{0.07, 0.02, 0.02};

}  // namespace

TEST(AssetsData, ModelsNameExistingSkinsAndMatchWhereTheBallTurns) {
    std::set<std::string> skins;
    for (const std::string name :
         {"barr.solid", "ball.solid", "bumper.solid", "box.solid", "box2.solid", "box3.solid", "box4.solid"}) {
        std::string skin = CSolid::getTexture(GameData("models/" + name));
        EXPECT_TRUE(std::filesystem::is_regular_file(GameData("textures/" + skin))) << name << " names " << skin;
        WorldBox(name, {1, 1, 1});  // keeps to its triangle count
        if (name.rfind("box", 0) == 0)
            skins.insert(skin);
    }
    EXPECT_EQ(skins.size(), 4u) << "one skin per brick kind, so hit points show";

    const double r = WorldBox("ball.solid", {0.3, 0.3, 0.3}).hi[0];
    EXPECT_NEAR(r, 0.4, 0.02) << "ball radius";
    // A brick turns the ball within x +-3 of its centre: it fits inside that
    // less the ball's radius, and rows 3 apart do not overlap.
    for (const char* name : kBrickModels) {
        Box b = WorldBox(name, kBrickScale);
        EXPECT_LE(b.hi[0] + r, 3.0 + 1e-6) << name;
        EXPECT_LT(b.hi[2] - b.lo[2], 3.0) << name;
    }
    EXPECT_NEAR(WorldBox("bumper.solid", {0.5, 0.8, 0.5}).hi[0] + r, 3.0, 0.05) << "paddle catches within +-3";
}

TEST(AssetsData, TenDistinctLevelsOfRisingDifficultyKeepAtMost32BricksInsideTheField) {
    Box kind[4];
    for (int k = 0; k < 4; k++)
        kind[k] = WorldBox(kBrickModels[k], kBrickScale);
    std::set<std::set<Brick>> seen;
    int previousHits = 0;
    for (int level = 1; level <= 10; level++) {
        std::string name = "levels/lvl" + std::to_string(level) + ".xml";
        SCOPED_TRACE(name);
        std::vector<Brick> bricks;
        ASSERT_TRUE(ReadLevel(GameData(name), bricks));
        ASSERT_TRUE(bricks.size() >= 1 && bricks.size() <= 32) << bricks.size() << " bricks";
        int hits = 0;
        for (size_t i = 0; i < bricks.size(); i++) {
            auto [type, x, z] = bricks[i];
            ASSERT_TRUE(type >= 0 && type <= 3) << "brick " << i;
            hits += type + 1;
            const Box& m = kind[type];
            EXPECT_TRUE(x + m.lo[0] >= -8 && x + m.hi[0] <= 8 && z + m.lo[2] >= -16 && z <= -2)
                << "brick " << i << " at " << x << ", " << z << " is outside the field";
            for (size_t j = 0; j < i; j++)
                EXPECT_TRUE(std::abs(x - std::get<1>(bricks[j])) >= m.hi[0] - m.lo[0] ||
                            std::abs(z - std::get<2>(bricks[j])) >= m.hi[2] - m.lo[2])
                    << "bricks " << j << " and " << i << " overlap";
        }
        EXPECT_TRUE(seen.insert(std::set<Brick>(bricks.begin(), bricks.end())).second) << "same as an earlier level";
        EXPECT_GT(hits, previousHits) << "levels must get harder";
        previousHits = hits;
    }
}

TEST(AssetsData, ParticleFilesGiveEveryKeyAndNameExistingSprites) {
    for (int i = 1; i <= 4; i++) {
        std::string name = "scripts/particles" + std::to_string(i) + ".txt";
        SCOPED_TRACE(name);
        std::istringstream in(ReadFile(GameData(name)));
        std::map<std::string, std::string> values;
        for (std::string line; std::getline(in, line);)
            if (!line.empty())
                values[line.substr(0, line.find(' '))] = line.substr(line.find(' ') + 1);
        for (const char* key : {"texture", "life", "spray", "color", "speed", "wind", "direction"})
            EXPECT_TRUE(values.count(key)) << key;
        EXPECT_EQ(values.size(), 7u) << "unknown keys";
        EXPECT_TRUE(std::filesystem::is_regular_file(GameData("textures/" + values["texture"]))) << values["texture"];
        EXPECT_GT(std::atof(values["life"].c_str()), 0.0);
        for (const char* list : {"color", "speed", "wind", "direction"}) {
            double v[3] = {-1, -1, -1};
            char end;
            EXPECT_EQ(std::sscanf(values[list].c_str(), "%lf;%lf;%lf%c", &v[0], &v[1], &v[2], &end), 3) << list;
            // Colours are read as whole numbers: anything between 0 and 1 would be lost.
            for (double c : v)
                EXPECT_TRUE(std::string(list) != "color" || c == 0.0 || c == 1.0) << values[list];
        }
    }
}
