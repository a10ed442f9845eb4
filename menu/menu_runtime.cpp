// The menu runtime without drawing: the current screen, the conversion of
// the loaded positions to the screen, the widget objects, the action strings
// of buttons and the per-item rules of a frame (Menu_Think), which
// menu_draw.cpp's Menu_Show turns into pictures and text.
#include <algorithm>

#include "common/appstatus.h"
#include "common/cmd.h"
#include "common/config.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/scores.h"
#include "common/utils.h"
#include "input/input.h"
#include "menu/bursts.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "render/texture.h"

const char* const MENU_WEB_ADDRESS = "www.velthra-game.example";

namespace {

constexpr int KEY_RETURN = 13;

// Stores a new widget at its class's count, or refuses it when the table is
// full: the tables hold 64 each and a longer menu file must not write past them.
template <class Widget, class Make>
void AddWidget(Widget* (&table)[MAX_WIDGETS], const char* kind, const S_GameMenu& item, Make make) {
    const int index = Widget::Count();
    if (index < 0 || index >= MAX_WIDGETS) {
        Log(" -- WARNING: more than %d %s in the menus, the one on %s is ignored\n", MAX_WIDGETS, kind,
            item.menu.c_str());
        return;
    }
    table[index] = make(item);
}

// The options screen changes settings as the player clicks; they go to the
// disk once, as the player leaves it, however that happens (Back, Escape, a
// screen the game switches to).
void ChangeScreen(const std::string& next) {
    if (_mtoggle == "options" && next != "options")
        Cvar_SaveWhileRunning();
    _mtoggle = next;
}

template <class Widget>
void DeleteWidgets(Widget* (&table)[MAX_WIDGETS]) {
    const int count = std::min(Widget::Count(), MAX_WIDGETS);
    for (int i = 0; i < count; ++i) {
        delete table[i];
        table[i] = nullptr;
    }
}

}  // namespace

void Menu_Load_Img() {
    for (const char* image : {"volume.tga", "dot.tga", "check.tga", "box.tga", "arrowrt.tga", "arrowlt.tga"})
        PreCacheImage(image, 1);
    for (const S_GameMenu& item : GameMenu)
        if (!item.name.empty())
            PreCacheImage(item.name, 1);
}

int Menu_Init() {
    Menu_Load_Img();
    Cvar_Set(m_menu, AppStatus.startWithMenu ? "1" : "0");
    return 1;
}

void Menu_Setup() {
    VerboseLog(" --- setting up menu...\n");
    Menu_ChangeResolution();

    for (const S_GameMenu& item : GameMenu)
        if (item.type == 2)
            AddWidget(CheckBox, "checkboxes", item,
                      [](const S_GameMenu& i) { return new CCheckBox(i.x, i.y, i.func, i.menu); });
    for (const S_GameMenu& item : GameMenu)
        if (item.type == 3)
            AddWidget(Slider, "sliders", item,
                      [](const S_GameMenu& i) { return new CSlider(i.x, i.y, i.func, i.menu); });
    for (const S_GameMenu& item : GameMenu)
        if (item.type == 4)
            AddWidget(ListBox, "list boxes", item,
                      [](const S_GameMenu& i) { return new CListBox(i.x, i.y, i.listNames, i.listValues, i.menu); });
    for (const S_GameMenu& item : GameMenu)
        if (item.type == 5)
            AddWidget(TextBox, "text boxes", item,
                      [](const S_GameMenu& i) { return new CTextBox(i.x, i.y, i.func, i.menu); });
}

void Menu_ChangeResolution() {
    // The stored values are changed in place, so a second run would scale
    // them twice.
    if (g_MenuConverted)
        return;
    g_MenuConverted = true;

    const int W = Resolution.width, H = Resolution.height;
    for (S_GameMenu& item : GameMenu) {
        if (W > 640 || H > 480) {
            item.y = std::max(item.y - 20, 0);
            const bool button = item.type == 0;
            const bool label = item.type == 1 && W != 640 && W != 800;
            // The divisors, and testing W in some places and H in others,
            // are what the menu file's layout was tuned against.
            if ((button || label) && item.name != "title.tga") {
                item.w += W - 640;
                if (button)
                    item.w = W == 800 ? int(item.w / 1.2) : item.w / 2;
                else
                    item.w = W == 1024 ? item.w / 3 : item.w / 4;
                item.h += H - 480;
                if (button)
                    item.h = H == 600 ? int(item.h / 1.5) : item.h / 3;
                else
                    item.h = W == 1024 ? item.h / 4 : int(item.h / 6.5);
            }
        }
        item.y *= int(H * 0.01);
        item.x *= int(W * 0.01);
    }
}

