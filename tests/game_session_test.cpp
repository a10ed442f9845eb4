// The session driver's rules, with no window.
#include <gtest/gtest.h>

#include <algorithm>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/scores.h"
#include "common/timer.h"
#include "game/brick.h"
#include "game/game.h"
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

TEST_F(GameSession, HeldArrowKeysCrossTheFieldInASecondAtAnyFrameRateButNotThroughTheConsole) {
    const struct { int width, height; } screens[] = {{640, 480}, {800, 600}, {1024, 768}, {1680, 1050}};
    int fps = 60;
    auto run = [&](double seconds) {  // frames of `seconds` in all; the paddle where they leave it
        for (int frame = 0; frame < int(seconds * fps + 0.5); frame++) {
            DrivenClock_Frame(1.0 / fps);
            game.MovePaddle();
        }
        return game.PaddleX();
    };
    Play();
    DrivenClock_Start();
    for (const auto& screen : screens) {
        Resolution.width = screen.width, Resolution.height = screen.height;
        const double pixel = PaddleFactor(screen.height);  // in field units
        // Where the paddle is with the pointer at x, kept in the window as the mouse is.
        auto at = [&](double x) { return std::clamp(x, 0.0, screen.width - 1.0) * pixel - 8.0; };
        for (int rate : {16, 60, 144, 1000}) {
            fps = rate;
            SCOPED_TRACE(std::to_string(screen.height) + " at " + std::to_string(fps) + " fps");
            MouseAt(0, 300);
            Input_KeyDown(KeyEvent(SDLK_RIGHT));
            EXPECT_NEAR(run(0.5), 0.0, 1.5 * pixel) << "half way in half a second";
            EXPECT_NEAR(run(0.5), at(16.0 / pixel), 1.5 * pixel) << "at the right wall in a second";
            run(0.5);
            EXPECT_EQ(Keys_GrabMouseX(), screen.width - 1) << "no further than the mouse can go";
            Input_KeyUp(KeyEvent(SDLK_RIGHT, 0, SDL_KEYUP));
            Input_KeyDown(KeyEvent(SDLK_LEFT));
            Input_KeyDown(KeyEvent(SDLK_a, 'a'));  // another key meanwhile changes nothing
            EXPECT_NEAR(run(1.0), at(screen.width - 1 - 16.0 / pixel), 1.5 * pixel) << "back in a second";
            Input_KeyUp(KeyEvent(SDLK_LEFT, 0, SDL_KEYUP));
            EXPECT_EQ(run(0.2), -8.0f + float(Keys_GrabMouseX() * pixel)) << "still once released";
        }
    }
    const float before = game.PaddleX();
    AppStatus.consoleVisible = true;
    Input_KeyDown(KeyEvent(SDLK_RIGHT));
    EXPECT_EQ(run(0.5), before) << "keys typed into the console are the console's";
    AppStatus.consoleVisible = false;
    Input_KeyDown(KeyEvent(SDLK_LEFT));
    EXPECT_EQ(run(0.5), before) << "both arrows held pull both ways";
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
