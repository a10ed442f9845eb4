// The shipped menu file as the game loads it: its screens and actions, and
// its layout after the game's own resolution conversion at 640 x 480,
// 800 x 600 and 1024 x 768.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "assets_support.h"
#include "common/appstatus.h"
#include "menu/menu.h"

namespace {

class AssetsMenu : public ShellTest {
protected:
    // The game's menu file, loaded from a scratch folder that links to it.
    void Load() {
        Menu_Reset();
        if (std::filesystem::create_directories("data"))
            std::filesystem::create_directory_symlink(GameData("scripts"), "data/scripts");
        Menu_Load();
        ASSERT_GT(GameMenu.size(), 20u) << "menu.xml does not load";
    }
    ScratchDir scratch;
};

const char* const KINDS[6] = {"button", "label", "checkbox", "slider", "Listbox", "textbox"};
const int DRAWN_WIDTH[6] = {0, 0, 32, 128, 192, 160};  // widgets are drawn 32 high at these widths

struct Rect {
    double x0, y0, x1, y1;
    std::string what;
};

}  // namespace

TEST_F(AssetsMenu, ScreensHoldTheirActionsAndEveryGotoAndPictureExists) {
    Load();
    std::set<std::string> screens, present;
    for (const S_GameMenu& i : GameMenu)  // a label carries the button's func before it: it is known by its picture
        screens.insert(i.menu),
            present.insert(i.menu + " " + KINDS[i.type] + " " + (i.func.empty() || i.type == 1 ? i.name : i.func));
    for (const char* want :
         {"main label title.tga", "main button restart", "main button goto options", "main button goto scores",
          "main button cmd quit", "options checkbox fullscreen", "options checkbox r_blur", "options checkbox showfps",
          "options checkbox r_particles", "options slider volume", "options slider brightness",
          "options button goto main", "scores button goto main", "pause button cvar m_menu 0", "pause button goto main",
          "gameover textbox r_highscore", "gameover label lbl_returnhint.tga", "gameover button goto main"})
        EXPECT_TRUE(present.count(want)) << want;
    const int presets[6][2] = {{640, 480}, {800, 600}, {1024, 768}, {1280, 800}, {1440, 900}, {1680, 1050}};
    int lists = 0;
    for (const S_GameMenu& i : GameMenu) {
        EXPECT_TRUE(i.type > 1 || i.func.rfind("goto ", 0) != 0 || screens.count(i.func.substr(5))) << i.func;
        EXPECT_TRUE(i.type > 1 || std::filesystem::is_regular_file(GameData("textures/" + i.name))) << i.name;
        if (i.type != 4)
            continue;
        lists++;  // the resolution list of the options sets presets 1-6, and nothing more
        EXPECT_EQ(i.menu, "options");
        for (int r = 0; r < MENU_LIST_ROWS; r++)
            EXPECT_EQ(i.listValues[r], r >= 6 ? ""
                                              : "m_res " + std::to_string(r + 1) + "\"screenwidth " +
                                                    std::to_string(presets[r][0]) + "\"screenheight " +
                                                    std::to_string(presets[r][1]));
    }
    EXPECT_EQ(lists, 1);
}

TEST_F(AssetsMenu, LayoutStaysOnScreenWithoutOverlapsAtThreeResolutions) {
    std::map<std::string, Extent> extents;  // the visible part of each picture
    for (auto [W, H] : {std::pair{640, 480}, std::pair{800, 600}, std::pair{1024, 768}}) {
        Load();
        Resolution.width = W, Resolution.height = H;
        Menu_ChangeResolution();
        for (const std::string screen : {"main", "options", "scores", "pause", "gameover"}) {
            SCOPED_TRACE(screen + " at " + std::to_string(W) + "x" + std::to_string(H));
            // Text the game prints itself: 16 x 16 glyphs, 10 apart.
            auto text = [](double x, double y, int chars, const char* what) {
                return Rect{x, y, x + 16 + (chars - 1) * 10.0, y + 16, what};
            };
            std::vector<Rect> rects = {text(W - 80, 25, 6, "version")};
            if (screen == "main")
                rects.push_back(text(20, H - 25, 24, "web address"));
            if (screen == "options")
                rects.push_back(text(20, H - 25, 57, "restart notice"));
            if (screen == "scores")
                rects.push_back({W / 3.0, 100, W / 3.0 + 206, 100 + 19 * 17 + 16, "score table"});
            if (screen == "gameover")
                rects.push_back(text(W / 4, H / 3, 18, "final score"));
            for (const S_GameMenu& i : GameMenu) {
                if (i.menu != screen)
                    continue;
                const int w = DRAWN_WIDTH[i.type] ? DRAWN_WIDTH[i.type] : i.w, h = DRAWN_WIDTH[i.type] ? 32 : i.h;
                EXPECT_TRUE(i.x >= 0 && i.y >= 0 && i.x + w <= W && i.y + h <= H) << KINDS[i.type] << " " << i.name;
                Extent e{0, 0, 1, 1};
                if (i.type < 2) {
                    S_TgaImage t;
                    if (!extents.count(i.name) && TGA_Read(GameData("textures/" + i.name), t))
                        extents[i.name] = VisibleExtent(t);
                    e = extents[i.name];
                }
                Rect r{i.x + e.x0 * w, i.y + e.y0 * h, i.x + e.x1 * w, i.y + e.y1 * h,
                       std::string(KINDS[i.type]) + " " + i.name + i.func};
                for (const Rect& o : rects)
                    EXPECT_FALSE(r.x0 < o.x1 && o.x0 < r.x1 && r.y0 < o.y1 && o.y0 < r.y1) << r.what << " / " << o.what;
                rects.push_back(r);
            }
        }
    }
}
