// The folder the game runs in: a writable copy of the game runs where it is;
// an installed game runs in a per-user folder of links and the player's files.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/gamefolder.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace {
bool IsLinkTo(const std::string& link, const std::string& target) {
    std::error_code error;
    return fs::is_symlink(link, error) && fs::read_symlink(link, error).string() == target;
}

// An installed tree: the executable's folder holds nothing of the game; the
// data lies at the install layout's relative path from it.
class GameFolder : public ::testing::Test {
protected:
    void SetUp() override {
        exe = scratch.path() + "/prefix/games";
        fs::create_directories(exe);
        fs::create_directories(exe + "/" + GAME_DATA_FROM_EXE);
        installed = fs::canonical(exe + "/" + GAME_DATA_FROM_EXE).string();
        WriteFile(installed + "/assets.zip", "zip");
        WriteFile(installed + "/data/levels/lvl1.xml", "<level/>");
        WriteFile(installed + "/data/scripts/menu.xml", "<menus/>");
        home = scratch.path() + "/home";
        user = home + "/.local/share/velthra";
    }
    ScratchDir scratch;
    std::string exe, installed, home, user;
};
}  // namespace

// The copied folder, the first and later runs and an unwritable HOME are
// played by the e2e userdir script; here are the cases it does not reach.
TEST_F(GameFolder, HalfAGameIsNotPortableAndLinksAreMendedOrAddedOnLaterRuns) {
    fs::create_directories(exe + "/data/levels");  // no assets.zip beside it: the installed data is used
    WriteFile(installed + "/data/prefs.cfg", "not the player's");
    S_GameFolder folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    ASSERT_EQ(folder.error, "");
    EXPECT_EQ(folder.path, user);
    EXPECT_FALSE(folder.portable);
    EXPECT_TRUE(IsLinkTo(user + "/data/levels", installed + "/data/levels"));
    EXPECT_EQ(ReadFile(user + "/data/levels/lvl1.xml"), "<level/>") << "the relative paths reach the data";
    EXPECT_FALSE(fs::exists(fs::symlink_status(user + "/data/prefs.cfg"))) << "settings are never shared";

    // A link left by an install at another place is pointed back; a data
    // folder that a newer install brought is linked too.
    fs::remove(user + "/data/scripts");
    fs::create_directory_symlink(scratch.path() + "/moved/scripts", user + "/data/scripts");
    WriteFile(installed + "/data/models/ball.solid", "model");
    folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    ASSERT_EQ(folder.error, "");
    EXPECT_TRUE(IsLinkTo(user + "/data/scripts", installed + "/data/scripts"));
    EXPECT_TRUE(IsLinkTo(user + "/data/models", installed + "/data/models"));
}

TEST_F(GameFolder, XdgDataHomeWhenAbsoluteElseHome) {
    const std::string xdg = scratch.path() + "/xdg";
    S_GameFolder folder = Platform_PrepareGameFolder(exe, xdg.c_str(), home.c_str());
    EXPECT_EQ(folder.path, xdg + "/velthra");
    EXPECT_TRUE(IsLinkTo(xdg + "/velthra/assets.zip", installed + "/assets.zip"));
    EXPECT_FALSE(fs::exists(home));
    for (const char* ignored : {"relative/share", ""})
        EXPECT_EQ(Platform_PrepareGameFolder(exe, ignored, home.c_str()).path, user) << "'" << ignored << "'";
}

TEST_F(GameFolder, NoHomeOrNoDataGivesAReasonAndNoPath) {
    S_GameFolder folder = Platform_PrepareGameFolder(exe, nullptr, nullptr);
    EXPECT_EQ(folder.path, "");
    EXPECT_NE(folder.error.find("HOME is not set"), std::string::npos) << folder.error;

    fs::remove_all(installed);
    folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    EXPECT_EQ(folder.path, "");
    EXPECT_NE(folder.error.find("no game data (data/ and assets.zip) in " + exe), std::string::npos) << folder.error;
}
