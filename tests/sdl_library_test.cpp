// What the game asks of whichever SDL 1.2 library it runs on (the classic
// one it is built against, or sdl12-compat in its place, which CI also runs
// this suite on): the key names its console and text boxes compare against.
#include "gl_test_env.h"
#include "input/input.h"

using GLSdlLibrary = GLTest;

TEST_F(GLSdlLibrary, NamesKeysAsTheGameExpects) {
    const std::pair<SDLKey, const char*> names[] = {
        {SDLK_BACKQUOTE, "`"},
        {SDLK_SPACE, "space"},
        {SDLK_RETURN, "return"},
        {SDLK_BACKSPACE, "backspace"},
        {SDLK_ESCAPE, "escape"},
        {SDLK_UP, "up"},
        {SDLK_PAGEUP, "page up"},
        {SDLK_PAGEDOWN, "page down"},
        {SDLK_LSHIFT, "left shift"},
        {SDLK_F1, "f1"},
        {SDLK_a, "a"},
        {SDLK_1, "1"},
    };
    for (const auto& [sym, name] : names)
        EXPECT_EQ(Keys_KeyName(sym), name) << "key " << int(sym);
}
