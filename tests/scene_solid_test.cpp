// The .solid reader and model drawing.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include "app/appstatus.h"
#include "gl_test_env.h"
#include "render/texture.h"
#include "scene/solid.h"

namespace {

// A square of side 2 around the origin in the xy plane, counter-clockwise
// seen from +z, after the given header line.
std::string QuadModel(const std::string& header) {
    return "NUMPOLLIES 2\n" + header + "\n" +
           "-1;-1;0;0;0\n1;-1;0;1;0\n1;1;0;1;1\n"
           "\n"
           "-1;-1;0;0;0\n1;1;0;1;1\n-1;1;0;0;1\n";
}

// The centred projection puts model (0, 0) at this window pixel.
constexpr int C = GLTEST_SIZE / 2;

class SceneSolid : public ::testing::Test {
protected:
    void SetUp() override {
        AppStatus = S_AppStatus();
        AppStatus.useVertexBuffers = false;
        Texture_Reset();
    }
    void TearDown() override {
        Texture_Reset();
        AppStatus = S_AppStatus();
    }
    // Window, clean state and the y-up pixel projection.
    static void Canvas() {
        ASSERT_TRUE(GLTest_Window());
        GLTest_ResetState();
        GLTest_CentredProjection();
    }
};

} // namespace

TEST_F(SceneSolid, ReaderSumsCountsSkipsCountLinesAndReadsMissingFieldsAsZero) {
    TestFolder folder;
    std::string file = "NUMPOLLIES 2\nTEXTURE none\n";
    file += "1;2;3;0.5;0.25\n4;5;6\n7;8;9;1;1\n";
    file += "\n10;11;12;0;0\n;;;;\n-1.5;2e1;  3;x;0.75\n";
    file += "NUMPOLLIES 2\nTEXTURE none\n";
    file += "20;0;0;0;0\n21;0;0;0;0\n22;0;0;0;0\n";
    file += "\n" + std::string(300, ' ') + "7;1;1;1;1\n30;0;0;0;0\n31;0;0;0;0\n";
    WriteBytes("data/models/parts.solid", file);

    EXPECT_EQ(CSolid::GetPolygons("parts.solid"), 4) << "two NUMPOLLIES lines sum";
    CSolid solid;
    ASSERT_TRUE(solid.Load("parts.solid"));
    EXPECT_TRUE(solid.loaded);
    ASSERT_EQ(solid.numTriangles, 4);
    ASSERT_EQ(solid.triangles.size(), 4u);
    const S_SolidVertex& first = solid.triangles[0].vertex[0];
    EXPECT_FLOAT_EQ(first.x, 1);
    EXPECT_FLOAT_EQ(first.z, 3);
    EXPECT_FLOAT_EQ(first.u, 0.5f);
    EXPECT_FLOAT_EQ(first.v, 0.25f);
    EXPECT_FLOAT_EQ(solid.triangles[0].vertex[1].y, 5);
    EXPECT_FLOAT_EQ(solid.triangles[0].vertex[1].u, 0) << "missing fields read 0";
    EXPECT_FLOAT_EQ(solid.triangles[1].vertex[0].x, 10) << "a blank header line is skipped";
    EXPECT_FLOAT_EQ(solid.triangles[1].vertex[1].x, 0);
    const S_SolidVertex& odd = solid.triangles[1].vertex[2];
    EXPECT_FLOAT_EQ(odd.x, -1.5f);
    EXPECT_FLOAT_EQ(odd.y, 20.0f);
    EXPECT_FLOAT_EQ(odd.z, 3.0f);
    EXPECT_FLOAT_EQ(odd.u, 0.0f) << "atof of text";
    EXPECT_FLOAT_EQ(odd.v, 0.75f);
    EXPECT_FLOAT_EQ(solid.triangles[2].vertex[0].x, 20) << "the second NUMPOLLIES line is passed over";
    EXPECT_FLOAT_EQ(solid.triangles[3].vertex[0].x, 0) << "a field is read from 255 characters at most";
    EXPECT_FLOAT_EQ(solid.triangles[3].vertex[0].y, 1);
    EXPECT_FLOAT_EQ(solid.triangles[3].vertex[2].x, 31);
    EXPECT_EQ(solid.texture, 0u) << "\"none\" leaves the model untextured";
    for (const std::string& line : AppStatus.consoleLines)
        EXPECT_EQ(line.find("could not load texture"), std::string::npos) << "\"none\" is not a file: " << line;
    EXPECT_EQ(solid.textureName, "none");
    EXPECT_EQ(CSolid::getTexture("data/models/parts.solid"), "none");
    EXPECT_EQ(CSolid::getTexture("data/models/absent.solid"), "");
}

