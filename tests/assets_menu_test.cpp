// The menu file: its screens and actions, and its layout after the game's
// resolution conversion at 640 x 480, 800 x 600 and 1024 x 768.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <map>
#include <set>
#include <tuple>

#include "assets_support.h"

namespace {

struct Item {
    std::string menu, tag, name, func;
    int x = 0, y = 0, w = 0, h = 0;
    std::vector<std::string> rows;  // a list box's row settings
};

// The items of every screen. Each must state all of its attributes, since
// the loader carries what is left out over from the item before; widgets
// are drawn at fixed sizes, a list box at its "pos".
std::vector<Item> LoadMenu() {
    std::vector<Item> items;
    // What each kind of item must state besides x, y, w, h; a widget's drawn width (32 high).
    const std::map<std::string, std::pair<std::vector<const char*>, int>> kinds = {
        {"button", {{"name", "func"}, 0}}, {"label", {{"name"}, 0}},    {"checkbox", {{"func"}, 32}},
        {"slider", {{"func"}, 128}},       {"textbox", {{"func"}, 160}}, {"Listbox", {{}, 192}}};
    TiXmlDocument doc(GameData("scripts/menu.xml").c_str());
    TiXmlElement* root = doc.LoadFile() ? doc.FirstChildElement("GameMenu") : nullptr;
    for (TiXmlElement* m = root ? root->FirstChildElement("menu") : nullptr; m; m = m->NextSiblingElement("menu"))
        for (TiXmlElement* e = m->FirstChildElement(); e; e = e->NextSiblingElement()) {
            Item it;
            it.menu = m->Attribute("name") ? m->Attribute("name") : "", it.tag = e->Value();
            EXPECT_TRUE(kinds.count(it.tag)) << "unknown item " << it.tag << " would repeat the one before";
            const auto& kind = kinds.count(it.tag) ? kinds.at(it.tag) : kinds.at("label");
            std::vector<const char*> attributes = kind.first;
            attributes.insert(attributes.end(), {"x", "y", "w", "h"});
            for (const char* a : attributes)
                EXPECT_TRUE(e->Attribute(a)) << it.menu << ": " << it.tag << " lacks " << a;
            it.name = e->Attribute("name") ? e->Attribute("name") : "";
            it.func = e->Attribute("func") ? e->Attribute("func") : "";
            e->QueryIntAttribute("x", &it.x), e->QueryIntAttribute("y", &it.y);
            e->QueryIntAttribute("w", &it.w), e->QueryIntAttribute("h", &it.h);
            if (kind.second) it.w = kind.second, it.h = 32;
            for (TiXmlElement* c = e->FirstChildElement(); c; c = c->NextSiblingElement())
                if (c->ValueStr() == "pos") c->QueryIntAttribute("x", &it.x), c->QueryIntAttribute("y", &it.y);
                else if (c->ValueStr() == "fill") it.rows.push_back(c->Attribute("func") ? c->Attribute("func") : "");
            items.push_back(it);
        }
    return items;
}

// The game's conversion of positions (percent) and picture sizes (pixels at
// 640 x 480) to the screen; the title keeps its size.
Item Convert(Item it, int W, int H) {
    if (W > 640 || H > 480) {
        it.y = std::max(0, it.y - 20);
        const bool button = it.tag == "button", label = it.tag == "label" && W != 640 && W != 800;
        if ((button || label) && it.name != "title.tga") {
            it.w += W - 640, it.h += H - 480;
            if (button)
                it.w = W == 800 ? int(it.w / 1.2) : it.w / 2, it.h = H == 600 ? int(it.h / 1.5) : it.h / 3;
            else
                it.w = W == 1024 ? it.w / 3 : it.w / 4, it.h = W == 1024 ? it.h / 4 : int(it.h / 6.5);
        }
    }
    it.x *= int(W * 0.01), it.y *= int(H * 0.01);
    return it;
}

struct Rect {
    double x0, y0, x1, y1;
    std::string what;
};

}  // namespace

