// Console variables as the console and the program see them.
#include <gtest/gtest.h>

#include "common/cvar.h"
#include "test_support.h"

using Cvars = CvarTest;

TEST_F(Cvars, LookupTakesTheFirstRegisteredMatchAndUnknownNamesAreSilent) {
    Cvar_Register({CVAR_SAVED, "showfps", "second", "duplicate", "second"});
    EXPECT_EQ(Cvar_Get("showfps"), "0");
    Cvar_Set("showfps", "1");
    EXPECT_EQ(CVAR[0].value + " " + CVAR.back().value, "1 second");

    Cvar_Set("nosuchvar", "5");
    EXPECT_EQ(Cvar_Get("nosuchvar") + Cvar_Get("SHOWFPS"), "");
    EXPECT_TRUE(AppStatus.consoleLines.empty());
}

TEST_F(Cvars, ConsoleLinesSetQueryDescribeAndRefuseProtectedVariables) {
    const struct {
        const char *line, *reply, *name, *value;
    } runs[] = {
        {"showfps 1", "cvar \"showfps\" has been set to 1", "showfps", "1"},
        {"showfps", "\"showfps\" is set to: 1  default: 0", "showfps", "1"},
        {"?showfps", "name: \"showfps\"  description: \"shows your rendered fps (frames per second)\"", "showfps", "1"},
        {"showfps ", "cvar \"showfps\" has been set to ", "showfps", ""},  // a trailing blank sets it empty
        {"r_blurzoom 0.02 x  y", "cvar \"r_blurzoom\" has been set to 0.02 x  y", "r_blurzoom", "0.02 x  y"},
        {"m_res 3", "cvar \"m_res\" is read only!  is: 1  default: 1", "m_res", "1"},
    };
    for (const auto& run : runs) {
        SCOPED_TRACE(run.line);
        EXPECT_TRUE(Cvar_Run(run.line));
        EXPECT_EQ(AppStatus.consoleLines.at(0), run.reply);
        EXPECT_EQ(Cvar_Get(run.name), run.value);
    }
    Cvar_Set("m_res", "3");
    EXPECT_EQ(Cvar_Get("m_res"), "3") << "the program may set a read-only variable";
    EXPECT_FALSE(Cvar_Run("nosuchvar 1") || Cvar_Run("//?"));

    // The console asks Cvar_Check first: a '?' line goes to the commands instead.
    const std::pair<const char*, bool> checks[] = {
        {"showfps 1", true}, {"showfps", true}, {"?showfps", false}, {"showfp", false}};
    for (const auto& [line, isCvar] : checks)
        EXPECT_EQ(Cvar_Check(line), isCvar) << line;
}
