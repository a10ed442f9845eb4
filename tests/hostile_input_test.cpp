// Files far larger than ours, or whose counts outgrow them, are refused with a
// log line and the game goes on; files up to the limits load as before.
#include <gtest/gtest.h>

#include <algorithm>

#include "common/archive.h"
#include "common/config.h"
#include "common/cvar.h"
#include "common/scores.h"
#include "common/utils.h"
#include "game/world.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "render/texture.h"
#include "scene/solid.h"
#include "test_support.h"

namespace {
class HostileInput : public ScratchTest {
protected:
    static bool Logged(const std::string& text) {
        const auto& lines = AppStatus.consoleLines;
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return line.find(text) != std::string::npos; });
    }
};

const size_t LIMIT = size_t(MAX_DATA_FILE_BYTES);

std::string Repeat(const std::string& text, size_t n) {
    std::string out;
    while (n--)
        out += text;
    return out;
}
}  // namespace

TEST_F(HostileInput, ScoreTableUpToTheLimitLoadsAndOneByteMoreIsRefused) {
    WriteFile("data/stats.cfg", Repeat("5 x\n", LIMIT / 4));
    Scores_Load();
    EXPECT_EQ(Score.entries.size(), LIMIT / 4);
    EXPECT_FALSE(Logged("too large"));

    Scores_Reset();
    WriteFile("data/stats.cfg", Repeat("5 x\n", LIMIT / 4) + "5");
    Scores_Load();
    EXPECT_TRUE(Score.entries.empty());
    EXPECT_EQ(AppStatus.consoleLines.front(),
              "ERROR: data/stats.cfg is too large (1048577 bytes, more than 1048576): not loaded");
    // The game runs on: the next save writes a sound table over the refused one.
    Score.entries = {"70 ada"};
    Scores_Save();
    EXPECT_EQ(ReadFile("data/stats.cfg"), "70 ada\n");
}

TEST_F(HostileInput, OversizedSettingsFallBackToTheDefaults) {
    RegisterAllCvars();
    ASSERT_TRUE(MakeZip("assets.zip", {{"data/default.cfg", "volume 0.25\n"}}));
    WriteFile("data/prefs.cfg", "volume 0.75\n" + std::string(LIMIT, '#'));
    Cvar_Init();
    EXPECT_EQ(Cvar_Get("volume"), "0.25");
    EXPECT_TRUE(g_First_Run);
    EXPECT_TRUE(Logged("ERROR: data/prefs.cfg is too large"));
}

TEST_F(HostileInput, ArchiveMemberThatInflatesPastItsLimitIsRefused) {
    const std::string atLimit(MAX_ZIP_MEMBER_BYTES, '\0');
    ASSERT_TRUE(MakeZip("assets.zip", {{"fits", atLimit}, {"bomb", atLimit + '\0'}}));
    EXPECT_LT(FileSize("assets.zip"), 100000) << "a few KB on disk";
    EXPECT_EQ(readZipFile("assets.zip", "fits").size(), MAX_ZIP_MEMBER_BYTES);
    EXPECT_EQ(readZipFile("assets.zip", "bomb"), "");
    EXPECT_EQ(AppStatus.consoleLines.front(), "File bomb in assets.zip is too large (8388609 bytes)");
}

TEST_F(HostileInput, OversizedLevelMenuAndParticleFilesAreRefused) {
    const std::string padding(LIMIT, ' ');

    const std::string level = "<World><entities><breakout x=\"0\" z=\"0\" type=\"1\"/></entities></World>";
    WriteFile("data/levels/lvl1.xml", level);
    World_Load("lvl1.xml");
    ASSERT_EQ(GameWorld.size(), 1u);
    WriteFile("data/levels/lvl2.xml", level + padding);
    World_Load("lvl2.xml");
    EXPECT_TRUE(Logged("ERROR: data/levels/lvl2.xml is too large"));
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- ERROR: Failed to load world: data/levels/lvl2.xml");
    EXPECT_EQ(GameWorld.size(), 1u) << "the previous level stays";

    WriteFile("data/scripts/huge.xml", "<Menu/>" + padding);
    Menu_Get("data/scripts/huge.xml");
    EXPECT_TRUE(Logged("ERROR: data/scripts/huge.xml is too large"));
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- ERROR: Failed to load menu: data/scripts/huge.xml");

    WriteFile("data/scripts/huge.txt", "texture spark.tga\n" + padding);
    CParticles effect;
    EXPECT_FALSE(effect.Load("huge.txt"));
    EXPECT_TRUE(Logged("ERROR: data/scripts/huge.txt is too large"));
}

