// Building twice gives the same bytes: the generator is run twice into fresh
// folders and both runs must match each other and the runnable folder.
#include <gtest/gtest.h>

#include <cstdlib>

#include "assets_support.h"

TEST(AssetsReproducible, TwoRunsOfTheGeneratorWriteIdenticalFiles) {
    ScratchDir scratch;
    for (const char* run : {"a", "b"}) {
        std::string cmd = std::string("'") + VELTHRA_ASSETGEN + "' '" + scratch.path() + "/" + run + "' > /dev/null";
        ASSERT_EQ(std::system(cmd.c_str()), 0) << cmd;
    }
    std::vector<std::string> files = ListFiles(scratch.path() + "/a");
    ASSERT_GE(files.size(), 40u);
    ASSERT_EQ(files, ListFiles(scratch.path() + "/b"));
    for (const std::string& f : files) {
        std::string bytes = ReadFile(scratch.path() + "/a/" + f);
        EXPECT_FALSE(bytes.empty()) << f;
        EXPECT_TRUE(bytes == ReadFile(scratch.path() + "/b/" + f)) << f << " differs between runs";
        EXPECT_TRUE(bytes == ReadFile(GameData(f))) << f << " differs from the runnable folder";
    }
}
