// The widgets' rules, without a window.
#include <gtest/gtest.h>

#include "common/cvar.h"
#include "input/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "test_support.h"

namespace {

class Widgets : public CvarTest {
protected:
    void SetUp() override {
        CvarTest::SetUp();
        _mtoggle = "options";
        SDL_EnableUNICODE(1);  // the window turns it on in the game
    }
    // A full click that one frame sees: press, (release,) end of frame.
    static void ClickAt(int x, int y) {
        MouseAt(x, y);
        Input_MouseButtonDown(MouseButtonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT));
        Input_MouseButtonUp();
    }
};

std::string Rows4Names[32] = {"640 x 480", "800 x 600", "1024 x 768", "1280 x 1024"};
std::string Rows4Values[32] = {"m_res 1\"volume 0.1", "m_res 2\"volume 0.2", "m_res 3\"volume 0.3",
                               "m_res 4\"volume 0.4"};

}  // namespace

TEST_F(Widgets, CheckboxClickFlipsItsVariableOncePerPressAndAsksForARestart) {
    Cvar_Set("fullscreen", "1");
    CCheckBox box(100, 100, "fullscreen", "options");
    const struct {
        int x;
        const char* screen;
        bool flips;
        const char* value;
    } clicks[] = {{116, "options", true, "0"},
                  {116, "options", true, "1"},
                  {100, "options", false, "1"},  // the edge is outside
                  {116, "main", false, "1"}};    // another screen does nothing at all
    for (const auto& c : clicks) {
        SCOPED_TRACE(std::to_string(c.x) + " on " + c.screen);
        _mtoggle = c.screen;
        ClickAt(c.x, 116);
        EXPECT_EQ(box.Think(), _mtoggle == "options");
        box.Think();  // the menu polls every widget once per item: one press flips once
        EXPECT_EQ(box.hover, c.flips);
        EXPECT_EQ(Cvar_Get("fullscreen"), c.value);
        EXPECT_EQ(box.checked, c.value == std::string("1"));
        EXPECT_EQ(SDL_Mouse.buttonDown, !c.flips) << "a flip takes the press; otherwise it is left to others";
        Input_EndFrame();
    }
    EXPECT_EQ(g_MustResetGame, 1);

    // A setting that needs no restart leaves the notice alone.
    _mtoggle = "options";
    g_MustResetGame = 0;
    CCheckBox particles(300, 100, "r_particles", "options");
    ClickAt(316, 116);
    particles.Think();
    EXPECT_EQ(Cvar_Get("r_particles") + " " + std::to_string(g_MustResetGame), "1 0") << "and asks for no restart";
    GLext.frameBufferObjects = false;  // drawn " slower" in GLFont
    EXPECT_FALSE(CCheckBox(0, 0, "r_blur", "options").supported);
    EXPECT_TRUE(CCheckBox(0, 0, "r_particles", "options").supported) << "only the blur is slower";
}

TEST_F(Widgets, SliderDragsAtOneHundredPixelsPerUnitAndDrawsAtNinetySix) {
    Cvar_Set("volume", "0.4");
    CSlider slider(200, 300, "volume", "options");  // knob drawn from x 238 to 270

    MouseAt(266, 316);  // 50 pixels of drag right of x, once the knob's half is taken off
    Input_MouseButtonDown(MouseButtonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT));
    slider.Think();
    EXPECT_TRUE(slider.grabbed);
    EXPECT_EQ(Cvar_Get("volume"), "0.4") << "the press frame does not drag";
    Input_EndFrame();

    slider.Think();
    EXPECT_EQ(Cvar_Get("volume") + " " + std::to_string(slider.KnobX()), "0.5 248");
    slider.Think();
    EXPECT_EQ(slider.KnobX(), 248) << "the knob stays under the mouse";

    // Dragged past the end: the variable gets the unclamped value, the knob stops at 96.
    slider.value = 0.95f;  // knob from 291.2
    MouseAt(322, 316);
    slider.Think();
    EXPECT_EQ(Cvar_Get("volume"), "1.06");
    MouseAt(1000, 316);  // off the knob: let go
    slider.Think();
    EXPECT_FALSE(slider.grabbed);
    EXPECT_EQ(Cvar_Get("volume") + " " + std::to_string(slider.KnobX()), "1.06 296") << "only the knob is clamped";
}

