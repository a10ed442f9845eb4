// The object registry: the game names its models by file name and never
// holds them. Two parallel tables of 1024 entries, obj_Name and Solid; entry
// 0 is never filled, so 1023 models fit. Lookups take the first match.
//
// ObjectDraw lags one call behind on purpose: it draws the model with the
// transform stored by the previous ObjectDraw of that name, then stores the
// new one. Models shared by several objects (the bricks) follow the same rule.
#pragma once

#include <string>

#include "scene/solid.h"

constexpr int MAX_OBJECTS = 1024;

// A position, rotation or scale uses x, y, z; a colour uses the rest.
struct S_Pos {
    float x = 0.0f, y = 0.0f, z = 0.0f;
    float red = 0.0f, green = 0.0f, blue = 0.0f, alpha = 0.0f;
};

extern std::string obj_Name[MAX_OBJECTS];
extern CSolid Solid[MAX_OBJECTS];
extern int obj_ID;  // next free entry, starts at 1

// First index whose name matches exactly, or -1. The empty name finds 0.
int ObjectFind(const std::string& name);
// An already present name gives its index and loads nothing; a new name is
// loaded into the next entry (even when its file is missing) and gives 0.
int ObjectLoad(const std::string& name);
// Draws the model with the previous call's transform, then stores this one
// (the box, drawn under "debugbox", already takes the new place). An
// unknown name is logged and draws nothing.
void ObjectDraw(const std::string& name, S_Pos position, S_Pos rotation, S_Pos scale, S_Pos colour);
void ObjectCleanup(const std::string& name);  // frees the arrays; the entry stays taken

// Test/start-up reset: empties both tables and sets obj_ID back to 1.
// Buffers of loaded models are released, so it needs the OpenGL context
// only if models were loaded in VBO mode.
void ObjectReset();
