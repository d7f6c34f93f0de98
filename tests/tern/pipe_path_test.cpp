#include "tern/pipe_path.h"

#include <gtest/gtest.h>

using tern::pipePath;

TEST(PipePathTest, NameStandsAfterThePipePrefix) {
    EXPECT_EQ(pipePath(L"status"), L"\\\\.\\pipe\\status");
    EXPECT_EQ(pipePath(L""), L"\\\\.\\pipe\\");
}

TEST(PipePathTest, PathIsCutWhereItsBufferEnds) {
    EXPECT_EQ(pipePath(std::wstring(250, L'x')).size(), 259U);
    EXPECT_EQ(pipePath(std::wstring(251, L'x')).size(), 259U);
}
