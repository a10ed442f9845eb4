// The session driver's rules with no window: level changes and the second
// round, game over, the name typed on "gameover", the fresh game of the main
// menu, the paddle and the music switch.
#include <gtest/gtest.h>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/scores.h"
#include "game/brick.h"
#include "game/game.h"
#include "game/world.h"
#include "input/input.h"
#include "menu/menu.h"
#include "test_support.h"

namespace {

class GameSession : public CvarTest {
protected:
    void SetUp() override {
        CvarTest::SetUp();
        for (int level = 1; level <= 10; level++)
            WriteFile("data/levels/lvl" + std::to_string(level) + ".xml", "<World><entities><breakout type=\"0\" x=\"" +
                                                                              std::to_string(level) +
                                                                              "\" z=\"-8\"/></entities></World>");
    }
    static void Play() { Cvar_Set("m_menu", "0"); }
    static std::vector<int> ScoreLivesLevel() { return {Game_Stats.score, Game_Stats.lives, Game_Stats.level}; }
    // The first Reset of a run records "0 0" ("r_highscore" starts as "0") and empties the name.
    void FirstLevel(int level) {
        Game_Stats.level = level;
        game.Reset("lvl" + std::to_string(level) + ".xml");
        ASSERT_EQ(Score.entries, std::vector<std::string>{"0 0"});
        ASSERT_EQ(Cvar_Get("r_highscore"), "");
        Score.entries.clear();
    }
    ScratchDir scratch;
    CGame game;
};

}  // namespace

TEST_F(GameSession, SkippingLevelTenWrapsToLevelOneInTheSecondRoundKeepingScoreAndLives) {
    FirstLevel(10);
    EXPECT_EQ(AppStatus.levelFile, "lvl10.xml");
    EXPECT_EQ(Game_Stats.level, 11) << "the number runs one ahead of the loaded level";
    Play();
    Game_Stats.score = 1234, Game_Stats.lives = 2, Game_Stats.skipLevel = true;
    game.UpdateSession();
    EXPECT_EQ(AppStatus.levelFile, "lvl1.xml");
    EXPECT_TRUE(Game_Stats.secondRound && !Game_Stats.skipLevel);
    EXPECT_EQ(ScoreLivesLevel(), (std::vector<int>{1234, 2, 2}));
    ASSERT_EQ(CBrick::Count(), 1);
    game.UpdateSession();
    EXPECT_EQ(AppStatus.levelFile, "lvl1.xml") << "an unfinished level stays";
}

TEST_F(GameSession, GameOverRecordsTheTypedNameOnceOnLeavingAndNothingWithoutAName) {
    FirstLevel(4);
    Play();  // the last life lost: game over once
    Game_Stats.score = 900, Game_Stats.lives = 0, Game_Stats.secondRound = true;
    game.UpdateSession();
    EXPECT_EQ(Menu_Screen_Get() + " " + Cvar_Get("m_menu"), "gameover 1");
    EXPECT_EQ(ScoreLivesLevel(), (std::vector<int>{900, 3, 1})) << "the score is kept for the table";
    EXPECT_TRUE(Game_Stats.newGame && !Game_Stats.secondRound);

    Cvar_Set("r_highscore", "Ada");  // typed on the game-over screen
    game.UpdateSession();
    EXPECT_TRUE(Score.entries.empty()) << "nothing is recorded while the screen shows";
    Menu_Screen("main");
    game.UpdateSession();
    ASSERT_EQ(Score.entries, std::vector<std::string>{"900 Ada"});
    EXPECT_EQ(ReadFile("data/stats.cfg"), "900 Ada\n") << "on the disk as soon as it is recorded";
    EXPECT_EQ(Game_Stats.score, 0) << "the main menu starts a fresh game";
    game.UpdateSession();
    EXPECT_EQ(Score.entries.size(), 1u) << "recorded once";

    // The next game over left without a name records nothing; the main menu starts a fresh game all the same.
    Play();
    Game_Stats.score = 500, Game_Stats.lives = 0;
    game.UpdateSession();
    Menu_Screen("main");
    Game_Stats.lives = 1, Game_Stats.level = 6, Game_Stats.secondRound = true, Game_Stats.newGame = false;
    game.UpdateSession();
    EXPECT_EQ(Score.entries.size(), 1u);
    EXPECT_EQ(ScoreLivesLevel(), (std::vector<int>{0, 3, 1}));
    EXPECT_TRUE(Game_Stats.newGame && !Game_Stats.secondRound);
    // A new game from the menu: the next Reset clears the score unrecorded.
    Game_Stats.score = 700, Game_Stats.restart = true;
    Play();
    game.UpdateSession();
    EXPECT_EQ(Score.entries.size(), 1u);
    EXPECT_EQ(Game_Stats.score, 0);
    EXPECT_EQ(AppStatus.levelFile, "lvl1.xml");
}

TEST_F(GameSession, ThePaddleFollowsTheMouseByTheScreenHeightOnly) {
    const struct {
        int height;
        double factor;
    } rows[] = {{480, 0.0255}, {600, 0.0205}, {768, 0.016}, {800, 0.0125}, {900, 0.011}, {1050, 0.0095}, {1600, 0.011}};
    MouseAt(400, 0);
    Resolution.width = 123;  // never read
    for (const auto& row : rows) {
        SCOPED_TRACE(row.height);
        Resolution.height = row.height;
        game.MovePaddle();
        EXPECT_EQ(std::vector<float>({game.PaddleX(), Game_Stats.paddleX, Game_Stats.ballStartX}),
                  std::vector<float>(3, float(400 * row.factor - 8.0)))
            << "the resting ball goes with the paddle";
    }
    Resolution.height = 720;
    MouseAt(10, 0);
    const float before = game.PaddleX();
    game.MovePaddle();
    EXPECT_EQ(game.PaddleX(), before) << "a height the table does not know leaves the paddle still";
    Game_Stats.ballLaunched = true, Game_Stats.ballStartX = -99;
    Resolution.height = 600;
    game.MovePaddle();
    EXPECT_EQ(Game_Stats.ballStartX, -99) << "a ball in play is not moved with the paddle";
}

TEST_F(GameSession, MusicSwitchesOncePerChangeOfMode) {
    using M = MusicSwitch;
    for (auto [menu, expected] : {std::pair{true, M::ToMenu},
                                  {true, M::None},
                                  {false, M::ToGame},
                                  {false, M::None},
                                  {true, M::ToMenu}})  // pausing switches back to the menu music
        EXPECT_EQ(Game_MusicSwitch(menu), expected);
}
