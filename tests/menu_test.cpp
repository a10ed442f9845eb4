// The menu's loader and rules, without a window.
#include <gtest/gtest.h>

#include "common/cmd.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/scores.h"
#include "input/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "test_support.h"

namespace {

using Lines = std::vector<std::string>;

class MenuTest : public CvarTest {
protected:
    void SetUp() override {
        CvarTest::SetUp();
        Cmd_AddCommand(
            "probe", [] { ++probeRuns; }, "counts its runs");
        probeRuns = 0;
    }
    // Loads the text as the menu file through Menu_Load and returns log.txt.
    std::string Load(const std::string& xml) {
        if (!xml.empty())
            WriteFile("data/scripts/" + AppStatus.menuFile, xml);
        InitErrorLog();
        Menu_Load();
        CloseErrorLog();
        return ReadFile("log.txt");
    }
    // Every item's place and size; `whole` adds its kind, screen, picture, action and first two list rows.
    static Lines Items(bool whole = true) {
        Lines out;
        for (const S_GameMenu& m : GameMenu) {
            const std::string box =
                std::to_string(m.x) + "," + std::to_string(m.y) + " " + std::to_string(m.w) + "x" + std::to_string(m.h);
            out.push_back(!whole ? box
                                 : std::to_string(m.type) + " " + m.menu + " " + m.name + " " + box + " " + m.func +
                                       " [" + m.listNames[0] + "=" + m.listValues[0] + "|" + m.listNames[1] + "=" +
                                       m.listValues[1] + "]");
        }
        return out;
    }

    static inline int probeRuns = 0;
    ScratchDir scratch;
};

}  // namespace

TEST_F(MenuTest, LoaderCarriesEveryFieldAnElementDoesNotSet) {
    Load(R"(<GameMenu><menu name="main">
        <button x="10" y="20" w="200" h="40" name="go.tga" func="goto options" />
        <label x="abc" y="5" h="50" name="title.tga" />
        <Listbox x="7" y="8"><fill name="one" func="m_res 1" /><fill name="two" func="m_res 2" /></Listbox>
        <checkbox x="30" y="31" w="99" h="99" func="fullscreen" />
        <slider x="40" y="41" w="5" h="5" func="volume" />
        <Listbox><pos x="50" y="51" /><fill name="only" /></Listbox>
        <mystery x="60" />
      </menu><menu><textbox x="70" y="71" func="r_highscore" /></menu></GameMenu>)");
    // Every field an element leaves out is the item's before (rows too); a Listbox takes its kind and place from pos.
    EXPECT_EQ(Items(),
              (Lines{"0 main go.tga 10,20 200x40 goto options [=|=]", "1 main title.tga 10,5 200x50 goto options [=|=]",
                     "1 main title.tga 7,8 200x50 goto options [one=m_res 1|two=m_res 2]",
                     "2 main  30,31 32x32 fullscreen [one=m_res 1|two=m_res 2]",
                     "3 main  40,41 128x32 volume [one=m_res 1|two=m_res 2]",
                     "4 main  50,51 32x32 volume [only=m_res 1|two=m_res 2]",
                     "4 main  60,51 32x32 volume [only=m_res 1|two=m_res 2]",
                     "5 main  70,71 32x32 r_highscore [only=m_res 1|two=m_res 2]"}));
}

TEST_F(MenuTest, LoaderReportsBadFilesAndKeepsTheListSafe) {
    AppStatus.verboseLog = true;
    AppStatus.menuFile = "screens.xml";
    EXPECT_NE(Load("<GameMenu/>")
                  .find(" -- attempting to load menu: data/scripts/screens.xml ... success!\n"
                        " -- screens.xml menu loaded!\n"),
              std::string::npos);
    EXPECT_TRUE(GameMenu.empty());

    Load(R"(<GameMenu><menu name="a"><button/></menu></GameMenu>)");
    AppStatus.menuFile = "absent.xml";
    EXPECT_NE(Load("").find("absent.xml ... FAILURE!\n -- ERROR: Failed to load menu: data/scripts/absent.xml\n"),
              std::string::npos);
    EXPECT_EQ(GameMenu.size(), 1u) << "a missing file leaves the list as it was";

    EXPECT_NE(Load(R"(<Other><menu name="a"><button/></menu></Other>)").find("\n!-- FAILURE -- corrupt menu.xml --!\n"),
              std::string::npos);
    EXPECT_TRUE(GameMenu.empty());

    std::string rows;
    for (int i = 0; i < 40; ++i)
        rows += "<fill name=\"r" + std::to_string(i) + "\" func=\"v" + std::to_string(i) + "\" />";
    const std::string log = Load("<GameMenu><menu name=\"o\"><Listbox><pos x=\"1\" y=\"1\"/>" + rows +
                                 "</Listbox><button name=\"after.tga\"/></menu></GameMenu>");
    ASSERT_EQ(GameMenu.size(), 2u);
    EXPECT_EQ(GameMenu[0].listNames[31] + "=" + GameMenu[0].listValues[31] + " " + GameMenu[1].name,
              "r31=v31 after.tga");
    EXPECT_EQ(log.substr(log.find(" -- WARNING")),
              " -- WARNING: list box in menu o has more than 32 rows, the rest are ignored\n")
        << "one per list box";
}

