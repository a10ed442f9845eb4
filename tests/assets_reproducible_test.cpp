// Building twice gives the same bytes, and the runnable folder holds them
// (the icons' picture is checked where they are installed, e2e/install.sh).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "test_support.h"

TEST(AssetsReproducible, TwoRunsOfTheGeneratorWriteIdenticalFiles) {
    ScratchDir scratch;
    for (const char* run : {"a", "b"})
        for (const char* what : {"", "--icons "}) {
            std::filesystem::create_directory(scratch.path() + "/" + run);
            const std::string cmd = std::string("'") + VELTHRA_ASSETGEN + "' " + what + "'" + scratch.path() + "/" +
                                    run + (*what ? "/icons'" : "/data' > /dev/null");
            ASSERT_EQ(std::system(cmd.c_str()), 0) << cmd;
        }
    std::vector<std::string> files = ListFiles(scratch.path() + "/a");
    ASSERT_GE(files.size(), 45u);
    ASSERT_EQ(files, ListFiles(scratch.path() + "/b"));
    for (const std::string& f : files) {
        std::string bytes = ReadFile(scratch.path() + "/a/" + f);
        EXPECT_FALSE(bytes.empty()) << f;
        EXPECT_TRUE(bytes == ReadFile(scratch.path() + "/b/" + f)) << f << " differs between runs";
        EXPECT_TRUE(f.rfind("data/", 0) != 0 || bytes == ReadFile(GameData(f.substr(5))))
            << f << " differs from the runnable folder";
    }
}
