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
} // namespace

TEST_F(GameFolder, AWritableCopyOfTheGameRunsWhereItIs) {
    WriteFile(exe + "/assets.zip", "zip");
    fs::create_directories(exe + "/data/levels");
    S_GameFolder folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    EXPECT_EQ(folder.path, exe);
    EXPECT_TRUE(folder.portable);
    EXPECT_EQ(folder.error, "");
    EXPECT_FALSE(fs::exists(home)) << "a portable run touches nothing in HOME";

    // Half a game is not a game: without assets.zip the installed data is used.
    fs::remove(exe + "/assets.zip");
    folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    EXPECT_EQ(folder.path, user);
    EXPECT_FALSE(folder.portable);
}

TEST_F(GameFolder, FirstRunBuildsThePerUserFolderAndLaterRunsKeepThePlayersFiles) {
    WriteFile(installed + "/data/prefs.cfg", "not the player's");
    S_GameFolder folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    ASSERT_EQ(folder.error, "");
    EXPECT_EQ(folder.path, user);
    EXPECT_FALSE(folder.portable);
    EXPECT_TRUE(IsLinkTo(user + "/assets.zip", installed + "/assets.zip"));
    EXPECT_TRUE(fs::is_directory(user + "/data") && !fs::is_symlink(user + "/data"));
    EXPECT_TRUE(IsLinkTo(user + "/data/levels", installed + "/data/levels"));
    EXPECT_TRUE(IsLinkTo(user + "/data/scripts", installed + "/data/scripts"));
    EXPECT_EQ(ReadFile(user + "/data/levels/lvl1.xml"), "<level/>") << "the relative paths reach the data";
    EXPECT_FALSE(fs::exists(fs::symlink_status(user + "/data/prefs.cfg"))) << "settings are never shared";

    // The player's files, and a folder of their own levels in place of the link.
    WriteFile(user + "/data/prefs.cfg", "volume 0.25\n");
    WriteFile(user + "/data/stats.cfg", "1200 Ada\n");
    WriteFile(user + "/log.txt", "old log");
    fs::remove(user + "/data/levels");
    WriteFile(user + "/data/levels/lvl1.xml", "<level mine=\"1\"/>");
    // A link left by an install at another place is pointed back; a data
    // folder that a newer install brought is linked too.
    fs::remove(user + "/data/scripts");
    fs::create_directory_symlink(scratch.path() + "/moved/scripts", user + "/data/scripts");
    WriteFile(installed + "/data/models/ball.solid", "model");

    folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    ASSERT_EQ(folder.error, "");
    EXPECT_EQ(folder.path, user);
    EXPECT_EQ(ReadFile(user + "/data/prefs.cfg"), "volume 0.25\n");
    EXPECT_EQ(ReadFile(user + "/data/stats.cfg"), "1200 Ada\n");
    EXPECT_EQ(ReadFile(user + "/log.txt"), "old log");
    EXPECT_FALSE(fs::is_symlink(user + "/data/levels"));
    EXPECT_EQ(ReadFile(user + "/data/levels/lvl1.xml"), "<level mine=\"1\"/>");
    EXPECT_TRUE(IsLinkTo(user + "/data/scripts", installed + "/data/scripts"));
    EXPECT_TRUE(IsLinkTo(user + "/data/models", installed + "/data/models"));
}

TEST_F(GameFolder, XdgDataHomeWhenAbsoluteElseHome) {
    const std::string xdg = scratch.path() + "/xdg";
    S_GameFolder folder = Platform_PrepareGameFolder(exe, xdg.c_str(), home.c_str());
    EXPECT_EQ(folder.path, xdg + "/velthra");
    EXPECT_TRUE(IsLinkTo(xdg + "/velthra/assets.zip", installed + "/assets.zip"));
    EXPECT_FALSE(fs::exists(home));

    folder = Platform_PrepareGameFolder(exe, "relative/share", home.c_str());
    EXPECT_EQ(folder.path, user) << "a relative XDG_DATA_HOME is ignored";
    folder = Platform_PrepareGameFolder(exe, "", home.c_str());
    EXPECT_EQ(folder.path, user);
}

TEST_F(GameFolder, NoFolderGivesAReasonAndNoPath) {
    // A file where the per-user folder should go: mkdir fails even for root.
    WriteFile(home + "/.local", "in the way");
    S_GameFolder folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    EXPECT_EQ(folder.path, "");
    EXPECT_NE(folder.error.find(exe + " holds no data/ and assets.zip"), std::string::npos) << folder.error;
    EXPECT_NE(folder.error.find("per-user folder " + user + " cannot be prepared: cannot create " + home +
                                "/.local/share: Not a directory"),
              std::string::npos)
        << folder.error;

    folder = Platform_PrepareGameFolder(exe, nullptr, nullptr);
    EXPECT_EQ(folder.path, "");
    EXPECT_NE(folder.error.find("HOME is not set"), std::string::npos) << folder.error;

    fs::remove_all(installed);
    folder = Platform_PrepareGameFolder(exe, nullptr, home.c_str());
    EXPECT_EQ(folder.path, "");
    EXPECT_NE(folder.error.find("no game data (data/ and assets.zip) in " + exe), std::string::npos)
        << folder.error;
}
