// The widgets' rules, run without a window: what a click, a drag or typing
// does to the console variables and to what would be drawn.
#include <gtest/gtest.h>

#include <string>

#include "app/appstatus.h"
#include "console/cvar.h"
#include "menu/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "test_support.h"

namespace {

class Widgets : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        RegisterAllCvars();
        Widgets_Reset();
        _mtoggle = "options";
        g_MustResetGame = 0;
        SDL_EnableUNICODE(1);  // the window turns it on in the game
    }
    void TearDown() override {
        Widgets_Reset();
        _mtoggle.clear();
        g_MustResetGame = 0;
        ShellTest::TearDown();
    }

    static void MouseAt(int x, int y) {
        SDL_Event e{};
        e.type = SDL_MOUSEMOTION;
        e.motion.type = SDL_MOUSEMOTION;
        e.motion.x = Uint16(x);
        e.motion.y = Uint16(y);
        Input_MouseMotion(e);
    }
    static void LeftDown() {
        SDL_Event e{};
        e.type = SDL_MOUSEBUTTONDOWN;
        e.button.button = SDL_BUTTON_LEFT;
        Input_MouseButtonDown(e);
    }
    // A full click that one frame sees: press, (release,) end of frame.
    static void ClickAt(int x, int y) {
        MouseAt(x, y);
        LeftDown();
        Input_MouseButtonUp();
    }
    static void TypeKey(SDLKey sym, Uint16 unicode) {
        SDL_Event e{};
        e.type = SDL_KEYDOWN;
        e.key.keysym.sym = sym;
        e.key.keysym.unicode = unicode;
        Input_KeyDown(e);
        Input_KeyUp();
    }
};

std::string Rows4Names[32] = {"640 x 480", "800 x 600", "1024 x 768", "1280 x 1024"};
std::string Rows4Values[32] = {"m_res 1", "m_res 2", "m_res 3", "m_res 4"};

} // namespace

TEST_F(Widgets, CheckboxClickFlipsItsVariableOncePerPressAndAsksForARestart) {
    Cvar_Set("fullscreen", "1");
    CCheckBox box(100, 100, "fullscreen", "options");
    EXPECT_TRUE(box.checked);
    EXPECT_TRUE(box.needsRestart);

    ClickAt(116, 116);
    EXPECT_TRUE(box.Think());
    EXPECT_TRUE(box.hover);
    EXPECT_EQ(Cvar_Get("fullscreen"), "0");
    EXPECT_FALSE(box.checked);
    EXPECT_EQ(g_MustResetGame, 1);
    EXPECT_FALSE(SDL_Mouse.buttonDown) << "the press is taken";
    box.Think();  // the menu polls every widget once per item
    EXPECT_EQ(Cvar_Get("fullscreen"), "0") << "one press flips once";
    Input_EndFrame();

    ClickAt(116, 116);
    box.Think();
    EXPECT_EQ(Cvar_Get("fullscreen"), "1");
    Input_EndFrame();

    // The edge is outside; another screen does nothing at all.
    ClickAt(100, 116);
    box.Think();
    EXPECT_FALSE(box.hover);
    EXPECT_EQ(Cvar_Get("fullscreen"), "1");
    Input_EndFrame();
    _mtoggle = "main";
    ClickAt(116, 116);
    EXPECT_FALSE(box.Think());
    EXPECT_EQ(Cvar_Get("fullscreen"), "1");
    EXPECT_TRUE(SDL_Mouse.buttonDown) << "a hidden box leaves the press to others";
    Input_EndFrame();

    // A setting that needs no restart leaves the notice alone.
    _mtoggle = "options";
    g_MustResetGame = 0;
    CCheckBox particles(300, 100, "r_particles", "options");
    ClickAt(316, 116);
    particles.Think();
    EXPECT_EQ(Cvar_Get("r_particles"), "1");
    EXPECT_EQ(g_MustResetGame, 0);
}

TEST_F(Widgets, BlurCheckboxIsMarkedSlowerOnlyWithoutFramebufferObjects) {
    GLext.frameBufferObjects = false;
    EXPECT_FALSE(CCheckBox(0, 0, "r_blur", "options").supported);
    EXPECT_TRUE(CCheckBox(0, 0, "r_particles", "options").supported);
    GLext.frameBufferObjects = true;
    EXPECT_TRUE(CCheckBox(0, 0, "r_blur", "options").supported);
    EXPECT_EQ(CCheckBox::Count(), 3);
}

TEST_F(Widgets, SliderDragsAtOneHundredPixelsPerUnitAndDrawsAtNinetySix) {
    Cvar_Set("volume", "0.4");
    CSlider slider(200, 300, "volume", "options");  // knob drawn from x 238 to 270

    MouseAt(266, 316);  // 50 pixels of drag right of x, once the knob's half is taken off
    LeftDown();
    slider.Think();
    EXPECT_TRUE(slider.grabbed);
    EXPECT_EQ(Cvar_Get("volume"), "0.4") << "the press frame does not drag";
    Input_EndFrame();

    slider.Think();
    EXPECT_EQ(Cvar_Get("volume"), "0.5");
    EXPECT_EQ(slider.KnobX(), 248);
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
    EXPECT_EQ(slider.KnobX(), 296);
    EXPECT_EQ(Cvar_Get("volume"), "1.06") << "only the stored value is clamped";
}

