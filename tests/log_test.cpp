// The log file and what of it reaches the console.
#include <gtest/gtest.h>

#include <string>

#include "common/console.h"
#include "common/log.h"
#include "test_support.h"

using LogFile = ScratchTest;

TEST_F(LogFile, BeforeItOpensOnlyTheConsoleHearsThenTheBannerStartsTheFile) {
    WriteFile("log.txt", "an old session's log that must go\n");
    AppStatus.verboseLog = true;
    Log("from the command line\nsecond line\n");
    VerboseLog("trace before the log\n");
    EXPECT_EQ(ReadFile("log.txt"), "an old session's log that must go\n") << "nothing is written before the log opens";
    InitErrorLog();
    EXPECT_EQ(AppStatus.consoleLineCount, 0) << "the banner resets the line counter";
    Log("after\n");
    CloseErrorLog();
    EXPECT_EQ(ReadFile("log.txt"), "Console Initialized...\nVELTHRA V1.0.4\n\nafter\n");
    EXPECT_EQ(AppStatus.consoleLineCount, 1);
    EXPECT_EQ(ConsoleLinesOldestFirst(),
              (std::vector<std::string>{"from the command line", "Console Initialized...", "after"}));
}

TEST_F(LogFile, OnlyTheFirstLineReachesTheConsoleCutTo254AndTheFileGetsAll) {
    InitErrorLog();
    Log("\nstarts with a newline\n");
    EXPECT_EQ(AppStatus.consoleLines.front(), "");
    const std::string huge(5000, 'y');  // longer than any formatting buffer
    Log("%s\ntail\n", huge.c_str());
    EXPECT_EQ(AppStatus.consoleLines.front(), std::string(254, 'y'));
    CloseErrorLog();
    EXPECT_NE(ReadFile("log.txt").find(huge + "\ntail\n"), std::string::npos);
    Log("after close goes nowhere\n");  // must not touch the closed stream
}

TEST_F(LogFile, VerboseTracingOnlyUnderTheSwitchAndNeverInTheConsole) {
    InitErrorLog();
    VerboseLog(" --- in programming loop \n");
    AppStatus.verboseLog = true;
    const size_t lines = AppStatus.consoleLines.size();
    VerboseLog(" -- attempting %s ... ", "x");
    VerboseLog("success!\n");
    CloseErrorLog();
    EXPECT_EQ(AppStatus.consoleLines.size(), lines);
    const std::string text = ReadFile("log.txt");
    EXPECT_EQ(text.find("programming loop"), std::string::npos);
    EXPECT_NE(text.find(" -- attempting x ... success!\n"), std::string::npos);
}

TEST_F(LogFile, ConsoleBufferIsBounded) {
    for (size_t i = 0; i < MAX_CONSOLE_LINES + 10; i++)
        Log("line %zu\n", i);
    EXPECT_EQ(AppStatus.consoleLines.size(), MAX_CONSOLE_LINES);
    EXPECT_EQ(AppStatus.consoleLines.front(), "line " + std::to_string(MAX_CONSOLE_LINES + 9));
    EXPECT_EQ(AppStatus.consoleLineCount, int(MAX_CONSOLE_LINES + 10));
}