TEST_F(MenuTest, ResolutionConversionAtFourScreenSizes) {
    const std::string xml = R"(<GameMenu><menu name="m">
        <button x="10" y="30" w="200" h="40" name="b.tga" func="" />
        <label x="10" y="30" w="160" h="56" name="l.tga" />
        <label x="10" y="30" w="320" h="80" name="title.tga" />
        <button x="10" y="5" w="200" h="40" name="title.tga" />
        <checkbox x="10" y="30" func="showfps" /></menu></GameMenu>)";
    // Labels keep their size at 800; the title, a button named title.tga too, and the widgets at every size; moving y
    // up 20 stops at 0.
    const struct {
        int W, H;
        Lines boxes;
    } cases[] = {{640, 480, {"60,120 200x40", "60,120 160x56", "60,120 320x80", "60,20 200x40", "60,120 32x32"}},
                 {800, 600, {"80,60 300x106", "80,60 160x56", "80,60 320x80", "80,0 200x40", "80,60 32x32"}},
                 {1024, 768, {"100,70 292x109", "100,70 181x86", "100,70 320x80", "100,0 200x40", "100,70 32x32"}},
                 {1280, 800, {"120,80 420x120", "120,80 200x57", "120,80 320x80", "120,0 200x40", "120,80 32x32"}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.W) + " x " + std::to_string(c.H));
        Load(xml);  // a fresh list is in file units again
        Resolution.width = c.W, Resolution.height = c.H;
        Menu_ChangeResolution();
        Menu_ChangeResolution();  // runs once only
        EXPECT_EQ(Items(false), c.boxes);
    }
}

TEST_F(MenuTest, HitTestExcludesTheEdges) {
    const struct {
        int mx, my;
        bool in;
    } probes[] = {{11, 21, true}, {39, 59, true}, {10, 30, false}, {20, 20, false}, {40, 30, false}, {20, 60, false}};
    for (const auto& p : probes) {
        MouseAt(p.mx, p.my);
        EXPECT_EQ(Check_Point(10, 20, 30, 40), p.in) << p.mx << ", " << p.my;
    }
}

TEST_F(MenuTest, ActionStrings) {
    Cvar_Register({CVAR_TEMP, "a", "old a", "", ""});
    Cvar_Register({CVAR_TEMP, "a b", "old", "", ""});
    EXPECT_EQ(Menu_ScanFunc("cvar r_fbo 1") + Menu_ScanFunc("cvar a b c"), "");
    EXPECT_EQ(Cvar_Get("r_fbo") + "|" + Cvar_Get("a b") + "|" + Cvar_Get("a"), "1|c|old a")
        << "extra words join the name";

    EXPECT_EQ(Menu_ScanFunc("goto high scores"), "high scores");
    EXPECT_EQ(Menu_ScanFunc("cmd probe"), "");
    EXPECT_EQ(probeRuns, 1);

    Cvar_Set("m_menu", "1");
    Menu_ScanFunc("restart now");
    EXPECT_FALSE(Game_Stats.restart) << "restart must be the whole action";
    Menu_ScanFunc("restart");
    EXPECT_TRUE(Game_Stats.restart);
    EXPECT_EQ(Cvar_Get("m_menu"), "0");

    for (const char* odd : {"", "cvar", "goto", "cmd", "cvar r_fbo", "warp 9"})
        EXPECT_EQ(Menu_ScanFunc(odd), "") << odd;
    EXPECT_EQ(probeRuns, 1);
}

