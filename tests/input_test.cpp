// The event table and the input records the rest of the game reads.
#include <gtest/gtest.h>

#include "app/events.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/timer.h"
#include "input/input.h"
#include "menu/menu.h"
#include "test_support.h"

namespace {

class Events : public CvarTest {
protected:
    static void Simple(Uint8 type) {
        SDL_Event e{};
        e.type = type;
        HandleEvent(e);
    }
    static void Active(Uint8 state, Uint8 gain) { HandleEvent(ActiveEvent(state, gain)); }
    static SDL_Event ActiveEvent(Uint8 state, Uint8 gain) {
        SDL_Event e{};
        e.type = e.active.type = SDL_ACTIVEEVENT, e.active.state = state, e.active.gain = gain;
        return e;
    }
};

}  // namespace

TEST_F(Events, ButtonsAreAnEdgeThenALevelAndKeysAndMotionAreRemembered) {
    HandleEvent(MouseButtonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT));
    EXPECT_EQ(Mouse_GrabInput(), 2);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 5);
    HandleEvent(MouseButtonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_MIDDLE));
    EXPECT_EQ(Mouse_GrabInput(), 5) << "another button clears the pressed-last flags only";
    HandleEvent(MouseButtonEvent(SDL_MOUSEBUTTONUP, SDL_BUTTON_MIDDLE));
    EXPECT_EQ(Mouse_GrabInput(), 0);

    HandleEvent(MouseMotionEvent(321, 123));
    EXPECT_EQ(std::make_pair(Keys_GrabMouseX(), Keys_GrabMouseY()), std::make_pair(321, 123));
    HandleEvent(KeyEvent(SDLK_RETURN, 13));
    Simple(SDL_KEYUP);
    EXPECT_TRUE(Keys_GrabInput(13) && SDL_Keys.keyReleased) << "a key counts as down until another key is pressed";
    HandleEvent(KeyEvent(SDLK_a, 'a'));
    EXPECT_FALSE(Keys_GrabInput(13) || SDL_Keys.keyReleased);
}

TEST_F(Events, SpaceAndClicksLaunchOnlyDuringPlayWithTheConsoleUp) {
    const struct {
        const char* menu;
        bool console;
        SDL_Event event;
        bool launches;
    } cases[] = {{"1", false, KeyEvent(SDLK_SPACE, ' '), false},
                 {"0", true, KeyEvent(SDLK_SPACE, ' '), false},
                 {"0", true, MouseButtonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT), false},
                 {"0", false, KeyEvent(SDLK_a, 'a'), false},
                 {"0", false, MouseButtonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT), true},
                 {"0", false, KeyEvent(SDLK_SPACE, ' '), true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        Cvar_Set("m_menu", c.menu);
        AppStatus.consoleVisible = c.console;
        Game_Stats.ballLaunched = false;
        HandleEvent(c.event);
        EXPECT_EQ(Game_Stats.ballLaunched, c.launches);
    }
}

TEST_F(Events, FocusMasksQuitAndTheFirstFrameBackFromIconified) {
    Active(SDL_APPACTIVE | SDL_APPINPUTFOCUS, 0);
    EXPECT_TRUE(!AppStatus.active && !AppStatus.inputFocus && AppStatus.mouseFocus);
    Active(SDL_APPACTIVE, 1);
    EXPECT_TRUE(AppStatus.active && !AppStatus.inputFocus) << "each flag follows only its own bit";

    isProgramLooping = true;
    Simple(SDL_USEREVENT);
    EXPECT_TRUE(isProgramLooping);
    Simple(SDL_QUIT);
    EXPECT_FALSE(isProgramLooping);

    DrivenClock_Start();
    Timer.start();
    Active(SDL_APPACTIVE, 0);
    DrivenClock_Advance(60 * 1000000);  // a minute away
    Active(SDL_APPACTIVE, 1);
    DrivenClock_Advance(20000);
    Timer.update();
    EXPECT_NEAR(Timer.get_ticks(), 0.02f, 1e-4f) << "the first frame back counts from the return, not one long frame";
    Active(SDL_APPINPUTFOCUS, 1);
    DrivenClock_Advance(30000);
    Timer.update();
    EXPECT_NEAR(Timer.get_ticks(), 0.03f, 1e-4f) << "focus changes alone do not touch the timer";
}

