// CSolid: one 3D model of the game, a list of textured triangles read from a
// ".solid" text file under data/models/, drawn in immediate mode or from two
// vertex buffer objects (AppStatus.useVertexBuffers, fixed before any load).
//
// The file: one or more "NUMPOLLIES n" lines (the triangle count is their
// sum), then per triangle a header line ("TEXTURE name", or any other line,
// usually blank) and three vertex lines "x;y;z;u;v" read with atof. The
// first TEXTURE whose name is not "none" becomes the model's texture. A file
// shorter than its count reads zeros for the missing vertices.
//
// Models are drawn unrotated and, when not loaded, as the axes marker.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

// A model's box: position truncated toward zero, and fixed extents.
struct GL_Rect {
    int16_t x = 0, y = 0, z = 0;
    int16_t width = 0, height = 0, depth = 0;
};

struct S_SolidVertex {
    float x = 0.0f, y = 0.0f, z = 0.0f, u = 0.0f, v = 0.0f;
};

struct S_SolidTriangle {
    S_SolidVertex vertex[3];
};

// A count above this is taken for a damaged file, not a model: the game's
// models have a few hundred triangles.
constexpr int MAX_SOLID_TRIANGLES = 1 << 18;

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
    void ReadTriangles(std::istream& in);

    static int m_ObjectCount;
};

// Half-open overlap of two boxes in x, y and z.
bool check_collision(const GL_Rect& a, const GL_Rect& b);
