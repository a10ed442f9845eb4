// Level files read from a real assets.zip in a scratch folder.
#include "common/appstatus.h"
#include "common/log.h"
#include "game/brick.h"
#include "game/world.h"
#include "test_support.h"

namespace {

using Rows = std::vector<std::vector<int>>;  // type, x, z of each record

class WorldTest : public CvarTest {
protected:
    void SetUp() override {
        CvarTest::SetUp();
        AppStatus.verboseLog = true;
        InitErrorLog();
    }
    static void Pack(const std::vector<std::pair<std::string, std::string>>& levels) {
        std::vector<ZipMember> members;
        for (const auto& [name, text] : levels)
            members.push_back({"data/levels/" + name, text});
        ASSERT_TRUE(MakeZip("assets.zip", members));
    }
    static Rows Records() {
        Rows out;
        for (const S_GameWorld& r : GameWorld)
            out.push_back({r.type, r.x, r.z});
        return out;
    }

    ScratchDir scratch;
};

TEST_F(WorldTest, EveryChildOfEveryEntitiesBlockIsARecordCarryingTheLastValues) {
    Pack({{"lvl2.xml", R"(<?xml version="1.0" ?>
<World>
    <entities>
        <breakout type="1" x="-4" z="-10" />
        <breakout type="2" z="-7" />
        <!-- a note repeats the brick before it -->
        <breakout type="three" x="5" z="-3" />
    </entities>
    <decor><breakout type="3" x="7" z="7" /></decor>
    <entities>
        <breakout x="6" z="-12" />
    </entities>
</World>
)"}});
    EXPECT_EQ(World_Load("lvl2.xml"), 0);
    // A missing x or a type that is no number is the previous brick's; so is the whole brick of the comment.
    EXPECT_EQ(Records(), (Rows{{1, -4, -10}, {2, -4, -7}, {2, -4, -7}, {2, 5, -3}, {2, 6, -12}}));

    World_Setup();
    ASSERT_EQ(CBrick::Count(), 5);
    EXPECT_EQ(std::make_pair(Brick[4]->GetX(), Brick[4]->GetZ()), std::make_pair(6.0f, -12.0f)) << "from the records";
    EXPECT_NE(LogText().find(" -- attempting to load world: lvl2.xml ... success!\n -- lvl2.xml world loaded!\n"),
              std::string::npos);
}

TEST_F(WorldTest, DiskBeforeArchiveACorruptRootEmptiesTheListAMissingFileKeepsItAndAnEmptyLevelIsFinished) {
    Pack({{"lvl1.xml", "<World><entities><breakout type=\"0\" x=\"-4\" z=\"-10\" /></entities></World>"},
          {"lvl2.xml", "<Level><entities><breakout type=\"0\" x=\"0\" z=\"-5\" /></entities></Level>"},
          {"lvl3.xml", "<World><entities><breakout type=\"0\" x=\"0\""},
          {"lvl4.xml", "<World><entities></entities></World>"}});
    WriteFile("data/levels/lvl1.xml", "<World><entities><breakout type=\"3\" x=\"1\" z=\"-2\" /></entities></World>");

    World_Load("lvl1.xml");
    ASSERT_EQ(Records(), (Rows{{3, 1, -2}})) << "a level on disk wins over the packaged one";
    World_Load("lvl9.xml");
    EXPECT_EQ(GameWorld.size(), 1u) << "a missing file leaves the previous level's list";
    EXPECT_EQ(AppStatus.levelFile, "lvl9.xml");
    World_Load("lvl3.xml");
    EXPECT_EQ(GameWorld.size(), 1u) << "so does a file that is not XML";
    World_Setup();
    EXPECT_EQ(CBrick::Count(), 1) << "the previous level's bricks are built again";

    // From the archive, the levels not on disk.
    for (const char* level : {"lvl2.xml", "lvl4.xml"}) {
        Brick_Reset();  // the list stays: the file alone must empty it
        World_Load(level);
        World_Setup();
        EXPECT_EQ(CBrick::Count(), 0) << level;
        EXPECT_TRUE(Level_Finished()) << level;
    }

    const std::string log = LogText();
    EXPECT_NE(log.find(" -- attempting to load world: lvl9.xml ... "), std::string::npos);
    EXPECT_NE(log.find("FAILURE!\n -- ERROR: Failed to load world: data/levels/lvl9.xml\n"), std::string::npos);
    EXPECT_NE(log.find("FAILURE!\n -- ERROR: Failed to load world: data/levels/lvl3.xml\n"), std::string::npos);
    EXPECT_NE(log.find("success!\n\n!-- FAILURE -- corrupt world.xml --!\n"), std::string::npos);
    EXPECT_EQ(log.find(" -- lvl2.xml world loaded!"), std::string::npos);
}

TEST_F(WorldTest, BricksBeyondTheTableAreRefused) {
    std::string text = "<World><entities>";
    for (int i = 0; i < 40; i++)
        text += "<breakout type=\"0\" x=\"" + std::to_string(i % 4 * 4 - 6) + "\" z=\"" + std::to_string(-i) + "\" />";
    Pack({{"lvl4.xml", text + "</entities></World>"}});
    World_Load("lvl4.xml");
    World_Setup();
    EXPECT_EQ(CBrick::Count(), MAX_BRICKS);
    EXPECT_EQ(Brick[MAX_BRICKS - 1]->GetZ(), -31.0f) << "the first 32 are kept";
    World_Setup();  // a second build without a reset has no room at all
    EXPECT_EQ(CBrick::Count(), MAX_BRICKS);
    EXPECT_EQ(AppStatus.consoleLines.front(),
              " -- WARNING: world lvl4.xml has more than 32 bricks, the rest are ignored");
}

}  // namespace