TEST_F(Events, PlayPausesWhenTheKeyboardOrTheWindowIsLostAndNothingElseChanges) {
    const struct {
        bool mediaLoaded;
        const char* screen;  // the screen before; "" for play
        SDL_Event event;
        const char* after;  // screen and m_menu
    } cases[] = {
        {true, "", ActiveEvent(SDL_APPINPUTFOCUS, 0), "pause 1"},
        {true, "", ActiveEvent(SDL_APPACTIVE, 0), "pause 1"},
        {true, "", KeyEvent(SDLK_ESCAPE, 27), "pause 1"},  // as Escape does
        {true, "", ActiveEvent(SDL_APPMOUSEFOCUS, 0), "main 0"},
        {true, "", ActiveEvent(SDL_APPINPUTFOCUS | SDL_APPACTIVE, 1), "main 0"},
        {true, "pause", ActiveEvent(SDL_APPINPUTFOCUS, 1), "pause 1"},  // coming back does not resume
        {true, "options", ActiveEvent(SDL_APPINPUTFOCUS, 0), "options 1"},
        {false, "", ActiveEvent(SDL_APPINPUTFOCUS, 0), "main 0"},  // loading
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        g_MediaLoaded = c.mediaLoaded;
        Menu_Screen(*c.screen ? c.screen : "main");
        Cvar_Set("m_menu", *c.screen ? "1" : "0");
        HandleEvent(c.event);
        EXPECT_EQ(Menu_Screen_Get() + " " + Cvar_Get("m_menu"), c.after);
    }
}

// Presses that begin and end between two frames, fed straight to the
// handlers in the order the main loop would, then read as one frame would.
namespace {
class Latch : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        SDL_EnableUNICODE(1);  // the window turns it on in the game
    }
    static void Tap(Uint8 button, bool release = true) {
        Input_MouseButtonDown(MouseButtonEvent(SDL_MOUSEBUTTONDOWN, button));
        if (release)
            Input_MouseButtonUp();
    }
    static void Type(const std::string& keys, bool release = true) {
        for (char c : keys) {
            Input_KeyDown(KeyEvent(SDLKey(c), Uint16(c)));
            SDL_Keys.keyReleased = false;  // as the main loop does after every key-down
            if (release)
                Input_KeyUp(KeyEvent(SDLKey(c), 0, SDL_KEYUP));
        }
    }
    static int NextFrame() {  // ends this frame; what the next one reads
        Input_EndFrame();
        return Mouse_GrabInput();
    }
};
}  // namespace

TEST_F(Latch, ATapBetweenFramesIsSeenByExactlyOneFrame) {
    Tap(SDL_BUTTON_LEFT);
    EXPECT_EQ(Mouse_GrabInput(), 1) << "the tap's frame sees the press";
    EXPECT_EQ(Mouse_GrabInput(), 1) << "reading does not take it";
    EXPECT_EQ(NextFrame(), 0) << "and the next frame sees the release";

    // A widget that takes the tap hides it from later widgets, as with a held press.
    Tap(SDL_BUTTON_RIGHT);
    EXPECT_EQ(Mouse_GrabInput(), 2);
    SDL_Mouse.buttonDown = false;
    EXPECT_EQ(Mouse_GrabInput(), 5);
    EXPECT_EQ(NextFrame(), 0);

    // Two taps before one frame make one click, and nothing is left held.
    Tap(SDL_BUTTON_LEFT);
    Tap(SDL_BUTTON_LEFT);
    EXPECT_EQ(Mouse_GrabInput(), 1);
    EXPECT_EQ(NextFrame(), 0);

    // A tap then a press that stays down: the held press reads as held.
    Tap(SDL_BUTTON_RIGHT);
    Tap(SDL_BUTTON_LEFT, false);
    EXPECT_EQ(Mouse_GrabInput(), 1);
    EXPECT_EQ(NextFrame(), 4) << "the tapped right button is not left held";
    Input_MouseButtonUp();
    EXPECT_EQ(Mouse_GrabInput(), 0) << "a release after a seen press acts at once";
}

TEST_F(Latch, KeysTypedBeforeAFrameAreEachTypedOnceInOrderAndTheQueueIsBounded) {
    EXPECT_EQ(Key_Input("", 12), "") << "the zeroed start-up record types nothing";
    Type("ab");
    Type("c", false);  // still held
    std::string text;
    for (int i = 0; i < 4; i++)
        text = Key_Input(text, 12);
    EXPECT_EQ(text, "abc") << "every key once";
    EXPECT_TRUE(Keys_GrabInput(SDLK_c)) << "the last key-down still counts as down";
    for (int frame = 0; frame < 3; frame++) {
        Input_EndFrame();
        text = Key_Input(text, 12);
    }
    EXPECT_EQ(text, "abc") << "holding a key types it once";
    Input_EndFrame();

    // Left for the next frame when this frame's text entry took only one.
    Type("de", false);
    text = Key_Input(text, 12);
    Input_EndFrame();
    EXPECT_EQ(Key_Input(text, 12), "abcde");
    Input_EndFrame();

    // Keys no text entry asked for during their frame are dropped, not typed later.
    Type("f");
    Input_EndFrame();
    EXPECT_EQ(Key_Input("", 12), "");

    // The queue refuses keys past its bound, with one log line.
    Type("abcdefghijklmnopqrst");  // KEY_QUEUE_SIZE + 4
    text.clear();
    for (int i = 0; i < KEY_QUEUE_SIZE + 4; i++)
        text = Key_Input(text, 100);
    EXPECT_EQ(text, "abcdefghijklmnop");
    EXPECT_EQ(ConsoleLinesOldestFirst(), std::vector<std::string>{" -- WARNING: key queue full, extra keys dropped"});
}
