#include "platform/shell.h"

#include <gtest/gtest.h>

namespace {

using platform::Folder;

TEST(ShellTest, TheFoldersOfTheSystemHaveNoSeparatorAtTheirEnd) {
    std::string path;

    EXPECT_TRUE(platform::folderPath(Folder::ProgramFiles, path));
    EXPECT_EQ(path, "C:\\Program Files");
    EXPECT_TRUE(platform::folderPath(Folder::CommonApplicationData, path));
    EXPECT_EQ(path, "C:\\ProgramData");
}

}  // namespace