TEST_F(MenuTest, ScreenTextsOfAFrame) {
    Load(R"(<GameMenu><menu name="scores"><label x="1" y="1" w="10" h="10" name="s.tga" /></menu>
        <menu name="gameover"><label /><label /></menu><menu name="main"><label /></menu>
        <menu name="options"><label /></menu></GameMenu>)");
    Resolution.width = 900, Resolution.height = 600;
    for (int i = 0; i < 25; ++i)
        Score.entries.push_back(std::to_string(1000 - i) + " p" + std::to_string(i));

    Menu_Screen("scores");
    const S_MenuItemFrame scores = Menu_Think(0);
    ASSERT_EQ(scores.textsBefore.size(), 20u) << "never more than 20 lines";
    EXPECT_EQ(scores.textsBefore[19].text, "981 p19");
    EXPECT_EQ(scores.textsBefore[19].x * 1000 + scores.textsBefore[19].y, 300 * 1000 + 100 + 17 * 19);

    Menu_Screen("options");
    EXPECT_TRUE(Menu_Think(4).textsBefore.empty());
    g_MustResetGame = 1;
    const std::vector<S_MenuPrint> notice = Menu_Think(4).textsBefore;
    ASSERT_EQ(notice.size(), 1u);
    EXPECT_EQ(std::to_string(notice[0].y) + " " + std::to_string(notice[0].mode) + " " + notice[0].text,
              "575 3 You must restart the game for this option to take effect.");

    Menu_Screen("main");
    const std::vector<S_MenuPrint> address = Menu_Think(3).textsAfter;
    ASSERT_EQ(address.size(), 1u);
    EXPECT_EQ(std::to_string(address[0].set) + " " + address[0].text.substr(0, 4), "1 www.");

    Game_Stats.score = 4321;
    Menu_Screen("gameover");
    SD_Keys.keysym.sym = SDLK_a;
    EXPECT_EQ(Menu_Think(1).textsBefore.at(0).text, "Final Score: 4321");
    EXPECT_EQ(Menu_Screen_Get(), "gameover");
    SD_Keys.keysym.sym = SDLK_RETURN;
    Cvar_Set("m_menu", "0");
    Menu_Think(1);
    EXPECT_EQ(Menu_Screen_Get(), "main") << "Return leaves the game-over screen";
    EXPECT_TRUE(Menu_Visible());
    EXPECT_FALSE(Menu_Think(2).shown) << "the rest of gameover is skipped once main is current";
}

TEST_F(MenuTest, AHoveredButtonActsOncePerClick) {
    Load(R"(<GameMenu><menu name="main">
        <button x="100" y="100" w="50" h="20" name="b.tga" func="cmd probe" />
        <label name="l.tga" /></menu></GameMenu>)");
    Menu_Screen("main");

    SDL_Mouse.leftPressedLast = SDL_Mouse.leftClick = SDL_Mouse.buttonDown = true;
    MouseAt(120, 110);
    EXPECT_EQ(Menu_Think(1).blue, 1.0f) << "a label under the mouse is never hovered";
    EXPECT_EQ(probeRuns, 0) << "the label's carried-over func must not run";

    const S_MenuItemFrame pressed = Menu_Think(0);
    EXPECT_EQ(std::make_pair(pressed.red, pressed.blue), std::make_pair(0.1f, 0.9f)) << "pressed";
    EXPECT_EQ(probeRuns, 1);
    EXPECT_EQ(GameMenu[0].hover, 0) << "hover lasts one item of one frame";

    Input_EndFrame();
    ASSERT_EQ(Mouse_GrabInput(), 4);
    const S_MenuItemFrame held = Menu_Think(0);
    EXPECT_EQ(probeRuns, 1) << "a held button does not act again";
    EXPECT_EQ(std::make_pair(held.red, held.blue), std::make_pair(0.2f, 0.8f)) << "hovered, not pressed";
}

TEST_F(MenuTest, SetupBuildsWidgetsAndRefusesMoreThanTheTablesHold) {
    std::string xml = "<GameMenu><menu name=\"o\"><slider x=\"10\" y=\"30\" func=\"volume\" />"
                      "<Listbox><pos x=\"5\" y=\"40\"/><fill name=\"one\" func=\"m_res 1\"/></Listbox>";
    for (int i = 0; i < MAX_WIDGETS + 3; ++i)
        xml += "<checkbox x=\"1\" y=\"2\" func=\"showfps\" />";
    Load(xml + "<textbox x=\"3\" y=\"4\" func=\"r_highscore\" /></menu></GameMenu>");
    Resolution.width = 640, Resolution.height = 480;
    InitErrorLog();
    Menu_Setup();
    EXPECT_NE(LogText().find("WARNING: more than 64 checkboxes"), std::string::npos);
    EXPECT_EQ(CCheckBox::Count(), MAX_WIDGETS);
    ASSERT_TRUE(CheckBox[MAX_WIDGETS - 1] && Slider[0] && ListBox[0] && TextBox[0]);
    EXPECT_EQ(Slider[0]->x * 1000 + Slider[0]->y, 60120) << "widgets get converted positions";
    EXPECT_EQ(ListBox[0]->names[0] + " " + TextBox[0]->screen, "one o");
    Menu_Cleanup();
    EXPECT_TRUE(!CheckBox[0] && !Slider[0] && !ListBox[0] && !TextBox[0]);
}
