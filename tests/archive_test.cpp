// Reading members of real zip archives, good and damaged.
#include <gtest/gtest.h>

#include "common/archive.h"
#include "test_support.h"

using Archive = ScratchTest;

TEST_F(Archive, ReadsMembersByteForByteAndEmptyOnesWithoutAMessage) {
    std::string binary;
    for (int i = 0; i < 256; i++)
        binary += char(i);
    std::string large(6 * 1024 * 1024 + 17, 'z');  // more than one read buffer
    ASSERT_TRUE(MakeZip("assets.zip",
                        {{"data/default.cfg", "volume 1\r\n"}, {"bin", binary}, {"big", large, true}, {"empty", ""}}));
    EXPECT_EQ(readZipFile("assets.zip", "data/default.cfg"), "volume 1\r\n");
    EXPECT_EQ(readZipFile("assets.zip", "bin"), binary);
    EXPECT_EQ(readZipFile("assets.zip", "big"), large);
    EXPECT_EQ(readZipFile("assets.zip", "empty"), "");
    EXPECT_TRUE(AppStatus.consoleLines.empty());
}

TEST_F(Archive, MissingArchiveOrMemberIsLoggedAndEmpty) {
    EXPECT_EQ(readZipFile("nothere.zip", "data/default.cfg"), "");
    EXPECT_EQ(AppStatus.consoleLines.front(), "Cannot open nothere.zip");

    ASSERT_TRUE(MakeZip("assets.zip", {{"data/default.cfg", "x"}}));
    EXPECT_EQ(readZipFile("assets.zip", "data/Default.cfg"), "") << "names are compared case-sensitively";
    EXPECT_EQ(AppStatus.consoleLines.front(), "File data/Default.cfg not found in assets.zip");
}

TEST_F(Archive, ChecksumFailureEmptiesTheResultAfterReading) {
    const std::string payload = "screenwidth 800 and a recognisable payload";
    ASSERT_TRUE(MakeZip("assets.zip", {{"m", payload, true}}));
    std::string bytes = ReadFile("assets.zip");
    const size_t at = bytes.find(payload);
    ASSERT_NE(at, std::string::npos);
    bytes[at] = 'S';  // same length, so only the CRC can tell
    WriteFile("assets.zip", bytes);
    EXPECT_EQ(readZipFile("assets.zip", "m"), "");
}

TEST_F(Archive, TruncatedArchiveDoesNotCrash) {
    ASSERT_TRUE(MakeZip("full.zip", {{"data/default.cfg", std::string(4000, 'a')}}));
    const std::string bytes = ReadFile("full.zip");
    for (size_t keep = 0; keep < bytes.size(); keep++) {
        WriteFile("cut.zip", bytes.substr(0, keep));
        const std::string read = readZipFile("cut.zip", "data/default.cfg");
        // Either nothing or the whole member, never a part of it; nothing at all from the first half.
        EXPECT_TRUE(read.empty() || (read == std::string(4000, 'a') && keep >= bytes.size() / 2)) << "kept " << keep;
    }
}
