// The menu loader: data/scripts/<menu file> read with TinyXML into the flat
// item list GameMenu. One working record is reused for every item and never
// cleared, so whatever an element does not set is carried over from the item
// before it; the shipped menu file is written with that in mind.
#include "menu/menu.h"

#include <tinyxml.h>

#include <cstring>

#include "common/appstatus.h"
#include "common/log.h"
#include "common/utils.h"
#include "input/input.h"

// The item list and the state that the runtime and the widgets share.
std::vector<S_GameMenu> GameMenu;
std::string _mtoggle;
int g_MustResetGame = 0;
bool g_MenuConverted = false;

bool Check_Point(int x, int y, int w, int h) {
    const int mx = Keys_GrabMouseX(), my = Keys_GrabMouseY();
    return mx > x && my > y && my < y + h && mx < x + w;
}

namespace {

// Positions and sizes are a few hundred units; the resolution conversion
// scales them up nineteen-fold, so a value far off any screen would overflow
// there. It is refused like a bad one: the item keeps the value before it.
constexpr int MENU_UNITS_MAX = 100000;

void ReadInt(const TiXmlElement& element, const char* attribute, int& field) {
    // TinyXML leaves the value alone when the attribute is missing or not a number.
    int value = field;
    element.QueryIntAttribute(attribute, &value);
    if (value > MENU_UNITS_MAX || value < -MENU_UNITS_MAX) {
        Log(" -- WARNING: menu item %s has %s=%d, more than %d units off, ignored\n", element.Value(), attribute, value,
            MENU_UNITS_MAX);
        return;
    }
    field = value;
}

// Every item copies all 64 list rows of the item before it, so long texts
// times many items would multiply a 1 MiB file into gigabytes. The shipped
// menu has 31 items and no text longer than 52 letters; past these bounds a
// text is refused like a bad number, and a file with too many items like a
// corrupt one.
constexpr size_t MENU_TEXT_MAX = 256;
constexpr int MENU_ITEMS_MAX = 512;

void ReadString(const TiXmlElement& element, const char* attribute, std::string& field) {
    const char* value = element.Attribute(attribute);
    if (!value)
        return;
    const size_t length = std::strlen(value);
    if (length > MENU_TEXT_MAX) {
        Log(" -- WARNING: menu item %s has a %s of %zu letters, more than %zu, ignored\n", element.Value(), attribute,
            length, MENU_TEXT_MAX);
        return;
    }
    field = value;
}

int CountItems(const TiXmlElement& root) {
    int items = 0;
    for (const TiXmlElement* menu = root.FirstChildElement("menu"); menu; menu = menu->NextSiblingElement("menu"))
        for (const TiXmlElement* element = menu->FirstChildElement(); element; element = element->NextSiblingElement())
            ++items;
    return items;
}

void ReadListBox(const TiXmlElement& listBox, S_GameMenu& item) {
    int row = 0;
    for (const TiXmlElement* child = listBox.FirstChildElement(); child; child = child->NextSiblingElement()) {
        const std::string tag = child->ValueStr();
        if (tag == "pos") {
            item.type = 4;
            ReadInt(*child, "x", item.x);
            ReadInt(*child, "y", item.y);
            item.name.clear();
            item.w = 32;
            item.h = 32;
        } else if (tag == "fill") {
            // A list box holds 32 rows: surplus rows are refused, with one
            // warning per list box, rather than written past the end.
            if (row >= MENU_LIST_ROWS) {
                if (row == MENU_LIST_ROWS)
                    Log(" -- WARNING: list box in menu %s has more than %d rows, the rest are ignored\n",
                        item.menu.c_str(), MENU_LIST_ROWS);
                ++row;
                continue;
            }
            ReadString(*child, "name", item.listNames[row]);
            ReadString(*child, "func", item.listValues[row]);
            ++row;
        }
    }
}

// Checkbox, slider and text box: no picture, and the kind's own size whatever
// the file says.
void ReadWidget(const TiXmlElement& element, int type, int width, S_GameMenu& item) {
    item.type = type;
    item.name.clear();
    item.w = width;
    item.h = 32;
    ReadString(element, "func", item.func);
}

// One element of a screen into the working record: what it does not set is
// left from the item before it, whatever its tag.
void ReadItem(const TiXmlElement& element, S_GameMenu& item) {
    ReadInt(element, "x", item.x);
    ReadInt(element, "y", item.y);
    ReadInt(element, "w", item.w);
    ReadInt(element, "h", item.h);

    const std::string tag = element.ValueStr();
    if (tag == "button") {
        item.type = 0;
        ReadString(element, "name", item.name);
        ReadString(element, "func", item.func);
    } else if (tag == "label") {
        item.type = 1;
        ReadString(element, "name", item.name);
    } else if (tag == "checkbox") {
        ReadWidget(element, 2, 32, item);
    } else if (tag == "slider") {
        ReadWidget(element, 3, 128, item);
    } else if (tag == "textbox") {
        ReadWidget(element, 5, 32, item);
    } else if (tag == "Listbox") {
        // The kind comes only from a "pos" child: without one the
        // list box keeps the kind of the item before it.
        ReadListBox(element, item);
    }
}

// One screen: every child element is one item. A screen without a name
// keeps the name of the one before it.
void ReadScreen(const TiXmlElement& menu, S_GameMenu& item) {
    ReadString(menu, "name", item.menu);
    for (const TiXmlElement* element = menu.FirstChildElement(); element; element = element->NextSiblingElement()) {
        ReadItem(*element, item);
        item.hover = 0;
        GameMenu.push_back(item);
    }
}

}  // namespace

int Menu_Load() {
    const std::string path = "data/" + std::string("scripts/") + AppStatus.menuFile;
    VerboseLog(" -- attempting to load menu: %s ... ", path.c_str());
    Menu_Get(path);
    return 0;
}

void Menu_Get(const std::string& path) {
    TiXmlDocument document(path.c_str());
    // Read here, not by TinyXML's LoadFile, which would read past the end
    // of a file cut inside a UTF-8 character (see XmlSafeText).
    const std::string text = ReadDataFile(path);  // "" when missing or too large (logged)
    document.Parse(XmlSafeText(text).c_str());
    if (text.empty() || document.Error()) {
        VerboseLog("FAILURE!\n");
        Log(" -- ERROR: Failed to load menu: %s\n", path.c_str());
        return;
    }
    VerboseLog("success!\n");
    Menu_Parse(document);
}

void Menu_Parse(const TiXmlDocument& document) {
    GameMenu.clear();
    g_MenuConverted = false;  // a fresh list is in file units again
    S_GameMenu item;

    const TiXmlElement* root = document.FirstChildElement("GameMenu");
    if (!root) {
        Log("\n!-- FAILURE -- corrupt menu.xml --!\n");
        return;
    }
    if (const int items = CountItems(*root); items > MENU_ITEMS_MAX) {
        Log(" -- ERROR: menu %s has %d items, more than %d: not loaded\n", AppStatus.menuFile.c_str(), items,
            MENU_ITEMS_MAX);
        return;
    }
    Log(" -- %s menu loaded!\n", AppStatus.menuFile.c_str());

    for (const TiXmlElement* menu = root->FirstChildElement("menu"); menu; menu = menu->NextSiblingElement("menu"))
        ReadScreen(*menu, item);
}
