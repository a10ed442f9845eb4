#include "scene/solid.h"

#include <GL/gl.h>

#include <fstream>
#include <utility>

#include "common/appstatus.h"
#include "common/log.h"
#include "common/utils.h"
#include "render/glext.h"
#include "render/glstate.h"
#include "render/texture.h"

int CSolid::m_ObjectCount = 0;

namespace {
std::string ModelPath(const std::string& name) { return std::string("data/") + "models/" + name; }
}  // namespace

CSolid::CSolid() {
    Reset();
    m_ObjectCount++;
}

void CSolid::Reset() {
    loaded = false;
    for (int i = 0; i < 3; i++)
        position[i] = rotation[i] = scale[i] = 0.0f;
    for (float& c : color)
        c = 0.0f;
    box = GL_Rect();
    box.width = 20;
    box.height = 20;
    box.depth = 30;
    numTriangles = 0;
    triangles.clear();
    vertices.clear();
    texCoords.clear();
    textureName.clear();
    texture = 0;
    vboVertices = 0;
    vboTexCoords = 0;
}

int CSolid::GetPolygons(const std::string& name) {
    std::ifstream in(ModelPath(name));
    return Solid_CountTriangles(in);
}

std::string CSolid::getTexture(const std::string& file) {
    std::ifstream in(file);
    return Solid_FirstTexture(in);
}

bool CSolid::Load(const std::string& name) {
    VerboseLog(" -- attempting to load model %s ... ", name.c_str());
    const std::string path = ModelPath(name);
    std::ifstream in(path);
    // Measured before it is read: the count alone would read a huge file through.
    const bool tooLarge = in && FileTooLarge(path);
    int count = in && !tooLarge ? GetPolygons(name) : 0;
    // A count larger than the file's length in bytes cannot be a model's:
    // refused before the triangle table is made for it.
    const long long length = FileSize(path);
    if (in && count > length)
        Log("ERROR: model %s claims %i triangles in %lld bytes\n", name.c_str(), count, length);
    if (!in || tooLarge || count < 0 || count > MAX_SOLID_TRIANGLES || count > length) {
        VerboseLog("ERROR: could not load %s\n", name.c_str());
        loaded = false;
        return false;
    }
    Cleanup();
    texture = 0;
    numTriangles = count;
    S_SolidText text;
    Solid_ReadTriangles(in, count, text);
    triangles = std::move(text.triangles);
    for (const std::string& picture : text.textures) {
        textureName = picture;
        // Once the model has a texture later TEXTURE lines change nothing;
        // a picture that failed to load (0) lets the next one try.
        if (texture == 0 && textureName != "none")
            texture = GetTexture(textureName, 1);
    }

    if (AppStatus.useVertexBuffers) {
        vertices.clear();
        texCoords.clear();
        vertices.reserve(size_t(count) * 9);
        texCoords.reserve(size_t(count) * 6);
        for (const S_SolidTriangle& triangle : triangles) {
            for (const S_SolidVertex& v : triangle.vertex) {
                vertices.insert(vertices.end(), {v.x, v.y, v.z});
                texCoords.insert(texCoords.end(), {v.u, v.v});
            }
        }
        BuildVBOs();
    }
    loaded = true;
    VerboseLog("success\n");
    return true;
}

void CSolid::BuildVBOs() {
    GLext_EnsureLoaded();
    if (GLext_HaveBufferObjects()) {
        glProc.GenBuffersARB(1, &vboVertices);
        glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, vboVertices);
        glProc.BufferDataARB(GL_ARRAY_BUFFER_ARB, GLsizeiptrARB(vertices.size() * sizeof(float)), vertices.data(),
                             GL_STATIC_DRAW_ARB);
        glProc.GenBuffersARB(1, &vboTexCoords);
        glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, vboTexCoords);
        glProc.BufferDataARB(GL_ARRAY_BUFFER_ARB, GLsizeiptrARB(texCoords.size() * sizeof(float)), texCoords.data(),
                             GL_STATIC_DRAW_ARB);
        glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
    }
    // The copies live on the card now; without buffer objects DrawVA falls
    // back to the triangle array, which stays.
    std::vector<float>().swap(vertices);
    std::vector<float>().swap(texCoords);
}

