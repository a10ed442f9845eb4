// CSolid: one 3D model of the game, a list of textured triangles read from a
// ".solid" text file under data/models/, drawn in immediate mode or from two
// vertex buffer objects (AppStatus.useVertexBuffers, fixed before any load).
//
// The file format is read by scene/solid_reader.h; the first TEXTURE whose
// name is not "none" (and whose picture loads) becomes the model's texture.
//
// Models are drawn unrotated and, when not loaded, as the axes marker.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "scene/solid_reader.h"

class CSolid {
public:
    CSolid();
    ~CSolid() = default;

    // Sum of the file's NUMPOLLIES numbers; 0 when none or no file.
    static int GetPolygons(const std::string& name);
    bool Load(const std::string& name);
    // The name after the file's first TEXTURE keyword ("" if none).
    static std::string getTexture(const std::string& file);
    void Cleanup();  // frees the buffers and the triangles

    void Draw();
    void DrawIM();
    void DrawVA();
    void BuildVBOs();
    void DrawBoundingBox();
    void ShowSkeleton() {}

    void SetPosition(float x, float y, float z);
    void SetRotation(float x, float y, float z);
    void SetScale(float x, float y, float z);
    void SetColor(float red, float green, float blue, float alpha);

    static int NumModels() { return m_ObjectCount; }

    bool loaded = false;
    float position[3] = {0, 0, 0};
    GL_Rect box;
    float rotation[3] = {0, 0, 0};
    float scale[3] = {0, 0, 0};
    float color[4] = {0, 0, 0, 0};
    int numTriangles = 0;
    std::vector<S_SolidTriangle> triangles;
    std::vector<float> vertices;       // VBO mode, until uploaded: x, y, z per vertex
    std::vector<float> texCoords;      // VBO mode, until uploaded: u, v per vertex
    std::string textureName;
    unsigned int texture = 0;          // 0: none yet
    unsigned int vboVertices = 0;
    unsigned int vboTexCoords = 0;

    // Test/start-up reset: back to a fresh model without counting it again.
    // Drops any buffers without OpenGL: call Cleanup first if they exist.
    void Reset();

private:
    void Begin();
    void End();

    static int m_ObjectCount;
};

// Half-open overlap of two boxes in x, y and z.
bool check_collision(const GL_Rect& a, const GL_Rect& b);