TEST_F(SceneSolid, ShortEmptyMissingAndAbsurdFiles) {
    TestFolder folder;
    AppStatus.verboseLog = true;
    WriteBytes("data/models/short.solid", "NUMPOLLIES 3\n\n1;1;1;1;1\n");
    WriteBytes("data/models/empty.solid", "NUMPOLLIES 0\n");
    WriteBytes("data/models/nocount.solid", "TEXTURE none\n1;1;1;1;1\n");
    WriteBytes("data/models/huge.solid", "NUMPOLLIES 2000000000\nNUMPOLLIES 2000000000\n\n1;1;1;1;1\n");
    WriteBytes("data/models/negative.solid", "NUMPOLLIES -4\n");

    CSolid solid;
    ASSERT_TRUE(solid.Load("short.solid"));
    ASSERT_EQ(solid.triangles.size(), 3u);
    EXPECT_FLOAT_EQ(solid.triangles[0].vertex[0].x, 1);
    EXPECT_FLOAT_EQ(solid.triangles[0].vertex[1].x, 0) << "past the end every line reads zeros";
    EXPECT_FLOAT_EQ(solid.triangles[2].vertex[2].v, 0);

    CSolid empty;
    EXPECT_TRUE(empty.Load("empty.solid"));
    EXPECT_TRUE(empty.triangles.empty());
    EXPECT_EQ(CSolid::GetPolygons("nocount.solid"), 0);

    CSolid missing;
    EXPECT_FALSE(missing.Load("nothere.solid"));
    EXPECT_FALSE(missing.loaded);
    CSolid huge;
    EXPECT_FALSE(huge.Load("huge.solid")) << "a damaged count allocates nothing";
    EXPECT_TRUE(huge.triangles.empty());
    CSolid negative;
    EXPECT_FALSE(negative.Load("negative.solid"));

    const std::string log = folder.Log();
    EXPECT_NE(log.find(" -- attempting to load model short.solid ... success\n"), std::string::npos) << log;
    EXPECT_NE(log.find(" -- attempting to load model nothere.solid ... ERROR: could not load nothere.solid\n"),
              std::string::npos) << log;
    EXPECT_NE(log.find("ERROR: could not load huge.solid\n"), std::string::npos);
}

TEST_F(SceneSolid, ConstructionCountsAndSettersRefreshTheBox) {
    const int before = CSolid::NumModels();
    CSolid solid;
    EXPECT_EQ(CSolid::NumModels(), before + 1);
    EXPECT_FALSE(solid.loaded);
    EXPECT_EQ(solid.box.width, 20);
    EXPECT_EQ(solid.box.height, 20);
    EXPECT_EQ(solid.box.depth, 30);
    solid.SetPosition(3.9f, -2.7f, 0.5f);
    EXPECT_EQ(solid.box.x, 3);
    EXPECT_EQ(solid.box.y, -2) << "truncated toward zero";
    EXPECT_EQ(solid.box.z, 0);
    EXPECT_FLOAT_EQ(solid.position[1], -2.7f);

    GL_Rect a;
    a.x = 0, a.y = 0, a.z = 0, a.width = 10, a.height = 10, a.depth = 10;
    GL_Rect b = a;
    b.x = 9;
    EXPECT_TRUE(check_collision(a, b));
    b.x = 10;
    EXPECT_FALSE(check_collision(a, b)) << "half-open in x";
    b.x = 0;
    b.y = -10;
    EXPECT_FALSE(check_collision(a, b)) << "half-open in y";
    b.y = -9;
    EXPECT_TRUE(check_collision(a, b));
}

TEST_F(SceneSolid, FirstRealTextureWinsAndAFailedOneLetsTheNextTry) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    S_Texel red;
    red.r = 255;
    WriteBytes("data/textures/skin.tga", SolidColourTga(16, 16, 24, red));
    WriteBytes("data/textures/other.tga", SolidColourTga(16, 16, 24, red));
    std::string file = "NUMPOLLIES 3\nTEXTURE none\n0;0;0;0;0\n0;0;0;0;0\n0;0;0;0;0\n";
    file += "TEXTURE missing.tga\n0;0;0;0;0\n0;0;0;0;0\n0;0;0;0;0\n";
    file += "TEXTURE skin.tga\n0;0;0;0;0\n0;0;0;0;0\n0;0;0;0;0\n";
    WriteBytes("data/models/retry.solid", file);
    CSolid retry;
    ASSERT_TRUE(retry.Load("retry.solid"));
    const unsigned int skin = CTexture::CheckPreLoaded("data/textures/skin.tga");
    EXPECT_NE(skin, 0u);
    EXPECT_EQ(retry.texture, skin) << "before the fallback exists a missing picture gives 0";

    file = "NUMPOLLIES 3\n\n0;0;0;0;0\n0;0;0;0;0\n0;0;0;0;0\n";
    file += "TEXTURE skin.tga\n0;0;0;0;0\n0;0;0;0;0\n0;0;0;0;0\n";
    file += "TEXTURE other.tga\n0;0;0;0;0\n0;0;0;0;0\n0;0;0;0;0\n";
    WriteBytes("data/models/first.solid", file);
    CSolid first;
    ASSERT_TRUE(first.Load("first.solid"));
    EXPECT_EQ(first.texture, skin);
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/other.tga"), 0u) << "later TEXTURE lines load nothing";
}

