// The menu file: its screens and actions, and its layout after the game's
// resolution conversion at 640 x 480, 800 x 600 and 1024 x 768.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <map>
#include <set>

#include "assets_support.h"

namespace {

// One item as the loader builds it: fields carry over from item to item.
struct Item {
    int type = 0;  // 0 button, 1 label, 2 checkbox, 3 slider, 4 list box, 5 text box
    std::string menu, name, func, tag;
    int x = 0, y = 0, w = 0, h = 0;
    std::vector<std::string> rowNames, rowValues;
};

std::vector<Item> LoadMenu(const std::string& path) {
    std::vector<Item> items;
    TiXmlDocument doc(path.c_str());
    if (!doc.LoadFile()) return items;
    TiXmlElement* root = doc.FirstChildElement("GameMenu");
    if (!root) return items;
    Item rec;
    for (TiXmlElement* menu = root->FirstChildElement("menu"); menu; menu = menu->NextSiblingElement("menu")) {
        if (const char* n = menu->Attribute("name")) rec.menu = n;
        for (TiXmlElement* e = menu->FirstChildElement(); e; e = e->NextSiblingElement()) {
            e->QueryIntAttribute("x", &rec.x);
            e->QueryIntAttribute("y", &rec.y);
            e->QueryIntAttribute("w", &rec.w);
            e->QueryIntAttribute("h", &rec.h);
            std::string tag = e->Value();
            rec.tag = tag;
            rec.rowNames.clear();
            rec.rowValues.clear();
            if (tag == "button" || tag == "label") {
                rec.type = tag == "button" ? 0 : 1;
                if (const char* n = e->Attribute("name")) rec.name = n;
                if (tag == "button")
                    if (const char* f = e->Attribute("func")) rec.func = f;
            } else if (tag == "checkbox" || tag == "slider" || tag == "textbox") {
                rec.type = tag == "checkbox" ? 2 : tag == "slider" ? 3 : 5;
                rec.name.clear();
                if (const char* f = e->Attribute("func")) rec.func = f;
                rec.w = tag == "slider" ? 128 : 32;
                rec.h = 32;
            } else if (tag == "Listbox") {
                for (TiXmlElement* c = e->FirstChildElement(); c; c = c->NextSiblingElement()) {
                    std::string ct = c->Value();
                    if (ct == "pos") {
                        rec.type = 4;
                        c->QueryIntAttribute("x", &rec.x);
                        c->QueryIntAttribute("y", &rec.y);
                        rec.name.clear();
                        rec.w = rec.h = 32;
                    } else if (ct == "fill") {
                        rec.rowNames.push_back(c->Attribute("name") ? c->Attribute("name") : "");
                        rec.rowValues.push_back(c->Attribute("func") ? c->Attribute("func") : "");
                    }
                }
            }
            items.push_back(rec);
        }
    }
    return items;
}

// The game's conversion of file positions and sizes to screen pixels.
Item Convert(Item it, int W, int H) {
    if (W > 640 || H > 480) {
        it.y = std::max(0, it.y - 20);
        bool resize = it.type == 0 || (it.type == 1 && W != 640 && W != 800);
        if (resize && it.name != "title.tga") {
            it.w += W - 640;
            if (it.type == 0)
                it.w = W == 800 ? int(it.w / 1.2) : it.w / 2;
            else
                it.w = W == 1024 ? it.w / 3 : it.w / 4;
            it.h += H - 480;
            if (it.type == 0)
                it.h = H == 600 ? int(it.h / 1.5) : it.h / 3;
            else
                it.h = W == 1024 ? it.h / 4 : int(it.h / 6.5);
        }
    }
    it.y *= int(H * 0.01);
    it.x *= int(W * 0.01);
    return it;
}

struct Rect {
    double x0, y0, x1, y1;
    std::string what;
};

bool Overlap(const Rect& a, const Rect& b) { return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1; }

// What a player sees of an item: for pictures the part that is not
// transparent, stretched as the game stretches it; widgets at their sizes.
Rect Visible(const Item& it, std::map<std::string, Extent>& extents) {
    switch (it.type) {
        case 0:
        case 1: {
            if (!extents.count(it.name)) {
                Picture p;
                extents[it.name] = LoadPicture(GameData("textures/" + it.name), p) ? VisibleExtent(p) : Extent{};
            }
            const Extent& e = extents[it.name];
            return {it.x + e.x0 * it.w, it.y + e.y0 * it.h, it.x + e.x1 * it.w, it.y + e.y1 * it.h, it.name};
        }
        case 2: return {double(it.x), double(it.y), it.x + 32.0, it.y + 32.0, "checkbox " + it.func};
        case 3: return {double(it.x), double(it.y), it.x + 128.0, it.y + 32.0, "slider " + it.func};
        case 4: return {double(it.x), double(it.y), it.x + 192.0, it.y + 32.0, "list box"};
        default: return {double(it.x), double(it.y), it.x + 160.0, it.y + 32.0, "text box " + it.func};
    }
}

// Text the game itself prints on a screen (16 x 16 glyphs, 10 apart).
std::vector<Rect> PrintedText(const std::string& screen, int W, int H) {
    auto text = [](double x, double y, int chars, const char* what) {
        return Rect{x, y, x + 16 + (chars - 1) * 10.0, y + 16, what};
    };
    std::vector<Rect> out = {text(W - 80, 25, 6, "version")};
    if (screen == "main") out.push_back(text(20, H - 25, 24, "web address"));
    if (screen == "options") out.push_back(text(20, H - 25, 57, "restart notice"));
    if (screen == "scores") out.push_back({W / 3.0, 100, W / 3.0 + 16 + 19 * 10, 100 + 19 * 17 + 16, "score table"});
    if (screen == "gameover") out.push_back(text(W / 4, H / 3, 18, "final score"));
    return out;
}

std::vector<Item> Menu() { return LoadMenu(GameData("scripts/menu.xml")); }

std::vector<Item> Screen(const std::vector<Item>& all, const std::string& name) {
    std::vector<Item> out;
    for (const Item& i : all)
        if (i.menu == name) out.push_back(i);
    return out;
}

bool HasButton(const std::vector<Item>& items, const std::string& func) {
    for (const Item& i : items)
        if (i.type == 0 && i.func == func) return true;
    return false;
}

bool HasWidget(const std::vector<Item>& items, int type, const std::string& func) {
    for (const Item& i : items)
        if (i.type == type && i.func == func) return true;
    return false;
}

// A list row's settings: "name value" pairs separated by double quotes.
std::vector<std::pair<std::string, std::string>> Settings(const std::string& row) {
    std::vector<std::pair<std::string, std::string>> out;
    size_t start = 0;
    while (start < row.size()) {
        size_t quote = row.find('"', start);
        std::string part = row.substr(start, quote == std::string::npos ? std::string::npos : quote - start);
        size_t blank = part.find(' ');
        out.emplace_back(part.substr(0, blank), blank == std::string::npos ? "" : part.substr(blank + 1));
        if (quote == std::string::npos) break;
        start = quote + 1;
    }
    return out;
}

}  // namespace