void Menu_Screen(const std::string& name) {
    Cvar_Set(m_menu, "1");
    ChangeScreen(name);
}

std::string Menu_Screen_Get() { return _mtoggle; }

std::string Menu_ScanFunc(const std::string& func) {
    const size_t firstBlank = func.find(' ');
    const std::string word = func.substr(0, firstBlank);
    const bool hasRest = firstBlank != std::string::npos;
    const std::string rest = hasRest ? func.substr(firstBlank + 1) : std::string();

    if (word == "goto")
        return rest;
    if (word == "cvar" && hasRest) {
        // The value is the last word and the name everything between: with
        // more than three words the blanks become part of the name.
        const size_t lastBlank = func.rfind(' ');
        Cvar_Set(func.substr(firstBlank + 1, lastBlank - firstBlank - 1), func.substr(lastBlank + 1));
    } else if (word == "cmd" && hasRest) {
        Cmd_RunCommand(rest);
    } else if (func == "restart") {
        Cvar_Set(m_menu, "0");
        Game_Stats.restart = true;
    }
    return "";
}

S_MenuItemFrame Menu_Think(size_t index) {
    S_MenuItemFrame frame;
    if (index >= GameMenu.size() || GameMenu[index].menu != _mtoggle)
        return frame;
    S_GameMenu& item = GameMenu[index];
    const int W = Resolution.width, H = Resolution.height;
    frame.shown = true;
    frame.texture = FindTexture(item.name);

    if (Check_Point(item.x, item.y, item.w, item.h))
        item.hover = item.type == 0 ? 1 : 0;

    // The screen texts go out once per item of the screen, as the game always did.
    if (_mtoggle == "options" && g_MustResetGame != 0)
        frame.textsBefore.push_back({20, H - 25, 0, 3, "You must restart the game for this option to take effect."});
    if (_mtoggle == "scores") {
        const size_t lines = std::min<size_t>(MAX_SCORES_SHOWN, Score.entries.size());
        for (size_t line = 0; line < lines; ++line)
            frame.textsBefore.push_back({W / 3, long(100 + 17 * line), 0, 0, Score.entries[line]});
    }
    if (_mtoggle == "gameover")
        frame.textsBefore.push_back({W / 4, H / 3, 0, 0, "Final Score: " + std::to_string(Game_Stats.score)});

    const bool pressed = Mouse_GrabInput() == 1;
    if (item.hover) {
        frame.red = pressed ? 0.1f : 0.2f;
        frame.green = pressed ? 0.1f : 0.2f;
        frame.blue = pressed ? 0.9f : 0.8f;
    }
    frame.image = item.type == 0 || item.type == 1;
    frame.x = item.x, frame.y = item.y, frame.w = item.w, frame.h = item.h;

    if (_mtoggle == "main")
        frame.textsAfter.push_back({20, H - 25, 1, 0, MENU_WEB_ADDRESS});

    if (_mtoggle == "gameover" && Keys_GrabInput(KEY_RETURN))
        Menu_Screen("main");

    if (pressed && item.hover && item.type == 0) {
        // Copied: the action may run any console command.
        const std::string func = item.func;
        const std::string next = Menu_ScanFunc(func);
        if (!next.empty())
            ChangeScreen(next);
    }
    if (index < GameMenu.size())
        GameMenu[index].hover = 0;
    return frame;
}

void Menu_Cleanup() {
    DeleteWidgets(CheckBox);
    DeleteWidgets(Slider);
    DeleteWidgets(ListBox);
    DeleteWidgets(TextBox);
}

void Menu_Reset() {
    Menu_Cleanup();
    CCheckBox::ResetCount();
    CSlider::ResetCount();
    CListBox::ResetCount();
    CTextBox::ResetCount();
    GameMenu.clear();
    _mtoggle.clear();
    g_MustResetGame = 0;
    g_MenuConverted = false;
    MenuBursts_Reset();
}
