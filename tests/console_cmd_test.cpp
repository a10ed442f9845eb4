// The console's commands and its keyboard handling. Key events are built by
// hand the way SDL 1.2 delivers them; nothing is drawn, but SDL names keys
// only once its video part is up, so the tests share the hidden GL window.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <deque>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "app/appstatus.h"
#include "app/log.h"
#include "console/cconsole.h"
#include "console/cmd.h"
#include "console/console.h"
#include "console/cvar.h"
#include "game/gamestats.h"
#include "gl_test_env.h"

namespace {

class GLConsole : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        ASSERT_TRUE(GLTest_Window());
        Cmd_Reset();
        Console_Reset();
        SDL_EnableUNICODE(1);  // as the window set-up leaves it; getCharValue insists
        InitErrorLog();        // log.txt in the scratch folder
        RegisterAllCvars();
        Con_ResetBuffer();     // no banner: the tests compare whole line lists
        isProgramLooping = true;
    }
    void TearDown() override {
        Cmd_Reset();
        Console_Reset();
        ShellTest::TearDown();
    }

    static SDL_Event Key(SDLKey sym, Uint16 unicode = 0) {
        SDL_Event e{};
        e.type = SDL_KEYDOWN;
        e.key.type = SDL_KEYDOWN;
        e.key.keysym.sym = sym;
        e.key.keysym.unicode = unicode;
        return e;
    }
    void Press(SDLKey sym, Uint16 unicode = 0) {
        SDL_Event e = Key(sym, unicode);
        console.getInput(&e);
    }
    // Each character as its key: letters by their lower-case key, '?' as
    // shifted '/', a blank as the space key (which SDL reports with 32).
    void Type(const std::string& text) {
        for (char c : text) {
            SDLKey sym = c == '?' ? SDLK_SLASH : SDLKey(std::tolower(static_cast<unsigned char>(c)));
            Press(sym, Uint16(c));
        }
    }
    void Submit(const std::string& text) {
        Type(text);
        Press(SDLK_RETURN, 13);
    }
    static std::string LogText() {
        std::fflush(ErrorLog);
        return ReadFile("log.txt");
    }

    ScratchDir scratch;
    CConsole console;
};

TEST_F(GLConsole, ReturnOnAnEmptyLineDoesNothing) {
    AppStatus.consoleVisible = true;
    Press(SDLK_RETURN, 13);
    Type("a");
    Press(SDLK_BACKSPACE, 8);
    Press(SDLK_BACKSPACE, 8);  // backspace on an empty line is harmless
    Press(SDLK_RETURN, 13);
    EXPECT_TRUE(AppStatus.consoleLines.empty());
    EXPECT_EQ(AppStatus.consoleLineCount, 0);
    EXPECT_TRUE(console.History().empty());
    EXPECT_EQ(LogText().find("Unkown"), std::string::npos) << "nothing was run";
}

TEST_F(GLConsole, UpRecallsEachLineOnceAndTheIndexNeverRestarts) {
    AppStatus.consoleVisible = true;
    Submit("a");
    Submit("b");
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "b");
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "a");
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "a") << "history exhausted";

    Press(SDLK_BACKSPACE, 8);
    Submit("c");
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "a") << "recall goes on from where it stopped, not from the newest line";
    Press(SDLK_BACKSPACE, 8);
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "") << "every entry has been recalled";

    EXPECT_TRUE(CConsole::NextCursorShown());  // one frame drawn: the next hides the cursor
    Console_Reset();
    Press(SDLK_UP);
    EXPECT_EQ(console.getConLine(), "c") << "the reset rewinds the recall";
    EXPECT_TRUE(CConsole::NextCursorShown()) << "and restarts the cursor phase";
}

TEST_F(GLConsole, PageUpAndDownScrollAndResetExactly) {
    AppStatus.consoleVisible = true;
    auto scroll = [this] { return std::make_pair(console.ScrollLines(), console.ScrollPixels()); };
    EXPECT_EQ(scroll(), std::make_pair(0, 60));
    Press(SDLK_PAGEDOWN);
    EXPECT_EQ(scroll(), std::make_pair(0, 60)) << "below zero restores the unscrolled layout";
    for (int i = 0; i < 3; i++)
        Press(SDLK_PAGEUP);
    EXPECT_EQ(scroll(), std::make_pair(3, 0));
    Press(SDLK_PAGEDOWN);
    EXPECT_EQ(scroll(), std::make_pair(2, 20));
    Press(SDLK_PAGEDOWN);
    Press(SDLK_PAGEDOWN);
    EXPECT_EQ(scroll(), std::make_pair(0, 60));
    Press(SDLK_PAGEDOWN);
    EXPECT_EQ(scroll(), std::make_pair(0, 60));
    EXPECT_EQ(console.getConLine(), "") << "scroll keys type nothing";
}

