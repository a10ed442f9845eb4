// Menu_Show and Menu_Init on the real driver: what a frame paints, and the
// pictures the menus pre-cache.
#include "console/cvar.h"
#include "gl_test_env.h"
#include "menu/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "render/texture.h"

namespace {

class GLMenuShow : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        Menu_Reset();
    }
    void TearDown() override {
        Menu_Reset();
        GLTest::TearDown();
    }
    static S_GameMenu Item(int type, const std::string& screen, int x, int y, const std::string& func) {
        S_GameMenu item;
        item.type = type, item.menu = screen, item.name = type < 2 ? "white.tga" : "";
        item.x = x, item.y = y, item.w = 100, item.h = 40, item.func = func;
        return item;
    }
};

}  // namespace

TEST_F(GLMenuShow, AFramePaintsTheCurrentScreenAndFollowsAClickAtOnce) {
    WriteFile("data/textures/white.tga", TgaFill(8, 8, {255, 255, 255, 255}));
    DefaultTexture();
    GetTexture("white.tga", 0);
    GameMenu = {Item(0, "main", 50, 50, "goto options"), Item(1, "main", 50, 150, ""),
                Item(1, "options", 300, 50, ""), Item(1, "other", 300, 150, ""),
                Item(2, "options", 300, 300, "showfps")};
    g_MenuConverted = true;  // the positions above are already screen pixels
    Menu_Setup();
    const S_GameMenu &button = GameMenu[0], &label = GameMenu[1], &options = GameMenu[2], &other = GameMenu[3];
    const S_GameMenu& check = GameMenu[4];
    ASSERT_NE(CheckBox[0], nullptr);
    const SDL_Event event{};

    Menu_Screen("main");
    SD_Mouse.x = Uint16(button.x + 5), SD_Mouse.y = Uint16(button.y + 5);
    Menu_Show(event);
    EXPECT_RGB(GLTest_Pixel(button.x + 50, button.y + 20), 51, 51, 204) << "hovered";
    EXPECT_RGB(GLTest_Pixel(label.x + 50, label.y + 20), 255, 255, 255);
    EXPECT_RGB(GLTest_Pixel(options.x + 50, options.y + 20), 0, 0, 0) << "not the current screen";
    EXPECT_RGB(GLTest_Pixel(check.x + 16, check.y + 16), 0, 0, 0) << "the checkbox belongs to options";

    GLTest_ResetState();
    SDL_Mouse.leftPressedLast = SDL_Mouse.leftClick = SDL_Mouse.buttonDown = true;
    Menu_Show(event);
    EXPECT_RGB(GLTest_Pixel(button.x + 50, button.y + 20), 25, 25, 229) << "pressed";
    EXPECT_EQ(Menu_Screen_Get(), "options");
    EXPECT_RGB(GLTest_Pixel(label.x + 50, label.y + 20), 0, 0, 0) << "main is gone after the click";
    EXPECT_RGB(GLTest_Pixel(options.x + 50, options.y + 20), 255, 255, 255) << "options shows in the same frame";
    EXPECT_RGB(GLTest_Pixel(other.x + 50, other.y + 20), 0, 0, 0);
    const S_Rgb box = GLTest_Pixel(check.x + 16, check.y + 16);
    EXPECT_GT(box.r + box.g + box.b, 60) << "the widget pass draws the options checkbox";

    GLTest_ResetState();
    Cvar_Set("m_menu", "0");
    Menu_Show(event);
    EXPECT_RGB(GLTest_Pixel(options.x + 50, options.y + 20), 0, 0, 0) << "no menu while m_menu is 0";
}

TEST_F(GLMenuShow, InitPreCachesWidgetPicturesThenItemPicturesInOrder) {
    const char* names[] = {"volume.tga", "dot.tga", "check.tga", "box.tga", "arrowrt.tga", "arrowlt.tga", "b.tga",
                           "a.tga"};
    for (const char* name : names)
        WriteFile(std::string("data/textures/") + name, TgaFill(2, 2, {9, 9, 9, 255}));
    DefaultTexture();
    GameMenu = {Item(0, "main", 0, 0, ""), Item(2, "main", 0, 0, ""), Item(1, "main", 0, 0, "")};
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
    GameMenu = {Item(5, "options", 10, 10, "r_highscore"), Item(1, "main", 300, 300, "")};
    g_MenuConverted = true;
    Menu_Setup();
    ASSERT_NE(TextBox[0], nullptr);
    SDL_Keys.keyReleased = true;  // no key to type
    Menu_Screen("options");
    Menu_Show(SDL_Event{});
    EXPECT_TRUE(TextBox[0]->caret) << "two items, two draws, even for the item of another screen";
    GameMenu.push_back(Item(1, "other", 300, 300, ""));
    Menu_Show(SDL_Event{});
    EXPECT_FALSE(TextBox[0]->caret) << "three items, three draws";
}
