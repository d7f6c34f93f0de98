#include "platform/file.h"

#include "system.h"

#include <gtest/gtest.h>

namespace {

class FileTest : public testing::Test {
protected:
    static std::string pathOf(const char* name) {
        return contract::temporaryFolder() + "\\contract " + name;
    }
    static std::string contentOf(const std::string& path) {
        std::string bytes;
        EXPECT_TRUE(platform::readFile(path.c_str(), bytes));
        return bytes;
    }
};

TEST_F(FileTest, BytesAreReadBackAsTheyWereWritten) {
    const std::string path = pathOf("bytes.bin");
    const std::string bytes("line\r\nline\nnul\0\x1a\xFF", 18);

    EXPECT_TRUE(platform::writeFile(path.c_str(), bytes));

    EXPECT_EQ(contentOf(path), bytes);
}

TEST_F(FileTest, AWriteReplacesALongerFile) {
    const std::string path = pathOf("replaced.txt");
    ASSERT_TRUE(platform::writeFile(path.c_str(), "a longer content"));

    EXPECT_TRUE(platform::writeFile(path.c_str(), "short"));

    EXPECT_EQ(contentOf(path), "short");
}

TEST_F(FileTest, AnEmptyFileIsRead) {
    const std::string path = pathOf("empty.txt");
    ASSERT_TRUE(platform::writeFile(path.c_str(), ""));

    EXPECT_EQ(contentOf(path), "");
}

TEST_F(FileTest, ALargeFileIsReadWhole) {
    const std::string path = pathOf("large.bin");
    const std::string bytes(3'000'000, 'x');
    ASSERT_TRUE(platform::writeFile(path.c_str(), bytes));

    EXPECT_EQ(contentOf(path), bytes);
}

TEST_F(FileTest, AMissingFileIsNotReadAndLeavesTheTextAsItWas) {
    std::string bytes = "before";

    EXPECT_FALSE(platform::readFile(pathOf("never made").c_str(), bytes));
    EXPECT_EQ(bytes, "before");
}

TEST_F(FileTest, ACopyOverwrites) {
    const std::string from = pathOf("from.txt");
    const std::string to = pathOf("to.txt");
    ASSERT_TRUE(platform::writeFile(from.c_str(), "new"));
    ASSERT_TRUE(platform::writeFile(to.c_str(), "older and longer"));

    EXPECT_TRUE(platform::copyFile(from.c_str(), to.c_str()));

    EXPECT_EQ(contentOf(to), "new");
}

TEST_F(FileTest, AMissingFileIsNotCopied) {
    EXPECT_FALSE(platform::copyFile(pathOf("never made").c_str(), pathOf("to.txt").c_str()));
}

}  // namespace