TEST_F(HostileInput, LevelsAndMenusWithTooManyElementsOrTooLongTextsAreRefused) {
    for (int records : {WORLD_RECORDS_MAX, WORLD_RECORDS_MAX + 1}) {
        const std::string bricks = Repeat("<breakout/>", records);
        WriteFile("data/levels/many.xml", "<World><entities>" + bricks + "</entities></World>");
        World_Load("many.xml");
        EXPECT_EQ(GameWorld.size(), records > WORLD_RECORDS_MAX ? 0u : size_t(records));
    }
    EXPECT_EQ(AppStatus.consoleLines.front(),
              " -- ERROR: world many.xml has 4097 entities, more than 4096: not loaded");

    const std::string fill = Repeat("<fill name=\"" + std::string(256, 'n') + "\"/>", 32);
    for (int labels : {511, 512}) {
        WriteFile("data/scripts/many.xml", "<GameMenu><menu name=\"m\"><Listbox><pos/>" + fill + "</Listbox>" +
                                               Repeat("<label/>", labels) + "</menu></GameMenu>");
        AppStatus.menuFile = "many.xml";
        Menu_Load();
        EXPECT_EQ(GameMenu.size(), labels == 511 ? 512u : 0u);
    }
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- ERROR: menu many.xml has 513 items, more than 512: not loaded");

    WriteFile("data/scripts/many.xml", "<GameMenu><menu name=\"m\"><button name=\"a.tga\"/><button name=\"" +
                                           std::string(257, 'b') + "\" func=\"goto x\"/></menu></GameMenu>");
    Menu_Load();
    ASSERT_EQ(GameMenu.size(), 2u);
    EXPECT_EQ(GameMenu[1].name + " " + GameMenu[1].func, "a.tga goto x") << "the long text alone is refused";
    EXPECT_TRUE(Logged("WARNING: menu item button has a name of 257 letters, more than 256, ignored"));
}

TEST_F(HostileInput, ModelCountLargerThanItsFileIsRefusedBeforeAnyTableIsMade) {
    // 14 bytes: a count of 14 is still a (short) model, 99 is not.
    WriteFile("data/models/short.solid", "NUMPOLLIES 14\n");
    WriteFile("data/models/liar.solid", "NUMPOLLIES 99\n");
    AppStatus.useVertexBuffers = false;  // no window: nothing is uploaded
    CSolid model;
    EXPECT_TRUE(model.Load("short.solid"));
    EXPECT_EQ(model.numTriangles, 14);
    EXPECT_FALSE(model.Load("liar.solid"));
    EXPECT_TRUE(Logged("ERROR: model liar.solid claims 99 triangles in 14 bytes"));
}

TEST_F(HostileInput, FullTextureTableRefusesTheSurplusAndKeepsTheCache) {
    // Objects are left by failed loads too, so a mod's many broken pictures
    // can fill the table; the surplus must not wipe the pictures already cached.
    WriteFile("data/textures/late.tga", "not a targa");
    CTexture::TextureManger.push_back("data/textures/early.tga 7");
    CTexture::Number = MAX_TEXTURES;
    EXPECT_EQ(GetTexture("late.tga", 1), g_DefaultTex);
    EXPECT_EQ(AppStatus.consoleLines.front(),
              "WARNING! texture table full (1024), could not load texture data/textures/late.tga");
    EXPECT_EQ(CTexture::CheckPreLoaded("data/textures/early.tga"), 7u);
    EXPECT_EQ(CTexture::Number, MAX_TEXTURES);
    Texture_Reset();
}
