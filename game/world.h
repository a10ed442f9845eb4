// Levels ("worlds"): an XML file under data/levels/, read from the asset
// archive into the world list GameWorld, turned into the brick table, drawn
// every frame with the field's frame, and freed at the end of the level.
//
// File layout: root "World", one or more "entities" blocks, one "breakout"
// element per brick with integer attributes "type", "x" and "z". Every child
// node of an "entities" block adds a record, whatever it is; a missing or bad
// attribute keeps the value of the brick before it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class TiXmlDocument;

struct S_GameWorld {
    int32_t type;  // the brick's kind = its starting hit points, 0 to 3
    int32_t x;     // centre across the field
    int32_t z;     // centre along the field; negative is away from the paddle
};

constexpr int WORLD_RECORDS_MAX = 4096;  // records a level file may hold; more is a damaged file

extern std::vector<S_GameWorld> GameWorld;  // the current level's bricks, in file order

// A non-empty name becomes the current world (AppStatus.levelFile); an empty
// one reloads the current world. Reads "data/levels/" + the name. Returns 0.
int World_Load(const std::string& name);
// A file that cannot be read is logged and leaves GameWorld as it was.
void World_Get(const std::string& path);
// Empties GameWorld and fills it from the document's "World" root.
void World_Parse(const TiXmlDocument& document);
// One brick per record, placed at the current brick count; the caller resets
// the count before a new level. Bricks beyond the table's 32 are refused.
void World_Setup();
void World_Draw();  // the field's frame, then every brick's frame
// The two halves of World_Draw: the opaque field, which the frame draws
// before the sky, and the bricks, blended over the sky after it.
void World_DrawField();
void World_DrawBricks();
void World_Cleanup();  // deletes the bricks; the count stays until CBrick::Reset

// Start-up state: no bricks, an empty world list.
void World_Reset();