TEST(AssetsMenu, ScreensHoldTheirActionsAndEveryGotoAndPictureExists) {
    std::vector<Item> all = LoadMenu();
    ASSERT_GT(all.size(), 20u) << "menu.xml does not load";
    std::set<std::string> screens, present;
    for (const Item& i : all)
        screens.insert(i.menu), present.insert(i.menu + " " + i.tag + " " + (i.func.empty() ? i.name : i.func));
    for (const char* want :
         {"main label title.tga", "main button restart", "main button goto options", "main button goto scores",
          "main button cmd quit", "options checkbox fullscreen", "options checkbox r_blur", "options checkbox showfps",
          "options checkbox r_particles", "options slider volume", "options slider brightness", "options Listbox ",
          "options button goto main", "scores button goto main", "pause button cvar m_menu 0", "pause button goto main",
          "gameover textbox r_highscore", "gameover label lbl_returnhint.tga", "gameover button goto main"})
        EXPECT_TRUE(present.count(want)) << want;
    for (const Item& i : all) {
        EXPECT_TRUE(i.func.rfind("goto ", 0) != 0 || screens.count(i.func.substr(5))) << i.func;
        EXPECT_TRUE(i.name.empty() || std::filesystem::is_regular_file(GameData("textures/" + i.name))) << i.name;
    }
    // The resolution list sets presets 1-6.
    const int presets[6][2] = {{640, 480}, {800, 600}, {1024, 768}, {1280, 800}, {1440, 900}, {1680, 1050}};
    for (const Item& i : all) {
        if (i.tag != "Listbox") continue;
        ASSERT_EQ(i.rows.size(), 6u);
        for (int r = 0; r < 6; r++)
            EXPECT_EQ(i.rows[r], "m_res " + std::to_string(r + 1) + "\"screenwidth " + std::to_string(presets[r][0]) +
                                     "\"screenheight " + std::to_string(presets[r][1]));
    }
}

TEST(AssetsMenu, LayoutStaysOnScreenWithoutOverlapsAtThreeResolutions) {
    Item worked = Convert({"", "button", "x.tga", "", 10, 30, 200, 40, {}}, 800, 600);  // the helper itself
    EXPECT_EQ(std::tie(worked.x, worked.y, worked.w, worked.h), std::make_tuple(80, 60, 300, 106));
    std::vector<Item> all = LoadMenu();
    std::map<std::string, Extent> extents;  // the visible part of each picture
    for (auto [W, H] : {std::pair{640, 480}, std::pair{800, 600}, std::pair{1024, 768}}) {
        for (const std::string screen : {"main", "options", "scores", "pause", "gameover"}) {
            SCOPED_TRACE(screen + " at " + std::to_string(W) + "x" + std::to_string(H));
            // Text the game prints itself: 16 x 16 glyphs, 10 apart.
            auto text = [](double x, double y, int chars, const char* what) {
                return Rect{x, y, x + 16 + (chars - 1) * 10.0, y + 16, what};
            };
            std::vector<Rect> rects = {text(W - 80, 25, 6, "version")};
            if (screen == "main") rects.push_back(text(20, H - 25, 24, "web address"));
            if (screen == "options") rects.push_back(text(20, H - 25, 57, "restart notice"));
            if (screen == "scores") rects.push_back({W / 3.0, 100, W / 3.0 + 206, 100 + 19 * 17 + 16, "score table"});
            if (screen == "gameover") rects.push_back(text(W / 4, H / 3, 18, "final score"));
            for (const Item& i : all) {
                if (i.menu != screen) continue;
                Item c = Convert(i, W, H);
                EXPECT_TRUE(c.x >= 0 && c.y >= 0 && c.x + c.w <= W && c.y + c.h <= H) << c.tag << " " << c.name;
                Extent e{0, 0, 1, 1};
                if (!c.name.empty()) {
                    S_TgaImage t;
                    if (!extents.count(c.name) && TGA_Read(GameData("textures/" + c.name), t))
                        extents[c.name] = VisibleExtent(t);
                    e = extents[c.name];
                }
                Rect r{c.x + e.x0 * c.w, c.y + e.y0 * c.h, c.x + e.x1 * c.w, c.y + e.y1 * c.h,
                       c.tag + " " + c.name + c.func};
                for (const Rect& o : rects)
                    EXPECT_FALSE(r.x0 < o.x1 && o.x0 < r.x1 && r.y0 < o.y1 && o.y0 < r.y1) << r.what << " / " << o.what;
                rects.push_back(r);
            }
        }
    }
}
