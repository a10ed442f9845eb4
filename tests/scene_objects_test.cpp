// The object registry: slot numbers, capacity, the draw lag and "debugbox".
#include <GL/gl.h>
#include <gtest/gtest.h>

#include "app/appstatus.h"
#include "console/cvar.h"
#include "gl_test_env.h"
#include "render/texture.h"
#include "scene/objects.h"

namespace {

constexpr int C = GLTEST_SIZE / 2;

const char* const QUAD =
    "NUMPOLLIES 2\nTEXTURE none\n"
    "-1;-1;0;0;0\n1;-1;0;1;0\n1;1;0;1;1\n"
    "\n"
    "-1;-1;0;0;0\n1;1;0;1;1\n-1;1;0;0;1\n";

S_Pos At(float x, float y, float z = 0) {
    S_Pos p;
    p.x = x;
    p.y = y;
    p.z = z;
    return p;
}

S_Pos Colour(float r, float g, float b, float a = 1) {
    S_Pos p;
    p.red = r;
    p.green = g;
    p.blue = b;
    p.alpha = a;
    return p;
}

class SceneObjects : public ::testing::Test {
protected:
    void SetUp() override {
        AppStatus = S_AppStatus();
        AppStatus.useVertexBuffers = false;
        RegisterDefaultCvars();
        Texture_Reset();
        ObjectReset();
    }
    void TearDown() override {
        ObjectReset();
        Cvar_Clear();
        AppStatus = S_AppStatus();
    }
};

} // namespace

TEST_F(SceneObjects, SlotsStartAtOneAndANewNameAnswersZero) {
    TestFolder folder;
    WriteBytes("data/models/quad.solid", QUAD);
    EXPECT_EQ(obj_ID, 1);
    EXPECT_EQ(ObjectFind(""), 0) << "entry 0 keeps the empty name";

    EXPECT_EQ(ObjectLoad("quad.solid"), 0) << "the first load answers 0, not its index";
    EXPECT_EQ(obj_Name[1], "quad.solid");
    EXPECT_TRUE(Solid[1].loaded);
    EXPECT_EQ(ObjectLoad("missing.solid"), 0);
    EXPECT_FALSE(Solid[2].loaded) << "a missing file still takes a place";
    EXPECT_EQ(obj_ID, 3);
    EXPECT_EQ(ObjectLoad("quad.solid"), 1);
    EXPECT_EQ(ObjectLoad("missing.solid"), 2);
    EXPECT_EQ(obj_ID, 3) << "known names load nothing";
    EXPECT_EQ(ObjectLoad("Quad.solid"), 0) << "names are compared exactly";
    EXPECT_EQ(ObjectFind("Quad.solid"), 3);
    EXPECT_EQ(ObjectLoad(""), 0);
    EXPECT_EQ(obj_ID, 4);

    ObjectCleanup("quad.solid");
    EXPECT_TRUE(Solid[1].triangles.empty());
    EXPECT_EQ(ObjectLoad("quad.solid"), 1) << "cleanup keeps the entry taken";
    ObjectCleanup("never.solid");  // unknown: nothing happens
}

TEST_F(SceneObjects, TheTableHolds1023ModelsAndRefusesTheNext) {
    TestFolder folder;
    for (int i = 1; i < MAX_OBJECTS; i++)
        ASSERT_EQ(ObjectLoad("m" + std::to_string(i)), 0) << i;
    EXPECT_EQ(obj_ID, 1024);
    EXPECT_EQ(obj_Name[1023], "m1023");
    EXPECT_EQ(ObjectLoad("one.too.many"), 0);
    ASSERT_FALSE(AppStatus.consoleLines.empty());
    EXPECT_EQ(AppStatus.consoleLines.front(), "ERROR: MAX_OBJECT was execeded!");
    EXPECT_NE(folder.Log().find("ERROR: MAX_OBJECT was execeded!\n"), std::string::npos);
    EXPECT_EQ(ObjectFind("one.too.many"), -1);
    EXPECT_EQ(obj_ID, 1024);
    EXPECT_EQ(ObjectLoad("m500"), 500);
    EXPECT_EQ(ObjectLoad("m1023"), 1023);
}