TEST(AssetsMenu, ScreensAndTheirActionsArePresent) {
    std::vector<Item> all = Menu();
    ASSERT_FALSE(all.empty()) << "menu.xml does not load";

    std::vector<Item> main = Screen(all, "main");
    EXPECT_TRUE(HasButton(main, "restart"));
    EXPECT_TRUE(HasButton(main, "goto options"));
    EXPECT_TRUE(HasButton(main, "goto scores"));
    EXPECT_TRUE(HasButton(main, "cmd quit"));
    bool title = false;
    for (const Item& i : main) title |= i.type == 1 && i.name == "title.tga";
    EXPECT_TRUE(title);

    std::vector<Item> options = Screen(all, "options");
    for (const char* v : {"fullscreen", "r_blur", "r_particles", "showfps"}) EXPECT_TRUE(HasWidget(options, 2, v)) << v;
    for (const char* v : {"volume", "brightness"}) EXPECT_TRUE(HasWidget(options, 3, v)) << v;
    EXPECT_TRUE(HasButton(options, "goto main"));

    EXPECT_TRUE(HasButton(Screen(all, "scores"), "goto main"));
    std::vector<Item> pause = Screen(all, "pause");
    EXPECT_TRUE(HasButton(pause, "cvar m_menu 0"));
    EXPECT_TRUE(HasButton(pause, "goto main"));
    std::vector<Item> over = Screen(all, "gameover");
    EXPECT_TRUE(HasWidget(over, 5, "r_highscore"));
    EXPECT_TRUE(HasButton(over, "goto main"));
    bool hint = false;
    for (const Item& i : over) hint |= i.type == 1 && i.name.find("return") != std::string::npos;
    EXPECT_TRUE(hint) << "a label must say that Return confirms the name";

    // Every "goto" leads to a screen that exists; "cvar" actions have exactly three words.
    std::set<std::string> screens;
    for (const Item& i : all) screens.insert(i.menu);
    for (const Item& i : all) {
        if (i.type != 0) continue;
        if (i.func.rfind("goto ", 0) == 0) {
            EXPECT_TRUE(screens.count(i.func.substr(5))) << i.func;
        }
        if (i.func.rfind("cvar ", 0) == 0) {
            EXPECT_EQ(std::count(i.func.begin(), i.func.end(), ' '), 2) << i.func;
        }
    }
}

TEST(AssetsMenu, ResolutionListSetsThePresetsAndShowsTheCurrentOne) {
    const int presets[6][2] = {{640, 480}, {800, 600}, {1024, 768}, {1280, 800}, {1440, 900}, {1680, 1050}};
    int lists = 0;
    for (const Item& i : Screen(Menu(), "options")) {
        if (i.type != 4) continue;
        lists++;
        ASSERT_EQ(i.rowValues.size(), 6u);
        EXPECT_LE(i.rowValues.size(), 32u);
        for (size_t r = 0; r < i.rowValues.size(); r++) {
            auto s = Settings(i.rowValues[r]);
            ASSERT_EQ(s.size(), 3u) << i.rowValues[r];
            EXPECT_EQ(s[0], std::make_pair(std::string("m_res"), std::to_string(r + 1)));
            EXPECT_EQ(s[1], std::make_pair(std::string("screenwidth"), std::to_string(presets[r][0])));
            EXPECT_EQ(s[2], std::make_pair(std::string("screenheight"), std::to_string(presets[r][1])));
            EXPECT_FALSE(i.rowNames[r].empty());
            // The row's text must fit between the arrows (x + 32 to x + 160).
            EXPECT_LE(16 + (int(i.rowNames[r].size()) - 1) * 10, 128) << i.rowNames[r];
        }
    }
    EXPECT_EQ(lists, 1);
}

