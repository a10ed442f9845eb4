// Settings files: which file is read, what survives a save, the presets.
#include <gtest/gtest.h>

#include "common/archive.h"
#include "common/config.h"
#include "common/cvar.h"
#include "common/utils.h"
#include "test_support.h"

using Config = ScratchTest;

TEST_F(Config, FirstRunReadsPackagedDefaultsOfSavedKindsThenPrefsWinWhole) {
    ASSERT_TRUE(
        MakeZip("assets.zip", {{"data/default.cfg", "fullscreen 0\nscreenwidth 800\nvolume 0.2\nbrightness 0.5\n"
                                                    "m_menu 1\nm_res 4\nbogus 7\nr_particles 1"}}));
    Cvar_Init();
    EXPECT_TRUE(g_First_Run);
    EXPECT_EQ(Cvar_Get("fullscreen") + " " + Cvar_Get("screenwidth") + " " + Cvar_Get("r_particles"), "0 800 1");
    EXPECT_EQ(Cvar_Get("m_menu") + " " + Cvar_Get("m_res"), "0 1") << "temporary and read-only cvars are never read";

    WriteFile("data/prefs.cfg", "volume 0.8\n");
    ResetShellState();
    Cvar_Init();
    EXPECT_FALSE(g_First_Run);
    EXPECT_EQ(Cvar_Get("volume"), "0.8");
    EXPECT_EQ(Cvar_Get("brightness"), "1") << "defaults are not consulted for what prefs.cfg lacks";
}

TEST_F(Config, LoaderKeepsOddLinesAsWritten) {
    WriteFile("data/prefs.cfg",
              "volume 0.5\r\n"
              "con_red 1\ncon_red 0.25\n"  // the last of a repeated name wins
              "screenbpp\n"                // no blank: the name is its own value
              "r_blurzoom 0.03 0.04\n");
    Cvar_Init();
    EXPECT_EQ(Cvar_Get("volume") + "|" + Cvar_Get("con_red") + "|" + Cvar_Get("screenbpp") + "|" +
                  Cvar_Get("r_blurzoom"),
              "0.5\r|0.25|screenbpp|0.03 0.04");
    EXPECT_EQ(StringToFloat(Cvar_Get("volume")), 0.5f);
}

TEST_F(Config, MissingOrCorruptArchiveLeavesCompiledDefaults) {
    WriteFile("assets.zip", std::string("PK\3\4 truncated archive"));
    Cvar_Init();
    EXPECT_TRUE(g_First_Run);
    EXPECT_EQ(Cvar_Get("fullscreen") + " " + Cvar_Get("screenwidth"), "1 640");
    EXPECT_EQ(AppStatus.consoleLines.front(), "Cannot open assets.zip");
}

TEST_F(Config, SaveWritesTheSixteenSavedCvarsInRegistrationOrderAndTheyLoadBack) {
    Cvar_Init();
    Resolution.width = 1024, Resolution.height = 768;
    Cvar_Set("m_res", "0");  // no preset: the current size is kept
    Cvar_Set("volume", "0.3");
    Cvar_Set("m_menu", "1");
    Cvar_Save();  // also creates the missing data/ folder
    EXPECT_EQ(ReadFile("data/prefs.cfg"),
              "showfps 0\nfullscreen 1\nvolume 0.3\nbrightness 1\nscreenwidth 1024\nscreenheight 768\n"
              "screenbpp 32\ncon_red 0\ncon_green 0\ncon_blue 0\ncon_alpha 0.9\nr_blur 0\n"
              "r_blurpower 25\nr_blurzoom 0.02\nr_particles 0\nr_maxfps 60\n");
    EXPECT_FALSE(FileExists("data/prefs.cfg.tmp"));

    ResetShellState();
    Cvar_Init();
    EXPECT_FALSE(g_First_Run);
    EXPECT_EQ(Cvar_Get("volume") + " " + Cvar_Get("screenwidth") + "x" + Cvar_Get("screenheight"), "0.3 1024x768");
}

TEST_F(Config, ASaveWhileRunningWritesWhatTheShutdownWillButKeepsTheWindowsSize) {
    Cvar_Init();
    Resolution.width = 800, Resolution.height = 600;
    Cvar_Dynamic();
    Cvar_Set("m_res", "3");  // chosen in the options: 1024 x 768 from the next start
    Cvar_SaveWhileRunning();
    const std::string running = ReadFile("data/prefs.cfg");
    EXPECT_NE(running.find("\nscreenwidth 1024\nscreenheight 768\nscreenbpp 32\n"), std::string::npos) << running;
    EXPECT_EQ(IntToString(Resolution.width) + "x" + IntToString(Resolution.height) + " " + Cvar_Get("screenwidth"),
              "800x600 640")
        << "the running game keeps its size and the console its width";
    Cvar_Save();
    EXPECT_EQ(ReadFile("data/prefs.cfg"), running);
    EXPECT_EQ(Resolution.width, 1024) << "the shutdown's save applies the preset";
}

TEST_F(Config, PresetsApplyAndOnlySixAreRecognised) {
    Cvar_Init();
    const std::string sizes[] = {"640x480", "800x600", "1024x768", "1280x800", "1440x900", "1680x1050", "1920x1600"};
    for (int preset = 1; preset <= 7; preset++) {
        SCOPED_TRACE(preset);
        Cvar_Set("m_res", IntToString(preset));
        Cvar_Resolution();
        EXPECT_EQ(IntToString(Resolution.width) + "x" + IntToString(Resolution.height), sizes[preset - 1]);
        EXPECT_EQ(Cvar_Get("screenwidth") + "x" + Cvar_Get("screenheight") + " " + Cvar_Get("screenbpp"),
                  sizes[preset - 1] + " 32");
        Cvar_Dynamic();
        EXPECT_EQ(Cvar_Get("m_res"), preset == 7 ? "0" : IntToString(preset)) << "the seventh is not recognised";
    }
    Resolution.width = 800, Resolution.height = 768;  // a known width with another height is no preset
    Cvar_Dynamic();
    EXPECT_EQ(Cvar_Get("m_res"), "0");
}
