// The event table and the input records the rest of the game reads.
#include <gtest/gtest.h>

#include "app/events.h"
#include "app/timer.h"
#include "console/cvar.h"
#include "game/gamestats.h"
#include "menu/input.h"
#include "platform/clock.h"
#include "test_support.h"

namespace {
class Events : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        RegisterAllCvars();
    }

    static SDL_Event Key(SDLKey sym, Uint16 unicode = 0) {
        SDL_Event e{};
        e.type = SDL_KEYDOWN;
        e.key.type = SDL_KEYDOWN;
        e.key.keysym.sym = sym;
        e.key.keysym.unicode = unicode;
        return e;
    }
    static SDL_Event Button(Uint8 type, Uint8 button) {
        SDL_Event e{};
        e.type = type;
        e.button.type = type;
        e.button.button = button;
        return e;
    }
    static SDL_Event Simple(Uint8 type) {
        SDL_Event e{};
        e.type = type;
        return e;
    }
};
} // namespace

TEST_F(Events, HoldingTheLeftButtonIsAnEdgeThenALevel) {
    HandleEvent(Button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT));
    EXPECT_EQ(Mouse_GrabInput(), 1);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 4);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 4);
    HandleEvent(Button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT));
    EXPECT_EQ(Mouse_GrabInput(), 0);

    HandleEvent(Button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT));
    EXPECT_EQ(Mouse_GrabInput(), 2);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 5);
    HandleEvent(Button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_MIDDLE));
    EXPECT_EQ(Mouse_GrabInput(), 5) << "another button clears the pressed-last flags only";
    HandleEvent(Button(SDL_MOUSEBUTTONUP, SDL_BUTTON_MIDDLE));
    EXPECT_EQ(Mouse_GrabInput(), 0);
}

TEST_F(Events, MouseMotionAndKeysAreRemembered) {
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.type = SDL_MOUSEMOTION;
    motion.motion.x = 321;
    motion.motion.y = 123;
    HandleEvent(motion);
    EXPECT_EQ(Keys_GrabMouseX(), 321);
    EXPECT_EQ(Keys_GrabMouseY(), 123);

    HandleEvent(Key(SDLK_RETURN, 13));
    HandleEvent(Simple(SDL_KEYUP));
    EXPECT_TRUE(Keys_GrabInput(13)) << "a key counts as down until another key is pressed";
    EXPECT_TRUE(SDL_Keys.keyReleased);
    HandleEvent(Key(SDLK_a, 'a'));
    EXPECT_FALSE(Keys_GrabInput(13));
    EXPECT_FALSE(SDL_Keys.keyReleased);
}

TEST_F(Events, SpaceAndClicksLaunchOnlyDuringPlayWithTheConsoleUp) {
    Cvar_Set("m_menu", "1");
    HandleEvent(Key(SDLK_SPACE, ' '));
    EXPECT_FALSE(Game_Stats.ballLaunched);

    Cvar_Set("m_menu", "0");
    AppStatus.consoleVisible = true;
    HandleEvent(Key(SDLK_SPACE, ' '));
    HandleEvent(Button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT));
    EXPECT_FALSE(Game_Stats.ballLaunched);

    AppStatus.consoleVisible = false;
    HandleEvent(Key(SDLK_a, 'a'));
    EXPECT_FALSE(Game_Stats.ballLaunched);
    HandleEvent(Button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT));
    EXPECT_TRUE(Game_Stats.ballLaunched);
    Game_Stats.ballLaunched = false;
    HandleEvent(Key(SDLK_SPACE, ' '));
    EXPECT_TRUE(Game_Stats.ballLaunched);
}

TEST_F(Events, FocusMasksAndQuit) {
    SDL_Event active{};
    active.type = SDL_ACTIVEEVENT;
    active.active.gain = 0;
    active.active.state = SDL_APPACTIVE | SDL_APPINPUTFOCUS;
    HandleEvent(active);
    EXPECT_FALSE(AppStatus.active);
    EXPECT_FALSE(AppStatus.inputFocus);
    EXPECT_TRUE(AppStatus.mouseFocus);
    active.active.gain = 1;
    active.active.state = SDL_APPACTIVE;
    HandleEvent(active);
    EXPECT_TRUE(AppStatus.active);
    EXPECT_FALSE(AppStatus.inputFocus);

    isProgramLooping = true;
    HandleEvent(Simple(SDL_USEREVENT));
    EXPECT_TRUE(isProgramLooping);
    HandleEvent(Simple(SDL_QUIT));
    EXPECT_FALSE(isProgramLooping);
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
    static void Down(Uint8 button) {
        SDL_Event e{};
        e.type = SDL_MOUSEBUTTONDOWN;
        e.button.button = button;
        Input_MouseButtonDown(e);
    }
    static void KeyDown(SDLKey sym, Uint16 unicode) {
        SDL_Event e{};
        e.type = SDL_KEYDOWN;
        e.key.keysym.sym = sym;
        e.key.keysym.unicode = unicode;
        Input_KeyDown(e);
        SDL_Keys.keyReleased = false;  // as the main loop does after every key-down
    }
};
} // namespace