TEST_F(SceneSolid, BothDrawingModesShowTheSameUnrotatedModel) {
    Canvas();
    TestFolder folder;
    S_Texel green;
    green.g = 255;
    WriteBytes("data/textures/skin.tga", SolidColourTga(16, 16, 24, green));
    WriteBytes("data/models/quad.solid", QuadModel("TEXTURE skin.tga"));

    AppStatus.useVertexBuffers = true;
    CSolid vbo;
    ASSERT_TRUE(vbo.Load("quad.solid"));
    EXPECT_NE(vbo.vboVertices, 0u);
    EXPECT_NE(vbo.vboTexCoords, 0u);
    EXPECT_EQ(vbo.vertices.capacity(), 0u) << "client copies freed after the upload";
    EXPECT_EQ(vbo.texCoords.capacity(), 0u);
    EXPECT_EQ(vbo.triangles.size(), 2u) << "the triangle array stays";

    vbo.SetPosition(-100, 0, 0);
    vbo.SetScale(40, 40, 1);
    vbo.SetColor(1, 1, 1, 1);
    vbo.SetRotation(90, 0, 0);  // never turned: an edge-on quad would vanish
    vbo.Draw();
    EXPECT_RGB(GLTest_Pixel(C - 100, C), 0, 255, 0, 8);
    EXPECT_RGB(GLTest_Pixel(C - 100 + 35, C - 35), 0, 255, 0, 8);
    EXPECT_RGB(GLTest_Pixel(C - 100 + 45, C), 0, 0, 0, 0);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    GLint buffer = -1;
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING_ARB, &buffer);
    EXPECT_EQ(buffer, 0);

    AppStatus.useVertexBuffers = false;
    CSolid im;
    ASSERT_TRUE(im.Load("quad.solid"));
    EXPECT_EQ(im.vboVertices, 0u);
    im.SetPosition(100, 0, 0);
    im.SetScale(40, 40, 1);
    im.SetColor(1, 0, 1, 1);  // the colour modulates the texture: green * magenta = black
    im.Draw();
    EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 0, 0, 0);
    im.SetColor(1, 1, 1, 1);
    im.Draw();
    EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 255, 0, 8);
    GLint filter = 0;
    glBindTexture(GL_TEXTURE_2D, im.texture);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    EXPECT_EQ(filter, GL_NEAREST) << "immediate mode samples with nearest filtering";

    // Back faces are culled: the mirrored quad is not drawn.
    GLTest_ResetState();
    GLTest_CentredProjection();
    im.SetScale(-40, 40, 1);
    im.Draw();
    EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 0, 0, 0);

    vbo.Cleanup();
    EXPECT_EQ(vbo.vboVertices, 0u);
    EXPECT_TRUE(vbo.triangles.empty());
    AppStatus.useVertexBuffers = true;
    vbo.Draw();  // nothing left to draw, and nothing to crash on
    EXPECT_RGB(GLTest_Pixel(C - 100, C), 0, 0, 0, 0);
    im.Cleanup();
}

TEST_F(SceneSolid, UnloadedModelsDrawTheAxesMarkerAndBoxesAreRed) {
    Canvas();
    TestFolder folder;
    CSolid missing;
    EXPECT_FALSE(missing.Load("nothere.solid"));
    missing.SetPosition(-99.5f, 0.5f, 0);
    missing.SetScale(10, 10, 1);
    missing.SetColor(1, 1, 1, 1);
    missing.Draw();
    EXPECT_TRUE(FindColour(C - 100 + 50, C - 1, 2, 255, 0, 0)) << "x axis in red";
    EXPECT_TRUE(FindColour(C - 100, C - 1 - 50, 2, 0, 255, 0)) << "y axis in green, upwards";
    EXPECT_FALSE(FindColour(C - 100 + 50, C - 1 - 50, 3, 255, 0, 0));

    GLTest_ResetState();
    GLTest_CentredProjection();
    CSolid boxed;
    boxed.SetPosition(0.5f, 0.5f, 0);
    boxed.DrawBoundingBox();
    // x from -19.5 to 20.5, y likewise: four red edges seen along z.
    EXPECT_TRUE(FindColour(C + 20, C, 2, 255, 0, 0));
    EXPECT_TRUE(FindColour(C - 20, C, 2, 255, 0, 0));
    EXPECT_TRUE(FindColour(C, C - 20, 2, 255, 0, 0));
    EXPECT_FALSE(FindColour(C, C, 5, 255, 0, 0)) << "only edges";
}
