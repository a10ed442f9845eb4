// The menu screens: the item list loaded from the menu file (data/scripts/),
// the current screen, the resolution conversion, the per-frame show with its
// hover, clicks and screen texts, and the action strings of buttons.
#pragma once

#include <SDL.h>

#include <string>
#include <vector>

class TiXmlDocument;

// One item of one screen (not one screen).
constexpr int MENU_LIST_ROWS = 32;  // rows of one list box

struct S_GameMenu {
    int type = 0;      // 0 button, 1 label, 2 checkbox, 3 slider, 4 list box, 5 text box
    std::string menu;  // the screen the item belongs to
    std::string name;  // image file of buttons and labels
    int x = 0, y = 0, w = 0, h = 0;
    std::string func;  // action string (buttons) or cvar name (widgets)
    int state = 0;     // not set by the loader
    int hover = 0;
    std::string listValues[MENU_LIST_ROWS];
    std::string listNames[MENU_LIST_ROWS];
};

extern std::vector<S_GameMenu> GameMenu;
extern std::string _mtoggle;  // the current screen
extern int g_MustResetGame;   // a changed setting needs a restart
extern bool g_MenuConverted;  // GameMenu holds screen pixels, not file units

int Menu_Load();  // data/scripts/<AppStatus.menuFile>; always 0
// Reads the menu file at `path` into Menu_Parse. A missing, too large or
// malformed file is logged and leaves GameMenu as it was.
void Menu_Get(const std::string& path);
// Empties GameMenu, then one item per element of each "menu" under the
// "GameMenu" root; what an element leaves out is carried over from the item
// before it. No root, or more than 512 items: logged, GameMenu stays empty.
void Menu_Parse(const TiXmlDocument& document);

int Menu_Init();  // pre-caches the images, "m_menu" from the start-with-menu flag
// Menu_ChangeResolution, then one widget object per checkbox, slider, list
// box and text box item; past 64 of a kind the rest are logged and skipped.
void Menu_Setup();
// File units to screen pixels for Resolution, in place and once per loaded
// list: x times width / 100 and y times height / 100 (both truncated);
// above 640 x 480, y first goes up 20 units (not below 0) and buttons and
// labels are resized by the rules the layout was tuned with.
void Menu_ChangeResolution();
// Shows the menu ("m_menu" 1) on screen `name`; any name goes. Leaving
// "options" this way or through a button writes the settings
// (Cvar_SaveWhileRunning). The getter gives "" until a screen is first chosen.
void Menu_Screen(const std::string& name);
std::string Menu_Screen_Get();
// While a menu shows: every item of the current screen (Menu_Think, then
// its picture and texts), and after each item of the list every widget's
// Draw. The event goes to the text boxes, which do not read it.
void Menu_Show(const SDL_Event& event);
// Runs a button's action: "goto S" returns S, the next screen; "cvar NAME
// VALUE" sets it (VALUE is the last word; a lone word is both); "cmd LINE"
// runs a command; "restart" hides the menu and sends play back to the first
// level. All but goto return "", and so does anything unknown.
std::string Menu_ScanFunc(const std::string& func);
bool Check_Point(int x, int y, int w, int h);  // strictly inside, edges excluded
void Menu_Draw();                              // background particle bursts
// Deletes the widgets; their counts and GameMenu stay (Menu_Reset clears them).
void Menu_Cleanup();
void Menu_Load_Img();  // the widget pictures, then every item's picture

// The rules of one frame of Menu_Show, without drawing. Menu_Show asks for
// each item in list order, draws what it is told, then runs the widget pass
// before asking for the next item: an item's click can change the screen for
// the items after it, and a widget can take the press before a later item
// sees it.
struct S_MenuPrint {
    long x = 0, y = 0;
    int set = 0, mode = 0;  // glPrint's font set and colour mode
    std::string text;       // printed with "%s"
};

struct S_MenuItemFrame {
    bool shown = false;                           // the item belongs to the current screen
    std::vector<S_MenuPrint> textsBefore;         // restart notice, score table, final score
    float red = 1.0f, green = 1.0f, blue = 1.0f;  // colour set for the item
    bool image = false;                           // buttons and labels draw their picture
    unsigned int texture = 0;
    int x = 0, y = 0, w = 0, h = 0;
    std::vector<S_MenuPrint> textsAfter;  // the web-address label on "main"
};

// Hover, colour, the screen texts, Return on "gameover" and the click's
// action for item `index`; its hover is back to 0 when this returns. An
// index past the list gives a frame with nothing shown.
S_MenuItemFrame Menu_Think(size_t index);

extern const char* const MENU_WEB_ADDRESS;  // printed on "main"

// Start-up state: no items, no current screen, no widgets, no restart notice.
void Menu_Reset();
