// Building twice gives the same bytes: the generator is run twice into
// fresh folders and both runs must match each other and the runnable folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "assets_support.h"

namespace {

std::string Generator() { return VELTHRA_ASSETGEN; }

std::string RunInto(const std::string& name) {
    std::string dir = ::testing::TempDir() + "/" + name;
    std::filesystem::remove_all(dir);
    std::string cmd = "'" + Generator() + "' '" + dir + "' > /dev/null";
    EXPECT_EQ(std::system(cmd.c_str()), 0) << cmd;
    return dir;
}

}  // namespace

TEST(AssetsReproducible, TwoRunsOfTheGeneratorWriteIdenticalFiles) {
    ASSERT_TRUE(FileExistsAt(Generator())) << Generator();
    std::string a = RunInto("assetgen_run_a"), b = RunInto("assetgen_run_b");
    std::vector<std::string> filesA = ListFiles(a), filesB = ListFiles(b);
    ASSERT_GE(filesA.size(), 40u);
    ASSERT_EQ(filesA, filesB);
    for (const std::string& f : filesA) {
        std::string bytes = ReadBytes(a + "/" + f);
        EXPECT_FALSE(bytes.empty()) << f;
        EXPECT_TRUE(bytes == ReadBytes(b + "/" + f)) << f << " differs between runs";
        // The build's own copy came from the same program.
        EXPECT_TRUE(bytes == ReadBytes(GameData(f))) << f << " differs from the runnable folder";
    }
    std::filesystem::remove_all(a);
    std::filesystem::remove_all(b);
}
