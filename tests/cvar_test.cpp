// Console variables as the console and the program see them.
#include <gtest/gtest.h>

#include "console/cvar.h"
#include "test_support.h"

namespace {
class Cvars : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        RegisterAllCvars();
    }
    std::string LastConsoleLine() const {
        return AppStatus.consoleLines.empty() ? "<none>" : AppStatus.consoleLines.front();
    }
};
} // namespace

TEST_F(Cvars, LookupTakesTheFirstRegisteredMatchAndUnknownNamesAreSilent) {
    Cvar_Register({CVAR_SAVED, "showfps", "second", "duplicate", "second"});
    EXPECT_EQ(Cvar_Get("showfps"), "0");
    Cvar_Set("showfps", "1");
    EXPECT_EQ(CVAR[0].value, "1");
    EXPECT_EQ(CVAR.back().value, "second");

    size_t lines = AppStatus.consoleLines.size();
    Cvar_Set("nosuchvar", "5");
    EXPECT_EQ(Cvar_Get("nosuchvar"), "");
    EXPECT_EQ(Cvar_Get("SHOWFPS"), "");
    EXPECT_EQ(AppStatus.consoleLines.size(), lines);
}

TEST_F(Cvars, ConsoleRefusesReadOnlyButProgramMaySetIt) {
    EXPECT_TRUE(Cvar_Run("m_res 3"));
    EXPECT_EQ(LastConsoleLine(), "cvar \"m_res\" is read only!  is: 1  default: 1");
    EXPECT_EQ(Cvar_Get("m_res"), "1");

    Cvar_Set("m_res", "3");
    EXPECT_EQ(Cvar_Get("m_res"), "3");

    Cvar_Register({CVAR_CHEAT, "god", "0", "cheat", "0"});
    EXPECT_TRUE(Cvar_Run("god 1"));
    EXPECT_EQ(LastConsoleLine(), "cvar \"god\" is cheat protected!  is: 0  default: 0");
    EXPECT_EQ(Cvar_Get("god"), "0");
}

TEST_F(Cvars, BareNameQueriesAndTrailingBlankSetsEmpty) {
    Cvar_Set("showfps", "1");
    EXPECT_TRUE(Cvar_Run("showfps"));
    EXPECT_EQ(LastConsoleLine(), "\"showfps\" is set to: 1  default: 0");
    EXPECT_EQ(Cvar_Get("showfps"), "1");

    EXPECT_TRUE(Cvar_Run("showfps "));
    EXPECT_EQ(LastConsoleLine(), "cvar \"showfps\" has been set to ");
    EXPECT_EQ(Cvar_Get("showfps"), "");
}

TEST_F(Cvars, ValueIsTakenVerbatimWithEveryBlank) {
    EXPECT_TRUE(Cvar_Run("r_blurzoom 0.02 x  y"));
    EXPECT_EQ(Cvar_Get("r_blurzoom"), "0.02 x  y");
    EXPECT_EQ(LastConsoleLine(), "cvar \"r_blurzoom\" has been set to 0.02 x  y");
}

TEST_F(Cvars, QuestionMarkLinesAreNotCvarsForTheConsoleButDescribeWhenRunDirectly) {
    EXPECT_TRUE(Cvar_Check("showfps 1"));
    EXPECT_TRUE(Cvar_Check("showfps"));
    EXPECT_FALSE(Cvar_Check("?showfps"));
    EXPECT_FALSE(Cvar_Check("showfp"));

    EXPECT_TRUE(Cvar_Run("?showfps"));
    EXPECT_EQ(LastConsoleLine(), "name: \"showfps\"  description: \"shows your rendered fps (frames per second)\"");
    EXPECT_EQ(Cvar_Get("showfps"), "0");
    EXPECT_FALSE(Cvar_Run("nosuchvar 1"));
    EXPECT_FALSE(Cvar_Run("//?"));
}
