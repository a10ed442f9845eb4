// The console's commands and its keyboard handling. Nothing is drawn, but SDL
// names keys only once its video part is up: the tests share the GL window.
#include <gtest/gtest.h>

#include <cctype>
#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/cmd.h"
#include "common/console.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "console/cconsole.h"
#include "gl_test_env.h"

namespace {

using Lines = std::vector<std::string>;

class GLConsole : public CvarTest {
protected:
    void SetUp() override {
        CvarTest::SetUp();
        ASSERT_TRUE(GLTest_Window());  // also turns Unicode on, which getCharValue insists on
        InitErrorLog();                // log.txt in the scratch folder
        Con_ResetBuffer();             // no banner: the tests compare whole line lists
        isProgramLooping = true;
        AppStatus.consoleVisible = true;
    }
    void Press(SDLKey sym, Uint16 unicode = 0, Uint8 type = SDL_KEYDOWN) {
        SDL_Event e = KeyEvent(sym, unicode, type);
        console.getInput(&e);
    }
    // Each character as its key: letters lower-case, '?' as shifted '/'; '\b', '\r', ' ', '`' are their keys.
    void Type(const std::string& text) {
        for (char c : text)
            Press(c == '?' ? SDLK_SLASH : SDLKey(std::tolower(static_cast<unsigned char>(c))), Uint16(c));
    }
    ScratchDir scratch;
    CConsole console;
};

TEST_F(GLConsole, LineEditingKeepsAtMostOneHundredAndOnePrintableCharacters) {
    Type("\ra\b\b\r");  // backspace on an empty line is harmless
    EXPECT_TRUE(AppStatus.consoleLines.empty()) << "Return on an empty line runs and echoes nothing";
    EXPECT_TRUE(console.History().empty());

    Type(std::string(101, 'x'));
    EXPECT_EQ(console.getConLine(), std::string(101, 'x'));
    Type("y ");
    EXPECT_EQ(console.getConLine(), std::string(100, 'x') + "y")
        << "the next key first cuts back to 100; a blank goes on and is cut at once";

    // Keys that type nothing, or a control character, leave nothing behind.
    Type("\b\b");
    Press(SDLK_PAUSE);
    Press(SDLK_KP_ENTER, 13);
    Press(SDLK_a, 1);  // ctrl+a
    EXPECT_EQ(console.getConLine(), std::string(99, 'x'));
    Press(SDLK_e, 233);
    EXPECT_EQ(console.getConLine().back(), '?') << "characters beyond ASCII type '?'";
}

TEST_F(GLConsole, BackquoteTogglesEvenWhileTypingAndNeverTypesItself) {
    AppStatus.consoleVisible = false;
    Type("a");
    EXPECT_EQ(console.getConLine(), "") << "a hidden console takes no keys";
    Type("`ab`");
    EXPECT_FALSE(AppStatus.consoleVisible);
    Type("\r");
    EXPECT_TRUE(console.History().empty()) << "Return is not taken while hidden";
    Type("`");
    EXPECT_TRUE(AppStatus.consoleVisible);
    EXPECT_EQ(console.getConLine(), "ab");

    Press(SDLK_BACKQUOTE, '`', SDL_KEYUP);
    console.getInput(nullptr);
    EXPECT_TRUE(AppStatus.consoleVisible) << "a key release or no event is not a key press";
}

TEST_F(GLConsole, UpRecallsEachLineOnceAndPageKeysScrollExactly) {
    Type("a\rb\r");
    for (const char* expected : {"b", "a", "a"}) {  // then the history is exhausted
        Press(SDLK_UP);
        EXPECT_EQ(console.getConLine(), expected);
    }
    Type("\bc\r");
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "a") << "recall goes on from where it stopped, not from the newest line";
    Type("\b");
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "") << "every entry has been recalled";

    const struct {
        SDLKey key;
        int times, lines, pixels;
    } scrolls[] = {{SDLK_PAGEDOWN, 1, 0, 60},  // below zero restores the unscrolled layout
                   {SDLK_PAGEUP, 3, 3, 0},
                   {SDLK_PAGEDOWN, 1, 2, 20},
                   {SDLK_PAGEDOWN, 2, 0, 60}};
    for (const auto& s : scrolls) {
        for (int i = 0; i < s.times; i++)
            Press(s.key);
        EXPECT_EQ(std::make_pair(console.ScrollLines(), console.ScrollPixels()), std::make_pair(s.lines, s.pixels));
    }
    EXPECT_EQ(console.getConLine(), "") << "scroll keys type nothing";
}