TEST_F(GLConsole, ClearThenDumpWritesTheMarkersAroundDump) {
    Cmd_Init_Commands();
    AppStatus.consoleVisible = true;
    Submit("clear");
    const int countAfterClear = AppStatus.consoleLineCount;
    Submit("dump");
    EXPECT_EQ(ReadFile("dump.txt"),
              "-- Console Dump -----------------\n"
              "dump\n"
              "\n-- ex dmp -----------------------");
    EXPECT_EQ(AppStatus.consoleLineCount, countAfterClear + 1) << "clear keeps the count";
    EXPECT_GT(countAfterClear, 6) << "the six registrations and the echo of clear still count";

    Con_Print("newest");
    EXPECT_TRUE(Cmd_RunCommand("dump"));
    EXPECT_EQ(ReadFile("dump.txt"), "-- Console Dump -----------------\nnewest\ndump\n\n-- ex dmp -----------------------");
}

TEST_F(GLConsole, BuiltInsRegisterInOrderAndIgnoreArguments) {
    EXPECT_TRUE(Cmd_Init_Commands());
    const std::vector<std::string> names = {"quit", "clear", "dump", "version", "baller", "skip"};
    ASSERT_EQ(CMD.size(), names.size());
    for (size_t i = 0; i < names.size(); i++) {
        EXPECT_EQ(CMD[i].name, names[i]);
        EXPECT_EQ(CMD[i].enabled, 1);
        EXPECT_EQ(ConsoleLinesOldestFirst()[i], "registed command:" + names[i]);
    }

    EXPECT_TRUE(Cmd_RunCommand("?baller"));
    EXPECT_EQ(AppStatus.consoleLines.front(), "name: baller  description: gives you 999 lives");
    EXPECT_EQ(Game_Stats.lives, 3) << "help does not run the command";

    const size_t lines = AppStatus.consoleLines.size();
    EXPECT_TRUE(Cmd_RunCommand("version"));
    EXPECT_EQ(AppStatus.consoleLines.size(), lines) << "version prints nothing";

    EXPECT_TRUE(Cmd_RunCommand("baller?"));
    EXPECT_EQ(Game_Stats.lives, 999);
    EXPECT_TRUE(Cmd_RunCommand("/skip/ the level"));
    EXPECT_TRUE(Game_Stats.skipLevel);
    EXPECT_TRUE(isProgramLooping);
    EXPECT_TRUE(Cmd_RunCommand("quit now"));
    EXPECT_FALSE(isProgramLooping);
}

TEST_F(GLConsole, UnknownWordsAreLoggedAndNeverCrash) {
    Cmd_Init_Commands();
    static bool unnamedRan;
    unnamedRan = false;
    Cmd_AddCommand("", [] { unnamedRan = true; }, "a record with no name");

    EXPECT_FALSE(Cmd_RunCommand("QUIT"));
    EXPECT_TRUE(isProgramLooping) << "names are case-sensitive";
    EXPECT_NE(LogText().find("Unkown Command!  QUIT"), std::string::npos);

    for (const char* line : {"/", "?", "//?" "?/ quit", "", "   ", "?/"}) {
        EXPECT_FALSE(Cmd_RunCommand(line)) << "'" << line << "'";
        EXPECT_NE(LogText().find(std::string("Unkown Command!  ") + line), std::string::npos) << "'" << line << "'";
    }
    EXPECT_FALSE(unnamedRan) << "a word of only '/' and '?' names nothing";
    EXPECT_TRUE(isProgramLooping);

    // The same words typed and submitted: echoed, then reported.
    AppStatus.consoleVisible = true;
    Con_ResetBuffer();
    Submit("??");
    EXPECT_EQ(ConsoleLinesOldestFirst(), (std::vector<std::string>{"??", "Unkown Command!  ??"}));
}

TEST_F(GLConsole, SubmittedLinesGoToACvarBeforeTheCommands) {
    Cmd_Init_Commands();
    static int quitCalls;
    quitCalls = 0;
    // A cvar and a command of the same name: the cvar wins.
    Cvar_Register(S_Cvar{CVAR_TEMP, "quit", "0", "shadows the command", "0"});
    Cmd_AddCommand("volume", [] { quitCalls++; }, "shadowed by the cvar");
    AppStatus.consoleVisible = true;
    Con_ResetBuffer();
    Submit("volume 7");
    Submit("quit 1");
    EXPECT_EQ(Cvar_Get("volume"), "7");
    EXPECT_EQ(Cvar_Get("quit"), "1");
    EXPECT_TRUE(isProgramLooping);
    EXPECT_EQ(quitCalls, 0);
    EXPECT_EQ(ConsoleLinesOldestFirst(),
              (std::vector<std::string>{"volume 7", "cvar \"volume\" has been set to 7", "quit 1",
                                        "cvar \"quit\" has been set to 1"}));
    EXPECT_EQ(console.History(), (std::deque<std::string>{"quit 1", "volume 7"}));
    EXPECT_EQ(console.getConLine(), "");
}

