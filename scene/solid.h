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
    // A fresh model (Reset), counted in NumModels. The destructor frees no
    // buffers: Cleanup first, under the OpenGL context.
    CSolid();
    ~CSolid() = default;

    // Sum of the file's NUMPOLLIES numbers; 0 when none or no file.
    static int GetPolygons(const std::string& name);
    // data/models/<name>, replacing the old triangles and buffers and, in VBO
    // mode, uploading. False, the model marked not loaded and the old data
    // kept, for a missing file, one over the size limit, or a triangle count
    // below 0, above MAX_SOLID_TRIANGLES or above the file's length in bytes.
    // A missing picture gives the fallback texture once it exists.
    bool Load(const std::string& name);
    // The name after the file's first TEXTURE keyword ("" if none).
    static std::string getTexture(const std::string& file);
    void Cleanup();  // frees the buffers and the triangles

    // At the stored place, scale and colour; leaves texturing and face
    // culling off. DrawVA in VBO mode, else DrawIM.
    void Draw();
    void DrawIM();  // immediate mode, nearest filtering; the axes marker when not loaded
    void DrawVA();  // the two buffers; DrawIM when they are missing or were freed
    // Uploads vertices and texCoords where buffer objects exist, then frees
    // both arrays either way.
    void BuildVBOs();
    // Red one-pixel edges from box.x - width to box.x + width (likewise y,
    // z), in the current matrix; leaves texturing off and the colour red.
    void DrawBoundingBox();
    void ShowSkeleton() {}  // does nothing

    // Position in world units (the box takes it truncated). Rotation is only
    // stored: models are drawn unrotated. A fresh model's scale is 0, so set
    // it before drawing; its colour (0..1 per channel) is 0, 0, 0, 0.
    void SetPosition(float x, float y, float z);
    void SetRotation(float x, float y, float z);
    void SetScale(float x, float y, float z);
    void SetColor(float red, float green, float blue, float alpha);

    static int NumModels() { return m_ObjectCount; }  // constructed in this process, never lowered

    bool loaded = false;
    float position[3] = {0, 0, 0};
    GL_Rect box;
    float rotation[3] = {0, 0, 0};
    float scale[3] = {0, 0, 0};
    float color[4] = {0, 0, 0, 0};
    int numTriangles = 0;
    std::vector<S_SolidTriangle> triangles;
    std::vector<float> vertices;   // VBO mode, until uploaded: x, y, z per vertex
    std::vector<float> texCoords;  // VBO mode, until uploaded: u, v per vertex
    std::string textureName;
    unsigned int texture = 0;  // 0: none yet
    unsigned int vboVertices = 0;
    unsigned int vboTexCoords = 0;

    // Test/start-up reset: back to a fresh model without counting it again.
    // Drops any buffers without OpenGL: call Cleanup first if they exist.
    void Reset();

private:
    // Pushes the matrix, places, scales and colours the model; texturing and
    // back-face culling on when it is loaded.
    void Begin();
    void End();  // texturing and culling off, the matrix popped

    static int m_ObjectCount;
};

// Half-open overlap of two boxes in x, y and z.
bool check_collision(const GL_Rect& a, const GL_Rect& b);