TEST_F(SceneObjects, EveryDrawShowsThePreviousCallsTransform) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    WriteBytes("data/models/quad.solid", QUAD);
    ObjectLoad("quad.solid");
    const S_Pos none = At(0, 0);
    const S_Pos size = At(30, 30, 1);

    GLTest_ResetState();
    GLTest_CentredProjection();
    ObjectDraw("quad.solid", At(-100, 0), none, size, Colour(1, 0, 0));
    // A fresh model has zero scale: the first call shows nothing.
    EXPECT_RGB(GLTest_Pixel(C - 100, C), 0, 0, 0, 0);
    EXPECT_RGB(GLTest_Pixel(C, C), 0, 0, 0, 0);
    EXPECT_FLOAT_EQ(Solid[1].position[0], -100) << "stored after drawing";

    ObjectDraw("quad.solid", At(100, 0), none, size, Colour(0, 1, 0));
    EXPECT_RGB(GLTest_Pixel(C - 100, C), 255, 0, 0, 0) << "drawn where and how the first call asked";
    EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 0, 0, 0);

    GLTest_ResetState();
    GLTest_CentredProjection();
    ObjectDraw("quad.solid", At(0, 100), none, size, Colour(0, 0, 1));
    EXPECT_RGB(GLTest_Pixel(C + 100, C), 0, 255, 0, 0);
    EXPECT_RGB(GLTest_Pixel(C, C - 100), 0, 0, 0, 0);

    ObjectDraw("nope.solid", At(0, 0), none, size, Colour(1, 1, 1));
    EXPECT_EQ(AppStatus.consoleLines.front(), "WARNING: could not find object * nope.solid * in stack");
    EXPECT_NE(folder.Log().find("WARNING: could not find object * nope.solid * in stack"), std::string::npos);

    // The empty name finds entry 0, an unloaded model: the axes marker, one call behind as well.
    GLTest_ResetState();
    GLTest_CentredProjection();
    ObjectDraw("", At(0.5f, 0.5f), none, At(5, 5, 1), Colour(1, 1, 1));
    EXPECT_FALSE(FindColour(C + 25, C - 1, 2, 255, 0, 0));
    ObjectDraw("", At(0.5f, 0.5f), none, At(5, 5, 1), Colour(1, 1, 1));
    EXPECT_TRUE(FindColour(C + 25, C - 1, 2, 255, 0, 0));
    EXPECT_TRUE(FindColour(C, C - 1 - 25, 2, 0, 255, 0));
}

TEST_F(SceneObjects, DebugBoxFollowsTheCvarAndTheNewPosition) {
    ASSERT_TRUE(GLTest_Window());
    TestFolder folder;
    WriteBytes("data/models/quad.solid", QUAD);
    ObjectLoad("quad.solid");
    GLTest_ResetState();
    GLTest_CentredProjection();
    ObjectDraw("quad.solid", At(-100.5f, 0.5f), At(0, 0), At(1, 1, 1), Colour(1, 1, 1));
    EXPECT_FALSE(FindColour(C - 100 + 20, C, 2, 255, 0, 0)) << "\"debugbox\" 0 draws no box";

    Cvar_Set("debugbox", "1");
    ObjectDraw("quad.solid", At(100.5f, 0.5f), At(0, 0), At(1, 1, 1), Colour(1, 1, 1));
    EXPECT_TRUE(FindColour(C + 100 + 20, C, 2, 255, 0, 0)) << "the box is drawn at the position just stored";
    EXPECT_TRUE(FindColour(C + 100 - 20, C, 2, 255, 0, 0));
    EXPECT_FALSE(FindColour(C - 100 + 20, C, 2, 255, 0, 0));
}