TEST_F(GLConsole, TheLineReachesOneHundredAndOneCharactersButNoMore) {
    AppStatus.consoleVisible = true;
    Type(std::string(101, 'x'));
    EXPECT_EQ(console.getConLine(), std::string(101, 'x'));
    Type("y");
    EXPECT_EQ(console.getConLine(), std::string(100, 'x') + "y") << "the next key first cuts back to 100";
    Press(SDLK_SPACE, 32);
    EXPECT_EQ(console.getConLine(), std::string(100, 'x') + "y") << "the blank goes on and is cut at once";
    Press(SDLK_BACKSPACE, 8);
    EXPECT_EQ(console.getConLine(), std::string(100, 'x'));
    Type("a b");
    EXPECT_EQ(console.getConLine().size(), 101u);

    // Keys that type nothing, or a control character, leave nothing behind.
    Press(SDLK_BACKSPACE, 8);
    Press(SDLK_BACKSPACE, 8);
    Press(SDLK_PAUSE);
    Press(SDLK_KP_ENTER, 13);
    Press(SDLK_a, 1);  // ctrl+a
    EXPECT_EQ(console.getConLine(), std::string(99, 'x'));
    Press(SDLK_e, 233);
    EXPECT_EQ(console.getConLine().back(), '?') << "characters beyond ASCII type '?'";
}

TEST_F(GLConsole, BackquoteTogglesEvenWhileTypingAndNeverTypesItself) {
    Type("a");
    EXPECT_EQ(console.getConLine(), "") << "a hidden console takes no keys";
    Press(SDLK_BACKQUOTE, '`');
    EXPECT_TRUE(AppStatus.consoleVisible);
    Type("ab");
    Press(SDLK_BACKQUOTE, '`');
    EXPECT_FALSE(AppStatus.consoleVisible);
    EXPECT_EQ(console.getConLine(), "ab");
    Press(SDLK_RETURN, 13);
    EXPECT_TRUE(console.History().empty()) << "Return is not taken while hidden";
    Press(SDLK_BACKQUOTE, '`');
    EXPECT_TRUE(AppStatus.consoleVisible);
    EXPECT_EQ(console.getConLine(), "ab");

    // A key release or any other event is not a key press.
    SDL_Event up = Key(SDLK_BACKQUOTE, '`');
    up.type = up.key.type = SDL_KEYUP;
    console.getInput(&up);
    console.getInput(nullptr);
    EXPECT_TRUE(AppStatus.consoleVisible);
}

TEST_F(GLConsole, AFailingHandlerIsLoggedAndTheConsoleGoesOn) {
    Cmd_AddCommand("boom", [] { throw std::runtime_error("broken"); }, "throws");
    Cmd_AddCommand("thud", [] { throw 7; }, "throws a non-exception");
    Cmd_AddCommand("none", nullptr, "no handler");
    Cmd_Init_Commands();

    EXPECT_FALSE(Cmd_RunCommand("boom with args"));
    EXPECT_FALSE(Cmd_RunCommand("thud"));
    EXPECT_FALSE(Cmd_RunCommand("none"));
    const std::string log = LogText();
    EXPECT_NE(log.find("ERROR, couldn't run func boom with args"), std::string::npos);
    EXPECT_NE(log.find("ERROR, couldn't run func thud"), std::string::npos);
    EXPECT_NE(log.find("ERROR, couldn't run func none"), std::string::npos);
    EXPECT_TRUE(Cmd_RunCommand("?boom")) << "its help still shows";

    AppStatus.consoleVisible = true;
    Submit("boom");
    Submit("quit");
    EXPECT_FALSE(isProgramLooping);
}

TEST_F(GLConsole, BumpFramesARuleInTheConsoleAndTheVerboseLog) {
    AppStatus.verboseLog = true;
    Con_Bump();
    EXPECT_EQ(ConsoleLinesOldestFirst(), (std::vector<std::string>{"", " =================================", ""}));
    EXPECT_NE(LogText().find("  =================================\n"), std::string::npos);
}

} // namespace
