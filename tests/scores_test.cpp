// The high-score table on disk.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/scores.h"
#include "test_support.h"

namespace {

class Scores : public CvarTest {
protected:
    ScratchDir scratch;
};

}  // namespace

TEST_F(Scores, TwentyFiveLinesLoadSortedAndTheBestTwentyAreWrittenBack) {
    std::string file;
    for (int i = 1; i <= 23; i++)
        file += std::to_string(i * 100) + " player " + std::to_string(i) + "\n\n";  // blank lines between
    file += "no digits here\n";
    file += "1200 second twelve hundred\n";  // ties with "1200 player 12", read later
    WriteFile("data/stats.cfg", file);

    Scores_Load();
    std::vector<std::string> sorted;  // by number, not as text; equal scores keep file order
    for (int i = 23; i >= 1; i--) {
        sorted.push_back(std::to_string(i * 100) + " player " + std::to_string(i));
        if (i == 12)
            sorted.push_back("1200 second twelve hundred");
    }
    sorted.push_back("no digits here");  // a line without a number counts as 0
    EXPECT_EQ(Score.entries, sorted) << "blank lines are skipped, all others kept";

    Scores_Save();
    std::string expected;
    for (size_t i = 0; i < 20; i++)
        expected += sorted[i] + "\n";
    EXPECT_EQ(ReadFile("data/stats.cfg"), expected);
    EXPECT_FALSE(std::filesystem::exists("data/stats.cfg.tmp")) << "the temporary file is renamed away";
    EXPECT_EQ(Score.entries, sorted) << "the entries past twenty stay in memory";
}

TEST_F(Scores, NewEntryTakesTheNameFromTheVariableEvenWhenEmpty) {
    const struct {
        int score;
        const char* name;
    } games[] = {{1500, "Ann Lee"}, {900, ""}, {2000, "Bo"}};
    for (const auto& game : games) {
        Game_Stats.score = game.score;
        Cvar_Set("r_highscore", game.name);
        SetScore();
    }
    // An empty name still ends with the blank.
    EXPECT_EQ(Score.entries, (std::vector<std::string>{"2000 Bo", "1500 Ann Lee", "900 "}));
    Scores_Save();  // no file and no data/ folder yet: the write makes them
    EXPECT_EQ(ReadFile("data/stats.cfg"), "2000 Bo\n1500 Ann Lee\n900 \n");
}

TEST_F(Scores, MissingFileLoadsNothingAndAFailedWriteKeepsTheOldTableAndIsToldOnce) {
    Scores_Load();
    EXPECT_TRUE(Score.entries.empty());

    WriteFile("data/stats.cfg", "700 old\n");
    // A folder where the temporary file would go: opening it for writing fails even as root.
    std::filesystem::create_directories("data/stats.cfg.tmp");
    Score.entries = {"800 new"};
    const std::string told = "WARNING: scores not saved to data/stats.cfg: Is a directory";
    for (int round = 1; round <= 2; round++) {  // told again once a save has worked in between
        testing::internal::CaptureStderr();
        Scores_Save();
        Scores_Save();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "velthra: " + told + "\n");
        EXPECT_EQ(ReadFile("data/stats.cfg"), round == 1 ? "700 old\n" : "800 new\n");
        EXPECT_EQ(std::count(AppStatus.consoleLines.begin(), AppStatus.consoleLines.end(), told), round);
        std::filesystem::remove("data/stats.cfg.tmp");
        Scores_Save();
        std::filesystem::create_directories("data/stats.cfg.tmp");
    }
}
