// The skybox: a textured box centred on the camera every frame, so that it
// never comes nearer. Two faces scroll by "skyscroll" times the frame time.
// Every face shows the same picture, prefix + "b" + extension: one image is
// all the game ships, and it is chosen on purpose.
#pragma once

#include <string>

class CSkybox {
public:
    // Faces in order: high z, low z, low x, high x, top, bottom.
    static constexpr int FACES = 6;

    int Load(const std::string& prefix, const std::string& extension);  // returns 1
    // Deletes six names starting at each of the six handles in turn, so the
    // windows overlap; the padding below keeps the last rounds in bounds.
    void Cleanup();
    // The box centred on (x, y, z) with those full sizes, in world units;
    // advances the scroll by this frame's time. It is drawn behind
    // everything: depth-tested, so it stays off what is drawn already
    // (nearer than any face, as long as it lies inside the box), and
    // writing no depth, so everything drawn after covers it.
    void Draw_Skybox(float x, float y, float z, float width, float height, float length);

    // The handles, and five zeros after them: Cleanup's last rounds read
    // that far, and deleting name 0 does nothing.
    unsigned int textures[FACES + 5] = {};
};

extern CSkybox Skybox;

// The scroll offset Draw_Skybox keeps between frames, and the rule that moves it.
float Skybox_ScrollOffset();
float Skybox_AdvanceScroll();  // offset += "skyscroll" * frame time
void Skybox_ResetScroll();     // test/start-up reset: offset back to 0
// Start-up state: no faces loaded (the names are forgotten, not deleted), offset 0.
void Skybox_Reset();