TEST_F(Widgets, ListBoxWrapsBothWaysAndEachStepNeedsARestart) {
    Cvar_Set("m_res", "4");
    CListBox list(50, 200, Rows4Names, Rows4Values, "options");
    EXPECT_EQ(list.selected, 3) << "the variable counts rows from 1";

    ClickAt(50 + 176, 216);  // right arrow
    EXPECT_TRUE(list.Think());
    EXPECT_TRUE(list.rightHit);
    EXPECT_EQ(list.selected, 0);
    EXPECT_EQ(Cvar_Get("m_res"), "1");
    EXPECT_EQ(g_MustResetGame, 1);
    EXPECT_FALSE(SDL_Mouse.buttonDown);
    list.Think();
    EXPECT_EQ(list.selected, 0) << "one press, one step";
    Input_EndFrame();

    ClickAt(50 + 16, 216);  // left arrow
    list.Think();
    EXPECT_EQ(list.selected, 3);
    EXPECT_EQ(Cvar_Get("m_res"), "4");
    EXPECT_EQ(list.SelectedName(), "1280 x 1024");
    Input_EndFrame();

    // Between the arrows, or on an arrow's edge, nothing happens.
    ClickAt(50 + 100, 216);
    list.Think();
    ClickAt(50 + 160, 216);
    list.Think();
    EXPECT_EQ(list.selected, 3);
}

TEST_F(Widgets, ListRowWithTwoSettingsSetsBothInOrder) {
    Widgets_ApplySettings("screenwidth 800\"screenheight 600");
    EXPECT_EQ(Cvar_Get("screenwidth"), "800");
    EXPECT_EQ(Cvar_Get("screenheight"), "600");
    Widgets_ApplySettings("volume 0.2\"volume 0.7\"");
    EXPECT_EQ(Cvar_Get("volume"), "0.7") << "later settings win";

    std::string names[32] = {"low", "high"};
    std::string values[32] = {"r_particles 1\"r_blur 0", "r_particles 2\"r_blur 1"};
    Cvar_Set("r_particles", "1");
    Cvar_Set("r_blur", "0");
    CListBox list(0, 0, names, values, "options");
    EXPECT_EQ(list.selected, 0);
    ClickAt(176, 16);
    list.Think();
    EXPECT_EQ(list.selected, 1);
    EXPECT_EQ(Cvar_Get("r_particles"), "2");
    EXPECT_EQ(Cvar_Get("r_blur"), "1");
}

TEST_F(Widgets, EmptyOrOutOfRangeListsStepWithoutLeavingTheRows) {
    std::string empty[32];
    std::string values[32] = {"m_res 2"};
    Cvar_Set("m_res", "0");
    CListBox none(0, 0, empty, values, "options");
    EXPECT_EQ(none.selected, -1);
    EXPECT_EQ(none.SelectedName(), "");
    none.leftHit = true;
    none.ToggleList(values);  // used to search backwards for ever
    EXPECT_EQ(none.selected, 0);
    none.leftHit = false;
    none.rightHit = true;
    none.ToggleList(values);
    EXPECT_EQ(none.selected, 0);

    Cvar_Set("m_res", "99");
    CListBox past(0, 0, Rows4Names, Rows4Values, "options");
    EXPECT_EQ(past.SelectedName(), "");
    past.rightHit = true;
    past.ToggleList(Rows4Values);
    EXPECT_EQ(past.selected, 0);
    past.selected = 98;
    past.rightHit = false;
    past.leftHit = true;
    past.ToggleList(Rows4Values);
    EXPECT_EQ(past.selected, 3);
    EXPECT_EQ(Cvar_Get("m_res"), "4");
}

TEST_F(Widgets, TextBoxStartsEmptyKeepsThirteenLettersAndForgetsWhenHidden) {
    Cvar_Set("r_highscore", "old name");
    CTextBox box(10, 10, "r_highscore", "gameover");
    _mtoggle = "gameover";
    box.Think();
    EXPECT_EQ(Cvar_Get("r_highscore"), "") << "the box never reads its variable";

    for (int i = 0; i < 20; i++) {
        TypeKey(SDLKey(SDLK_a + i), Uint16('a' + i));
        box.Think();
        box.Think();  // polled again in the same frame: the key is already taken
        Input_EndFrame();
    }
    EXPECT_EQ(box.text, "abcdefghijklt") << "cut to 12, then one more goes on";
    EXPECT_EQ(Cvar_Get("r_highscore"), "abcdefghijklt");

    _mtoggle = "main";
    EXPECT_FALSE(box.Think());
    EXPECT_EQ(box.text, "");
    EXPECT_EQ(Cvar_Get("r_highscore"), "abcdefghijklt") << "hidden, it writes nothing";
}
