// What the game asks of whichever SDL 1.2 library it runs on (the classic
// one it is built against, or sdl12-compat in its place, which CI also runs
// this suite on): the key names its console and text boxes compare against,
// and the pointer warp.
#include <gtest/gtest.h>

#include <SDL/SDL.h>

#include <chrono>
#include <thread>

#include "gl_test_env.h"
#include "menu/input.h"

namespace {
class GLSdlLibrary : public GLTest {};
} // namespace

TEST_F(GLSdlLibrary, NamesKeysAsTheGameExpects) {
    ASSERT_TRUE(GLTest_Window());
    const std::pair<SDLKey, const char*> names[] = {
        {SDLK_BACKQUOTE, "`"},      {SDLK_SPACE, "space"},         {SDLK_RETURN, "return"},
        {SDLK_BACKSPACE, "backspace"}, {SDLK_ESCAPE, "escape"},     {SDLK_UP, "up"},
        {SDLK_PAGEUP, "page up"},   {SDLK_PAGEDOWN, "page down"},  {SDLK_LSHIFT, "left shift"},
        {SDLK_F1, "f1"},            {SDLK_a, "a"},                 {SDLK_1, "1"},
    };
    for (const auto& [sym, name] : names)
        EXPECT_EQ(Keys_KeyName(sym), name) << "key " << int(sym);
}

TEST_F(GLSdlLibrary, WarpsThePointerOverTheWindow) {
    ASSERT_TRUE(GLTest_Window());
    for (const auto& [x, y] : {std::pair{100, 60}, std::pair{GLTEST_SIZE / 2, GLTEST_SIZE / 2}}) {
        Mouse_Warp(x, y);
        int seenX = -1, seenY = -1;
        // The X server answers with a motion event; give it a moment.
        for (int i = 0; i < 50 && (seenX != x || seenY != y); i++) {
            SDL_PumpEvents();
            SDL_GetMouseState(&seenX, &seenY);
            if (seenX != x || seenY != y)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        EXPECT_EQ(seenX, x);
        EXPECT_EQ(seenY, y);
    }
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
    }
}
