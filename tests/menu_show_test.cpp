// Menu_Show on the real driver: the widgets a frame draws.
#include "gl_test_env.h"
#include "input/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"

namespace {
S_GameMenu Item(int type, const std::string& screen) {
    S_GameMenu item;
    item.type = type, item.menu = screen, item.name = type < 2 ? "white.tga" : "";
    item.x = item.y = 10, item.w = 100, item.h = 40, item.func = type == 5 ? "r_highscore" : "";
    return item;
}
}  // namespace

using GLMenuShow = GLTest;

TEST_F(GLMenuShow, EveryWidgetIsDrawnOncePerItemOfTheWholeList) {
    // The text box's caret flips on each of its draws, so it counts them.
    GameMenu = {Item(5, "options"), Item(1, "main")};
    g_MenuConverted = true;
    Menu_Setup();
    ASSERT_NE(TextBox[0], nullptr);
    SDL_Keys.keyReleased = true;  // no key to type
    Menu_Screen("options");
    Menu_Show(SDL_Event{});
    EXPECT_TRUE(TextBox[0]->caret) << "two items, two draws, even for the item of another screen";
    GameMenu.push_back(Item(1, "other"));
    Menu_Show(SDL_Event{});
    EXPECT_FALSE(TextBox[0]->caret) << "three items, three draws";
}
