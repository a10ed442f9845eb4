// Drawing of the menu screens: Menu_Show draws what Menu_Think decides for
// each item, then runs the widget pass; Menu_Draw is the background bursts.
#include <algorithm>

#include "common/cvar.h"
#include "menu/bursts.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "render/draw2d.h"
#include "render/font.h"
#include "render/particle_quad.h"

namespace {

void Print(const S_MenuPrint& text) { glPrint(text.x, text.y, text.set, text.mode, "%s", text.text.c_str()); }

template <class Widget, class Call>
void DrawWidgets(Widget* const (&table)[MAX_WIDGETS], Call call) {
    const int count = std::min(Widget::Count(), MAX_WIDGETS);
    for (int i = 0; i < count; ++i)
        if (table[i])
            call(*table[i]);
}

}  // namespace

void Menu_Show(const SDL_Event& event) {
    if (!Menu_Visible())
        return;
    for (size_t i = 0; i < GameMenu.size(); ++i) {
        const S_MenuItemFrame frame = Menu_Think(i);
        if (frame.shown) {
            for (const S_MenuPrint& text : frame.textsBefore)
                Print(text);
            SetDrawColor(frame.red, frame.green, frame.blue, 1.0f);
            if (frame.image)
                DisplayImageBlend(frame.x, frame.y, frame.w, frame.h, frame.texture);
            for (const S_MenuPrint& text : frame.textsAfter)
                Print(text);
        }
        // Every widget, once per item and whatever the screen: each widget
        // checks its own screen, and later widgets draw over earlier items.
        DrawWidgets(CheckBox, [](CCheckBox& w) { w.Draw(); });
        DrawWidgets(Slider, [](CSlider& w) { w.Draw(); });
        DrawWidgets(ListBox, [](CListBox& w) { w.Draw(); });
        DrawWidgets(TextBox, [&event](CTextBox& w) { w.Draw(event); });
    }
}

void Menu_Draw() {
    const int depth = BeginParticleLayer(MENU_BURST_SCALE);
    for (const char* file : {"particles1.txt", "particles2.txt", "particles3.txt"})
        DrawRandomParticles(file);
    EndParticleLayer(depth);
}