TEST(AssetsMenu, EveryItemStatesAllItsAttributesAndItsPictureExists) {
    TiXmlDocument doc(GameData("scripts/menu.xml").c_str());
    ASSERT_TRUE(doc.LoadFile());
    const std::map<std::string, std::vector<const char*>> needs = {
        {"button", {"x", "y", "w", "h", "name", "func"}}, {"label", {"x", "y", "w", "h", "name"}},
        {"checkbox", {"x", "y", "w", "h", "func"}},        {"slider", {"x", "y", "w", "h", "func"}},
        {"textbox", {"x", "y", "w", "h", "func"}},         {"Listbox", {"x", "y", "w", "h"}}};
    int count = 0;
    for (TiXmlElement* m = doc.FirstChildElement("GameMenu")->FirstChildElement("menu"); m;
         m = m->NextSiblingElement("menu")) {
        EXPECT_TRUE(m->Attribute("name"));
        for (TiXmlElement* e = m->FirstChildElement(); e; e = e->NextSiblingElement(), count++) {
            auto it = needs.find(e->Value());
            ASSERT_NE(it, needs.end()) << "unknown item " << e->Value() << " would repeat the one before";
            for (const char* a : it->second) EXPECT_TRUE(e->Attribute(a)) << e->Value() << " lacks " << a;
            if (e->Attribute("name")) {
                EXPECT_TRUE(FileExistsAt(GameData(std::string("textures/") + e->Attribute("name"))))
                    << e->Attribute("name");
            }
        }
    }
    EXPECT_GT(count, 20);
}

TEST(AssetsMenu, LayoutStaysOnScreenWithoutOverlapsAtEveryPreset) {
    std::vector<Item> all = Menu();
    ASSERT_FALSE(all.empty());
    std::map<std::string, Extent> extents;
    for (auto [W, H] : {std::pair{640, 480}, std::pair{800, 600}, std::pair{1024, 768}}) {
        std::set<std::string> screens;
        for (const Item& i : all) screens.insert(i.menu);
        for (const std::string& screen : screens) {
            SCOPED_TRACE(screen + " at " + std::to_string(W) + "x" + std::to_string(H));
            std::vector<Rect> rects;
            for (const Item& i : Screen(all, screen)) {
                Item c = Convert(i, W, H);
                // The whole picture stays on screen, not only its visible part.
                EXPECT_GE(c.x, 0) << c.name;
                EXPECT_GE(c.y, 0) << c.name;
                if (c.type <= 1) {
                    EXPECT_LE(c.x + c.w, W) << c.name;
                    EXPECT_LE(c.y + c.h, H) << c.name;
                }
                Rect r = Visible(c, extents);
                EXPECT_LE(r.x1, W) << r.what;
                EXPECT_LE(r.y1, H) << r.what;
                rects.push_back(r);
            }
            std::vector<Rect> printed = PrintedText(screen, W, H);
            for (size_t a = 0; a < rects.size(); a++) {
                for (size_t b = a + 1; b < rects.size(); b++)
                    EXPECT_FALSE(Overlap(rects[a], rects[b])) << rects[a].what << " / " << rects[b].what;
                for (const Rect& p : printed) EXPECT_FALSE(Overlap(rects[a], p)) << rects[a].what << " / " << p.what;
            }
        }
    }
}

TEST(AssetsMenu, ConversionMatchesTheWorkedExamples) {
    // Guards the helper itself with the figures the game is known to produce.
    Item b;
    b.type = 0;
    b.name = "x.tga";
    b.x = 10, b.y = 30, b.w = 200, b.h = 40;
    Item at800 = Convert(b, 800, 600);
    EXPECT_EQ(at800.w, 300);
    EXPECT_EQ(at800.h, 106);
    EXPECT_EQ(at800.x, 80);
    EXPECT_EQ(at800.y, 60);
    Item at640 = Convert(b, 640, 480);
    EXPECT_EQ(at640.w, 200);
    EXPECT_EQ(at640.x, 60);
    EXPECT_EQ(at640.y, 120);
    b.name = "title.tga";
    b.type = 1;
    EXPECT_EQ(Convert(b, 1024, 768).w, 200);
    EXPECT_TRUE(Overlap({0, 0, 10, 10, ""}, {9, 9, 20, 20, ""}));
    EXPECT_FALSE(Overlap({0, 0, 10, 10, ""}, {10, 0, 20, 10, ""}));
}
