// The .solid reader, model drawing and the object registry.
#include <GL/gl.h>

#include <sstream>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "gl_test_env.h"
#include "render/texture.h"
#include "scene/objects.h"
#include "scene/solid.h"
#include "scene/solid_reader.h"

namespace {

constexpr int C = GLTEST_SIZE / 2;  // the centred projection puts (0, 0) here

// A square of side 2 around the origin, counter-clockwise seen from +z.
std::string Quad(const std::string& header1, const std::string& header2) {
    return "NUMPOLLIES 2\n" + header1 + "\n-1;-1;0;0;0\n1;-1;0;1;0\n1;1;0;1;1\n" + header2 +
           "\n-1;-1;0;0;0\n1;1;0;1;1\n-1;1;0;0;1\n";
}

std::vector<float> Fields(const S_SolidVertex& v) { return {v.x, v.y, v.z, v.u, v.v}; }

S_Pos Pos(float x, float y, float z = 0) { return {x, y, z, 1, 1, 1, 1}; }

class GLSolid : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        AppStatus.useVertexBuffers = false;
        ObjectReset();
        GLTest_CentredProjection();
    }
    void TearDown() override {
        ObjectReset();
        GLTest::TearDown();
    }
};
using GLObjects = GLSolid;

}  // namespace

TEST(SolidReader, SumsCountsAndReadsWhatIsMissingAsZeros) {
    const std::string parts = "NUMPOLLIES 1\nTEXTURE none\n1;2;3;0.5;0.25\n4;5\n-1.5;2e1;x\n"
                              "NUMPOLLIES 2\nTEXTURE b.tga\n20;0;0;0;0\n21;0;0;0;0\n";
    std::istringstream count(parts), huge("NUMPOLLIES 2000000000\nNUMPOLLIES 2000000000\n"),
        negative("NUMPOLLIES -2000000000\nNUMPOLLIES -2000000000\nNUMPOLLIES 5\n");
    EXPECT_EQ(Solid_CountTriangles(count), 3) << "two NUMPOLLIES lines sum";
    EXPECT_EQ(Solid_CountTriangles(huge), MAX_SOLID_TRIANGLES + 1) << "the sum stops past the limit";
    EXPECT_LT(Solid_CountTriangles(negative), 0) << "nor wraps round to a positive count";

    std::istringstream in(parts);
    S_SolidText text;
    Solid_ReadTriangles(in, 3, text);
    ASSERT_EQ(text.triangles.size(), 3u);
    const std::vector<float> zeros(5, 0.0f);
    EXPECT_EQ(Fields(text.triangles[0].vertex[0]), (std::vector<float>{1, 2, 3, 0.5f, 0.25f}));
    EXPECT_EQ(Fields(text.triangles[0].vertex[1]), (std::vector<float>{4, 5, 0, 0, 0}));
    EXPECT_EQ(Fields(text.triangles[0].vertex[2]), (std::vector<float>{-1.5f, 20, 0, 0, 0}));
    EXPECT_EQ(text.triangles[1].vertex[1].x, 21) << "the second NUMPOLLIES line is passed over";
    EXPECT_EQ(Fields(text.triangles[1].vertex[2]), zeros) << "past the end every line reads zeros";
    EXPECT_EQ(Fields(text.triangles[2].vertex[0]), zeros);
    EXPECT_EQ(text.textures, (std::vector<std::string>{"none", "b.tga"}));
    std::istringstream first("\nTEXTURE  two words\nTEXTURE other\n");
    EXPECT_EQ(Solid_FirstTexture(first), " two words") << "the name is everything after the keyword's blank";
}

TEST_F(GLSolid, NoneLeavesTheModelUntexturedAndMissingOnesDrawTheAxes) {
    WriteFile("data/models/parts.solid", "NUMPOLLIES 1\nTEXTURE none\n1;2;3;0.5;0.25\n4;5\n6\n");
    DefaultTexture();  // so that loading "none" would show as a non-zero texture
    CSolid solid, missing;
    ASSERT_TRUE(solid.Load("parts.solid"));
    EXPECT_EQ(solid.texture, 0u) << "\"none\" leaves the model untextured";
    EXPECT_EQ(ReadFile("log.txt").find("could not load texture"), std::string::npos) << "nor taken for a file";

    EXPECT_FALSE(missing.Load("nothere.solid"));
    missing.SetPosition(-99.5f, 0.5f, 0);
    missing.SetScale(10, 10, 1);
    missing.SetColor(1, 1, 1, 1);
    missing.Draw();
    EXPECT_TRUE(FindColour(C - 100 + 50, C - 1, 2, 255, 0, 0)) << "x axis in red";
    EXPECT_TRUE(FindColour(C - 100, C - 1 - 50, 2, 0, 255, 0)) << "y axis in green, upwards";
    EXPECT_FALSE(FindColour(C - 100 + 50, C - 1 - 50, 3, 255, 0, 0));
}

