// The level loader and the brick table's owner. Drawing is in world_draw.cpp.
#include "game/world.h"

#include <tinyxml.h>

#include "common/appstatus.h"
#include "common/archive.h"
#include "common/log.h"
#include "common/utils.h"
#include "game/brick.h"

std::vector<S_GameWorld> GameWorld;

namespace {

const char* const ARCHIVE = "assets.zip";
const char* const LEVEL_DIR = "levels/";

// A level file on disk wins over the packaged one, so a level can be changed
// without rebuilding the archive; the archive holds the shipped levels.
std::string ReadLevel(const std::string& path) {
    if (!FileExists(path))
        return readZipFile(ARCHIVE, path);
    return ReadDataFile(path);  // too large: "" (logged), and so refused below
}

}  // namespace

int World_Load(const std::string& name) {
    if (!name.empty())
        AppStatus.levelFile = name;
    const std::string path = std::string("data/") + LEVEL_DIR + AppStatus.levelFile;
    VerboseLog(" -- attempting to load world: %s ... ", AppStatus.levelFile.c_str());
    World_Get(path);
    return 0;
}

void World_Get(const std::string& path) {
    const std::string text = ReadLevel(path);
    TiXmlDocument document(path.c_str());
    document.Parse(XmlSafeText(text).c_str());
    if (text.empty() || document.Error()) {
        VerboseLog("FAILURE!\n");
        Log(" -- ERROR: Failed to load world: %s\n", path.c_str());
        return;  // the previous level's list stays
    }
    VerboseLog("success!\n");
    World_Parse(document);
}

void World_Parse(const TiXmlDocument& document) {
    GameWorld.clear();
    const TiXmlElement* root = document.FirstChildElement("World");
    if (!root) {
        Log("\n!-- FAILURE -- corrupt world.xml --!\n");
        return;
    }
    // A record per child of an entities block; a level has at most 32 bricks,
    // so a file with thousands of children is damaged: refused like a corrupt one.
    int records = 0;
    for (const TiXmlElement* entities = root->FirstChildElement("entities"); entities;
         entities = entities->NextSiblingElement("entities"))
        for (const TiXmlNode* node = entities->FirstChild(); node; node = node->NextSibling())
            ++records;
    if (records > WORLD_RECORDS_MAX) {
        Log(" -- ERROR: world %s has %d entities, more than %d: not loaded\n", AppStatus.levelFile.c_str(), records,
            WORLD_RECORDS_MAX);
        return;
    }
    Log(" -- %s world loaded!\n", AppStatus.levelFile.c_str());

    // One working record for the whole file: what an element leaves out is
    // carried over from the brick before it, and a child that is not a brick
    // (a comment, text, another element) repeats that brick. Level files are
    // written with this in mind.
    S_GameWorld brick{0, 0, 0};
    for (const TiXmlElement* entities = root->FirstChildElement("entities"); entities;
         entities = entities->NextSiblingElement("entities")) {
        for (const TiXmlNode* node = entities->FirstChild(); node; node = node->NextSibling()) {
            const TiXmlElement* element = node->ToElement();
            if (element && element->ValueStr() == "breakout") {
                // TinyXML leaves the field alone when the attribute is missing or not a number.
                element->QueryIntAttribute("type", &brick.type);
                element->QueryIntAttribute("x", &brick.x);
                element->QueryIntAttribute("z", &brick.z);
            }
            GameWorld.push_back(brick);
        }
    }
}

void World_Setup() {
    for (const S_GameWorld& record : GameWorld) {
        // The table has 32 places and a brick goes at the current count: a
        // longer list is cut here rather than written past the table's end.
        if (CBrick::Count() >= MAX_BRICKS) {
            Log(" -- WARNING: world %s has more than %d bricks, the rest are ignored\n", AppStatus.levelFile.c_str(),
                MAX_BRICKS);
            return;
        }
        const int index = CBrick::Count();
        delete Brick[index];  // left over when the count was reset without a clean-up
        Brick[index] = new CBrick(static_cast<float>(record.x), static_cast<float>(record.z), record.type);
    }
}

void World_Cleanup() {
    for (int i = 0; i < CBrick::Count() && i < MAX_BRICKS; i++) {
        delete Brick[i];
        Brick[i] = nullptr;
    }
}

void World_Reset() {
    Brick_Reset();
    GameWorld.clear();
}
