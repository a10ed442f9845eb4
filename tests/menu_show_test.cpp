// Menu_Show and Menu_Init on the real driver: the widgets a frame draws and
// the pictures the menus pre-cache.
#include "common/cvar.h"
#include "gl_test_env.h"
#include "input/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "render/texture.h"

namespace {

class GLMenuShow : public GLTest {
protected:
    static S_GameMenu Item(int type, const std::string& screen, int x, int y, const std::string& func = "") {
        S_GameMenu item;
        item.type = type, item.menu = screen, item.name = type < 2 ? "white.tga" : "";
        item.x = x, item.y = y, item.w = 100, item.h = 40, item.func = func;
        return item;
    }
};

}  // namespace

TEST_F(GLMenuShow, InitPreCachesWidgetPicturesThenItemPicturesInOrder) {
    const char* names[] = {"volume.tga",  "dot.tga",     "check.tga", "box.tga",
                           "arrowrt.tga", "arrowlt.tga", "b.tga",     "a.tga"};
    for (const char* name : names)
        WriteFile(std::string("data/textures/") + name, TgaFill(2, 2, {9, 9, 9, 255}));
    DefaultTexture();
    GameMenu = {Item(0, "main", 0, 0), Item(2, "main", 0, 0), Item(1, "main", 0, 0)};
    GameMenu[0].name = "b.tga", GameMenu[2].name = "a.tga";
    AppStatus.startWithMenu = false;
    Cvar_Set("m_menu", "1");
    EXPECT_EQ(Menu_Init(), 1);
    EXPECT_EQ(Cvar_Get("m_menu"), "0");
    ASSERT_EQ(CTexture::TextureManger.size(), 8u);
    for (size_t i = 0; i < 8; ++i)
        EXPECT_EQ(CTexture::TextureManger[i].find(std::string("data/textures/") + names[i]), 0u) << i;
}

TEST_F(GLMenuShow, EveryWidgetIsDrawnOncePerItemOfTheWholeList) {
    // The text box's caret flips on each of its draws, so it counts them.
    GameMenu = {Item(5, "options", 10, 10, "r_highscore"), Item(1, "main", 300, 300)};
    g_MenuConverted = true;
    Menu_Setup();
    ASSERT_NE(TextBox[0], nullptr);
    SDL_Keys.keyReleased = true;  // no key to type
    Menu_Screen("options");
    Menu_Show(SDL_Event{});
    EXPECT_TRUE(TextBox[0]->caret) << "two items, two draws, even for the item of another screen";
    GameMenu.push_back(Item(1, "other", 300, 300));
    Menu_Show(SDL_Event{});
    EXPECT_FALSE(TextBox[0]->caret) << "three items, three draws";
}
