// Findings of the loaders' fuzz targets; each input is also under fuzz/regressions/<target>/.
// TinyXML steps over all the bytes a UTF-8 lead byte announces without looking
// for the zero byte that ends the text: a level or menu cut inside a character
// was read past its end. A zero byte inside the file shows the same step.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "common/appstatus.h"
#include "common/config.h"
#include "game/world.h"
#include "menu/menu.h"
#include "test_support.h"

namespace {

const std::string DECLARATION = "<?xml version=\"1.0\" ?>";

// A lead byte announcing three bytes, then the end of the text, then more.
std::string CutCharacter(const std::string& rest) { return std::string("\xec") + '\0' + rest; }

bool ConsoleHas(const std::string& line) {
    for (const std::string& l : AppStatus.consoleLines)
        if (l == line)
            return true;
    return false;
}

class FuzzRegressionTest : public ShellTest {};

TEST_F(FuzzRegressionTest, LevelsAndMenusAreNotReadPastTheEndOfTheirText) {
    ScratchDir scratch;
    // One record whole, then with a value cut by the end of the text: the
    // value never closes, so the file is refused and what was loaded stays.
    const struct {
        const char *folder, *open, *close, *what;
        std::function<size_t(const std::string&)> load;
    } loaders[] = {
        {"levels", "<World><entities><breakout type=\"2\" z=\"-5\" x=\"", "1\"/></entities></World>", "world",
         [](const std::string& name) {
             World_Load(name);
             return GameWorld.size();
         }},
        {"scripts", "<GameMenu><menu name=\"m\"><button func=\"quit\" name=\"", "a.tga\"/></menu></GameMenu>", "menu",
         [](const std::string& name) {
             AppStatus.menuFile = name;
             Menu_Load();
             return GameMenu.size();
         }},
    };
    for (const auto& l : loaders) {
        SCOPED_TRACE(l.what);
        const std::string folder = std::string("data/") + l.folder + "/";
        WriteFile(folder + "whole.xml", DECLARATION + l.open + l.close);
        WriteFile(folder + "cut.xml", DECLARATION + l.open + CutCharacter(l.close));
        WriteFile(folder + "end.xml", DECLARATION + l.open + "\xec");
        ASSERT_EQ(l.load("whole.xml"), 1u);
        for (const char* name : {"cut.xml", "end.xml"}) {
            AppStatus.consoleLines.clear();
            EXPECT_EQ(l.load(name), 1u) << name;
            EXPECT_TRUE(ConsoleHas(std::string(" -- ERROR: Failed to load ") + l.what + ": " + folder + name));
        }
    }
    EXPECT_EQ(GameWorld[0].x, 1);
    EXPECT_EQ(GameMenu[0].name, "a.tga");
}

TEST_F(FuzzRegressionTest, MenusWithWindowsLineEndsStillLoad) {
    // The menu is no longer read by TinyXML's LoadFile, which turned CR LF
    // into LF first; a file saved on Windows must load just the same.
    ScratchDir scratch;
    WriteFile("data/scripts/crlf.xml", DECLARATION +
                                           "\r\n<GameMenu>\r\n<menu name=\"main\">\r\n"
                                           "<button x=\"3\" y=\"4\" name=\"a.tga\" func=\"quit\"/>\r\n"
                                           "<slider x=\"5\" y=\"6\" func=\"volume\"/>\r\n</menu>\r\n</GameMenu>\r\n");
    AppStatus.menuFile = "crlf.xml";
    Menu_Load();
    ASSERT_EQ(GameMenu.size(), 2u);
    EXPECT_EQ(GameMenu[0].menu + " " + GameMenu[0].func + " " + GameMenu[1].func, "main quit volume");
    EXPECT_EQ(std::make_pair(GameMenu[1].type, GameMenu[1].x), std::make_pair(3, 5));
}

TEST_F(FuzzRegressionTest, MenuUnitsFarOffAnyScreenAreRefusedBeforeTheConversionScalesThem) {
    ScratchDir scratch;
    WriteFile("data/scripts/far.xml",
              DECLARATION +
                  "<GameMenu><menu name=\"main\">"
                  "<button x=\"100000\" y=\"-100000\" w=\"40\" h=\"20\" name=\"a.tga\" func=\"quit\"/>"
                  "<button x=\"2147483647\" y=\"-2147483648\" w=\"100001\" h=\"30\" name=\"b.tga\" func=\"skip\"/>"
                  "<slider x=\"2147483600\" y=\"7\" func=\"volume\"/>"
                  "</menu></GameMenu>");
    AppStatus.menuFile = "far.xml";
    Menu_Load();
    ASSERT_EQ(GameMenu.size(), 3u);
    // The limit itself is a position like any other; past it a value counts as bad: the item keeps the one before.
    std::vector<std::vector<int>> boxes;
    for (const S_GameMenu& i : GameMenu)
        boxes.push_back({i.x, i.y, i.w, i.h});
    EXPECT_EQ(boxes, (std::vector<std::vector<int>>{
                         {100000, -100000, 40, 20}, {100000, -100000, 40, 30}, {100000, 7, 128, 32}}));
    EXPECT_EQ(GameMenu[1].func, "skip");
    EXPECT_TRUE(ConsoleHas(" -- WARNING: menu item button has x=2147483647, more than 100000 units off, ignored"));
    EXPECT_TRUE(ConsoleHas(" -- WARNING: menu item button has y=-2147483648, more than 100000 units off, ignored"));
    EXPECT_TRUE(ConsoleHas(" -- WARNING: menu item slider has x=2147483600, more than 100000 units off, ignored"));

    // The largest screen multiplies x by 19: in range now (under the
    // sanitizers an overflow here fails the test).
    Resolution.width = RESOLUTION_PRESETS[6].width;
    Resolution.height = RESOLUTION_PRESETS[6].height;
    Menu_Setup();
    EXPECT_EQ(GameMenu[2].x, 1900000);
    EXPECT_EQ(GameMenu[1].y, 0);
}

}  // namespace