TEST_F(GLSolid, BothDrawingModesShowTheModelUnrotatedAndCullBackFaces) {
    WriteFile("data/textures/skin.tga", TgaFill(16, 16, {0, 255, 0, 255}));
    WriteFile("data/models/quad.solid", Quad("TEXTURE missing.tga", "TEXTURE skin.tga"));
    for (bool buffers : {true, false}) {
        SCOPED_TRACE(buffers ? "vertex buffers" : "immediate mode");
        AppStatus.useVertexBuffers = buffers;
        GLTest_ResetState();
        GLTest_CentredProjection();
        CSolid solid;
        ASSERT_TRUE(solid.Load("quad.solid"));
        EXPECT_EQ(solid.texture, FindTexture("skin.tga")) << "a failed picture lets the next try";
        EXPECT_EQ(solid.vboVertices != 0, buffers);
        EXPECT_EQ(solid.vertices.capacity() + solid.texCoords.capacity(), 0u) << "client arrays freed after the upload";
        solid.SetPosition(-100, 0, 0);
        solid.SetScale(40, 40, 1);
        solid.SetRotation(90, 0, 0);    // never turned: an edge-on quad would vanish
        solid.SetColor(1, 0.5f, 1, 1);  // modulates the texture
        solid.Draw();
        EXPECT_RGB(GLTest_Pixel(C - 100, C), 0, 128, 0);
        EXPECT_RGB(GLTest_Pixel(C - 100 + 35, C - 35), 0, 128, 0);
        EXPECT_RGB(GLTest_Pixel(C - 100 + 45, C), 0, 0, 0);
        solid.SetPosition(100, 0, 0);
        solid.SetScale(-40, 40, 1);  // mirrored: only its back faces the viewer
        solid.Draw();
        EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 0, 0);
        solid.Cleanup();
    }
    WriteFile("data/textures/other.tga", TgaFill(16, 16, {0, 255, 0, 255}));
    WriteFile("data/models/first.solid", Quad("TEXTURE skin.tga", "TEXTURE other.tga"));
    CSolid first;
    first.Load("first.solid");
    EXPECT_EQ(CTexture::Count(), 1) << "once the model has a texture, later TEXTURE lines load nothing";
}

TEST_F(GLObjects, SlotNumbersMissingFilesAndThe1023Limit) {
    WriteFile("data/models/quad.solid", Quad("", ""));
    EXPECT_EQ(ObjectLoad("quad.solid"), 0) << "a new name answers 0, not its slot";
    EXPECT_EQ(ObjectLoad("missing.solid"), 0);
    EXPECT_EQ(ObjectLoad("quad.solid"), 1);
    EXPECT_EQ(ObjectLoad("missing.solid"), 2) << "a missing file still takes a slot";
    EXPECT_TRUE(Solid[1].loaded && !Solid[2].loaded);
    EXPECT_EQ(ObjectLoad("Quad.solid"), 0);
    EXPECT_EQ(ObjectFind("Quad.solid"), 3) << "names are compared exactly";
    for (int i = 4; i < MAX_OBJECTS; i++)
        ObjectLoad("m" + std::to_string(i));
    EXPECT_EQ(ObjectFind("m1023"), 1023);
    EXPECT_EQ(ObjectLoad("one.too.many"), 0);
    EXPECT_EQ(AppStatus.consoleLines.front(), "ERROR: MAX_OBJECT was execeded!");
    EXPECT_EQ(ObjectFind("one.too.many"), -1);
}

// A deliberate lag that the models' placement in play depends on.
TEST_F(GLObjects, EveryDrawShowsThePreviousCallsTransform) {
    WriteFile("data/models/quad.solid", Quad("", ""));
    ObjectLoad("quad.solid");
    const S_Pos none = Pos(0, 0), size = Pos(30, 30, 1);
    ObjectDraw("quad.solid", Pos(-100, 0), none, size, Pos(1, 1, 1));
    EXPECT_RGB(GLTest_Pixel(C - 100, C), 0, 0, 0) << "a fresh model has zero scale: the first call shows nothing";
    ObjectDraw("quad.solid", Pos(100, 0), none, size, Pos(1, 1, 1));
    EXPECT_RGB(GLTest_Pixel(C - 100, C), 255, 255, 255) << "drawn where the first call asked";
    EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 0, 0);
    ObjectDraw("nope.solid", none, none, size, none);
    EXPECT_EQ(AppStatus.consoleLines.front(), "WARNING: could not find object * nope.solid * in stack");
}
