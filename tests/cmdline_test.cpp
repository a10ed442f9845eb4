// The command-line switches, read before the log opens.
#include <gtest/gtest.h>

#include <vector>

#include "app/cmdline.h"
#include "test_support.h"

namespace {
class CommandLine : public ShellTest {
protected:
    void Run(std::vector<const char*> args) {
        args.insert(args.begin(), "velthra");
        CCmdLine().Proccess(int(args.size()), const_cast<char**>(args.data()));
    }
};
}  // namespace

TEST_F(CommandLine, HelpWritesSevenMessagesFirstLinesOnlyInTheConsoleAndAllOfThemToStandardOutput) {
    testing::internal::CaptureStdout();
    Run({"-help"});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "SWITCH HELP: VELTHRA V1.0.4\nCreated by Dorvane\n\n"
                                                      "(switch name) (arg)            (summery)\n"
                                                      "-help                           switch enables this menu\n"
                                                      "-vlog                           enables verbos loging\n"
                                                      "-menuxm        [menu name]      uses custom menu\n"
                                                      "-menu          [1 or 0]         start game with menu\n"
                                                      "-world         [map name]       load a map at startup\n\n");
    const std::vector<std::string> lines = ConsoleLinesOldestFirst();
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines.front(), "SWITCH HELP: VELTHRA V1.0.4") << "the credit after the first line stays in the log";
    EXPECT_EQ(lines.back(), "-world         [map name]       load a map at startup");
}

// Initialize puts back what -menuxm, -menu and -world set (GLStartup): only their log lines stay.
TEST_F(CommandLine, UnknownArgumentsAndMissingValuesAreIgnoredAndValuesAreAlsoReadAsSwitches) {
    Run({"-VLOG", "--help", "-world"});
    EXPECT_FALSE(AppStatus.verboseLog);
    EXPECT_TRUE(AppStatus.consoleLines.empty());

    Run({"-menuxm", "-vlog", "-world", "lvl7.xml", "-world", "lvl8.xml"});
    EXPECT_TRUE(AppStatus.verboseLog);
    EXPECT_EQ(ConsoleLinesOldestFirst(), (std::vector<std::string>{"using custom menu: -vlog", "using verbose logging.",
                                                                   "loading world through cmdline: lvl7.xml",
                                                                   "loading world through cmdline: lvl8.xml"}));
}