TEST_F(GLConsole, ClearKeepsTheCountAndDumpWritesNewestFirstBetweenMarkers) {
    Cmd_Init_Commands();
    Type("clear\rdump\r");
    EXPECT_EQ(AppStatus.consoleLineCount, 8) << "the six registrations and both echoes still count";
    Con_Print("newest");
    EXPECT_TRUE(Cmd_RunCommand("dump"));
    EXPECT_EQ(ReadFile("dump.txt"),
              "-- Console Dump -----------------\nnewest\ndump\n\n-- ex dmp -----------------------");
}

TEST_F(GLConsole, BuiltInsRegisterInOrderAndIgnoreArgumentsAndBumpFramesARule) {
    AppStatus.verboseLog = true;
    Con_Bump();
    EXPECT_EQ(ConsoleLinesOldestFirst(), (Lines{"", " =================================", ""}));
    EXPECT_NE(LogText().find("  =================================\n"), std::string::npos);
    Con_ResetBuffer();
    EXPECT_TRUE(Cmd_Init_Commands());
    Lines names, registered;
    for (const S_Cmd_List& command : CMD)
        names.push_back(command.name), registered.push_back("registed command:" + command.name);
    EXPECT_EQ(names, (Lines{"quit", "clear", "dump", "version", "baller", "skip"}));
    EXPECT_EQ(ConsoleLinesOldestFirst(), registered);

    EXPECT_TRUE(Cmd_RunCommand("?baller") && Cmd_RunCommand("version"));
    EXPECT_EQ(AppStatus.consoleLines.front(), "name: baller  description: gives you 999 lives")
        << "the help line is the newest: version prints nothing";
    EXPECT_EQ(Game_Stats.lives, 3) << "help does not run the command";

    EXPECT_TRUE(Cmd_RunCommand("baller?") && Cmd_RunCommand("/skip/ the level"));
    EXPECT_EQ(Game_Stats.lives, 999);
    EXPECT_TRUE(Game_Stats.skipLevel && isProgramLooping);
    EXPECT_TRUE(Cmd_RunCommand("quit now"));
    EXPECT_FALSE(isProgramLooping);
}

TEST_F(GLConsole, UnknownWordsAndFailingHandlersAreLoggedAndTheConsoleGoesOn) {
    static bool unnamedRan;
    unnamedRan = false;
    Cmd_AddCommand(
        "", [] { unnamedRan = true; }, "a record with no name");
    Cmd_AddCommand(
        "boom", [] { throw std::runtime_error("broken"); }, "throws");
    Cmd_AddCommand(
        "thud", [] { throw 7; }, "throws a non-exception");
    Cmd_AddCommand("none", nullptr, "no handler");
    Cmd_Init_Commands();
    for (const char* line : {"boom with args", "thud", "none"}) {
        EXPECT_FALSE(Cmd_RunCommand(line));
        EXPECT_NE(LogText().find(std::string("ERROR, couldn't run func ") + line), std::string::npos);
    }
    EXPECT_TRUE(Cmd_RunCommand("?boom")) << "its help still shows";

    // "QUIT": names are case-sensitive.
    for (const char* line : {"QUIT", "/", "?",
                             "//?"
                             "?/ quit",
                             "", "   ", "?/"}) {
        EXPECT_FALSE(Cmd_RunCommand(line)) << "'" << line << "'";
        EXPECT_NE(LogText().find(std::string("Unkown Command!  ") + line), std::string::npos) << "'" << line << "'";
    }
    EXPECT_FALSE(unnamedRan) << "a word of only '/' and '?' names nothing";
    EXPECT_TRUE(isProgramLooping);

    // The same words typed and submitted: echoed, then reported.
    Con_ResetBuffer();
    Type("??\rboom\r");
    EXPECT_EQ(ConsoleLinesOldestFirst(), (Lines{"??", "Unkown Command!  ??", "boom", "ERROR, couldn't run func boom"}));
    Type("quit\r");
    EXPECT_FALSE(isProgramLooping);
}

TEST_F(GLConsole, SubmittedLinesGoToACvarBeforeTheCommands) {
    Cmd_Init_Commands();
    static int quitCalls;
    quitCalls = 0;
    // A cvar and a command of the same name: the cvar wins.
    Cvar_Register(S_Cvar{CVAR_TEMP, "quit", "0", "shadows the command", "0"});
    Cmd_AddCommand(
        "volume", [] { quitCalls++; }, "shadowed by the cvar");
    Con_ResetBuffer();
    Type("volume 7\rquit 1\r");
    EXPECT_EQ(Cvar_Get("volume") + " " + Cvar_Get("quit"), "7 1");
    EXPECT_TRUE(isProgramLooping && quitCalls == 0) << "neither command ran";
    EXPECT_EQ(ConsoleLinesOldestFirst(),
              (Lines{"volume 7", "cvar \"volume\" has been set to 7", "quit 1", "cvar \"quit\" has been set to 1"}));
    EXPECT_EQ(console.History(), (std::deque<std::string>{"quit 1", "volume 7"}));
}

}  // namespace