void CSolid::Cleanup() {
    if (vboVertices || vboTexCoords) {
        GLext_EnsureLoaded();
        if (GLext_HaveBufferObjects()) {
            glProc.DeleteBuffersARB(1, &vboVertices);
            glProc.DeleteBuffersARB(1, &vboTexCoords);
        }
    }
    vboVertices = 0;
    vboTexCoords = 0;
    std::vector<S_SolidTriangle>().swap(triangles);
}

void CSolid::Draw() {
    if (AppStatus.useVertexBuffers)
        DrawVA();
    else
        DrawIM();
}

void CSolid::Begin() {
    glPushMatrix();
    if (loaded) {
        glEnable(GL_TEXTURE_2D);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glEnable(GL_CULL_FACE);
    }
    glTranslatef(position[0], position[1], position[2]);
    // An angle of 0 with the rotation as the axis: SetRotation is stored but
    // never turns a model (GLSolid.BothDrawingModesShowTheModelUnrotatedAndCullBackFaces).
    glRotatef(0.0f, rotation[0], rotation[1], rotation[2]);
    glScalef(scale[0], scale[1], scale[2]);
    glColor4f(color[0], color[1], color[2], color[3]);
}

void CSolid::End() {
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glPopMatrix();
}

void CSolid::DrawIM() {
    Begin();
    if (loaded) {
        for (const S_SolidTriangle& triangle : triangles) {
            glBindTexture(GL_TEXTURE_2D, texture);
            // Nearest wins over the linear filters set in Begin.
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
            glBegin(GL_TRIANGLES);
            glNormal3f(0.0f, 0.0f, 1.0f);
            for (const S_SolidVertex& v : triangle.vertex) {
                glTexCoord2f(v.u, v.v);
                glVertex3f(v.x, v.y, v.z);
            }
            glEnd();
        }
    } else {
        drawDefaultObj();
    }
    End();
}

void CSolid::DrawVA() {
    // Without buffers (no buffer objects, or freed by Cleanup) the triangle
    // array is all there is.
    if (loaded && (vboVertices == 0 || vboTexCoords == 0 || !GLext_HaveBufferObjects())) {
        DrawIM();
        return;
    }
    Begin();
    if (loaded) {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glBindTexture(GL_TEXTURE_2D, texture);
        glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, vboVertices);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, vboTexCoords);
        glTexCoordPointer(2, GL_FLOAT, 0, nullptr);
        glDrawArrays(GL_TRIANGLES, 0, numTriangles * 3);
        glDisableClientState(GL_VERTEX_ARRAY);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
    } else {
        drawDefaultObj();
    }
    End();
}

void CSolid::DrawBoundingBox() {
    const float x0 = float(box.x - box.width), x1 = float(box.x + box.width);
    const float y0 = float(box.y - box.height), y1 = float(box.y + box.height);
    const float z0 = float(box.z - box.depth), z1 = float(box.z + box.depth);
    const float corners[8][3] = {{x0, y0, z0}, {x1, y0, z0}, {x1, y1, z0}, {x0, y1, z0},
                                 {x0, y0, z1}, {x1, y0, z1}, {x1, y1, z1}, {x0, y1, z1}};
    const int edges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                              {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
    glDisable(GL_TEXTURE_2D);
    glColor3f(1.0f, 0.0f, 0.0f);
    glBegin(GL_LINES);
    // Inside the line list GL refuses the width request; the box is drawn
    // with one-pixel lines.
    glLineWidth(5.0f);
    for (const auto& edge : edges) {
        glVertex3fv(corners[edge[0]]);
        glVertex3fv(corners[edge[1]]);
    }
    glEnd();
}

void CSolid::SetPosition(float x, float y, float z) {
    position[0] = x;
    position[1] = y;
    position[2] = z;
    box.x = int16_t(x);
    box.y = int16_t(y);
    box.z = int16_t(z);
}

void CSolid::SetRotation(float x, float y, float z) {
    rotation[0] = x;
    rotation[1] = y;
    rotation[2] = z;
}

void CSolid::SetScale(float x, float y, float z) {
    scale[0] = x;
    scale[1] = y;
    scale[2] = z;
}

void CSolid::SetColor(float red, float green, float blue, float alpha) {
    color[0] = red;
    color[1] = green;
    color[2] = blue;
    color[3] = alpha;
}

bool check_collision(const GL_Rect& a, const GL_Rect& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height &&
           a.z < b.z + b.depth && b.z < a.z + a.depth;
}