TEST_F(Widgets, ListBoxWrapsBothWaysAndEachStepNeedsARestart) {
    Cvar_Set("m_res", "4");
    CListBox list(50, 200, Rows4Names, Rows4Values, "options");
    EXPECT_EQ(list.selected, 3) << "the variable counts rows from 1";
    const struct {
        int x;
        bool steps;
        int selected;
    } clicks[] = {{50 + 176, true, 0},    // right arrow, past the last row
                  {50 + 16, true, 3},     // left arrow, before the first
                  {50 + 100, false, 3},   // between the arrows
                  {50 + 160, false, 3}};  // on an arrow's edge
    for (const auto& c : clicks) {
        SCOPED_TRACE(c.x);
        ClickAt(c.x, 216);
        EXPECT_TRUE(list.Think());
        EXPECT_EQ(list.leftHit || list.rightHit, c.steps) << "the hit arrow is lit for this draw";
        list.Think();  // one press, one step
        EXPECT_EQ(list.selected, c.selected);
        const std::string row = std::to_string(c.selected + 1);
        EXPECT_EQ(Cvar_Get("m_res") + " " + Cvar_Get("volume"), row + " 0." + row) << "both settings of the row";
        EXPECT_EQ(SDL_Mouse.buttonDown, !c.steps);
        Input_EndFrame();
    }
    EXPECT_EQ(g_MustResetGame, 1);
    EXPECT_EQ(list.SelectedName(), "1280 x 1024");
}

TEST_F(Widgets, SettingsOfARowApplyInOrder) {
    Widgets_ApplySettings("screenwidth 800\"screenheight 600");
    EXPECT_EQ(Cvar_Get("screenwidth") + "x" + Cvar_Get("screenheight"), "800x600");
    Widgets_ApplySettings("volume 0.2\"volume 0.7\"");
    EXPECT_EQ(Cvar_Get("volume"), "0.7") << "later settings win";
}

TEST_F(Widgets, EmptyOrOutOfRangeListsStepWithoutLeavingTheRows) {
    auto step = [](CListBox& list, bool left) {  // as a click on that arrow
        list.leftHit = left, list.rightHit = !left;
        list.ToggleList(list.values);
        return list.selected;
    };
    std::string empty[32];
    std::string values[32] = {"m_res 2"};
    Cvar_Set("m_res", "0");
    CListBox none(0, 0, empty, values, "options");
    EXPECT_EQ(std::to_string(none.selected) + " '" + none.SelectedName() + "'", "-1 ''");
    EXPECT_EQ(step(none, true), 0);  // used to search backwards for ever
    EXPECT_EQ(step(none, false), 0);

    Cvar_Set("m_res", "99");
    CListBox past(0, 0, Rows4Names, Rows4Values, "options");
    EXPECT_EQ(past.SelectedName(), "");
    EXPECT_EQ(step(past, false), 0);
    past.selected = 98;
    EXPECT_EQ(step(past, true), 3);
    EXPECT_EQ(Cvar_Get("m_res"), "4");
}

TEST_F(Widgets, TextBoxStartsEmptyKeepsThirteenLettersAndForgetsWhenHidden) {
    Cvar_Set("r_highscore", "old name");
    CTextBox box(10, 10, "r_highscore", "gameover");
    _mtoggle = "gameover";
    box.Think();
    EXPECT_EQ(Cvar_Get("r_highscore"), "") << "the box never reads its variable";

    for (int i = 0; i < 20; i++) {
        Input_KeyDown(KeyEvent(SDLKey(SDLK_a + i), Uint16('a' + i)));
        Input_KeyUp(KeyEvent(SDLKey(SDLK_a + i), 0, SDL_KEYUP));
        box.Think();
        box.Think();  // polled again in the same frame: the key is already taken
        Input_EndFrame();
    }
    EXPECT_EQ(box.text + " " + Cvar_Get("r_highscore"), "abcdefghijklt abcdefghijklt") << "cut to 12, then one more";

    _mtoggle = "main";
    EXPECT_FALSE(box.Think());
    EXPECT_EQ(box.text + "|" + Cvar_Get("r_highscore"), "|abcdefghijklt") << "hidden, it forgets and writes nothing";
}
