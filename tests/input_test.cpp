// The event table and the input records the rest of the game reads.
#include <gtest/gtest.h>

#include "app/events.h"
#include "console/cvar.h"
#include "game/gamestats.h"
#include "menu/input.h"
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