TEST_F(Latch, ATapBetweenFramesIsSeenByExactlyOneFrame) {
    Down(SDL_BUTTON_LEFT);
    Input_MouseButtonUp();
    EXPECT_EQ(Mouse_GrabInput(), 1) << "the tap's frame sees the press";
    EXPECT_EQ(Mouse_GrabInput(), 1) << "reading does not take it";
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 0) << "and the next frame sees the release";
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 0);

    // A widget that takes the tap hides it from later widgets, as with a held press.
    Down(SDL_BUTTON_RIGHT);
    Input_MouseButtonUp();
    EXPECT_EQ(Mouse_GrabInput(), 2);
    SDL_Mouse.buttonDown = false;
    EXPECT_EQ(Mouse_GrabInput(), 5);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 0);

    // Two taps before one frame make one click, and nothing is left held.
    Down(SDL_BUTTON_LEFT);
    Input_MouseButtonUp();
    Down(SDL_BUTTON_LEFT);
    Input_MouseButtonUp();
    EXPECT_EQ(Mouse_GrabInput(), 1);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 0);

    // A tap then a press that stays down: the held press reads as held.
    Down(SDL_BUTTON_RIGHT);
    Input_MouseButtonUp();
    Down(SDL_BUTTON_LEFT);
    EXPECT_EQ(Mouse_GrabInput(), 1);
    Input_EndFrame();
    EXPECT_EQ(Mouse_GrabInput(), 4) << "the tapped right button is not left held";
    Input_MouseButtonUp();
    EXPECT_EQ(Mouse_GrabInput(), 0) << "a release after a seen press acts at once";
}

TEST_F(Latch, KeysTypedBeforeAFrameAreEachTypedOnceInOrder) {
    EXPECT_EQ(Key_Input("", 12), "") << "the zeroed start-up record types nothing";

    KeyDown(SDLK_a, 'a');
    Input_KeyUp();
    KeyDown(SDLK_b, 'b');
    Input_KeyUp();
    KeyDown(SDLK_c, 'c');  // still held
    std::string text = Key_Input("", 12);
    text = Key_Input(text, 12);
    text = Key_Input(text, 12);
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(Key_Input(text, 12), "abc") << "every key once";
    EXPECT_TRUE(Keys_GrabInput(SDLK_c)) << "the last key-down still counts as down";
    Input_EndFrame();
    for (int frame = 0; frame < 3; frame++) {
        text = Key_Input(text, 12);
        Input_EndFrame();
    }
    EXPECT_EQ(text, "abc") << "holding a key types it once";

    // Left for the next frame when this frame's text entry took only one.
    KeyDown(SDLK_d, 'd');
    KeyDown(SDLK_e, 'e');
    text = Key_Input(text, 12);
    Input_EndFrame();
    text = Key_Input(text, 12);
    EXPECT_EQ(text, "abcde");
    Input_EndFrame();

    // Keys no text entry asked for during their frame are dropped, not typed later.
    KeyDown(SDLK_f, 'f');
    Input_KeyUp();
    Input_EndFrame();
    EXPECT_EQ(Key_Input(text, 12), "abcde");
}

TEST_F(Latch, TheKeyQueueRefusesKeysPastItsBoundWithOneLogLine) {
    for (int i = 0; i < KEY_QUEUE_SIZE + 4; i++) {
        KeyDown(SDLK_a, Uint16('a' + i % 26));
        Input_KeyUp();
    }
    std::string text;
    for (int i = 0; i < KEY_QUEUE_SIZE + 4; i++)
        text = Key_Input(text, 100);
    EXPECT_EQ(text, "abcdefghijklmnop");
    int warnings = 0;
    for (const std::string& line : ConsoleLinesOldestFirst())
        warnings += line.find("key queue full") != std::string::npos;
    EXPECT_EQ(warnings, 1);
}

namespace {
uint64_t g_Clock = 0;
void TestClock(UnsignedWide* out) {
    out->lo = uint32_t(g_Clock);
    out->hi = uint32_t(g_Clock >> 32);
}
} // namespace

TEST_F(Events, ComingBackFromIconifiedIsNotOneLongFrame) {
    SetMicrosecondsSource(TestClock);
    g_Clock = 1000000;
    Timer.start();
    SDL_Event active{};
    active.type = SDL_ACTIVEEVENT;
    active.active.state = SDL_APPACTIVE;
    active.active.gain = 0;
    HandleEvent(active);
    g_Clock += 60 * 1000000;  // a minute away
    active.active.gain = 1;
    HandleEvent(active);
    g_Clock += 20000;
    Timer.update();
    EXPECT_NEAR(Timer.get_ticks(), 0.02f, 1e-4f) << "the first frame back counts from the return";

    // Focus changes alone do not touch the timer.
    active.active.state = SDL_APPINPUTFOCUS;
    HandleEvent(active);
    g_Clock += 30000;
    Timer.update();
    EXPECT_NEAR(Timer.get_ticks(), 0.03f, 1e-4f);
}
