#include "tern/pipe_path.h"

#include <gtest/gtest.h>

using tern::pipePath;

TEST(PipePathTest, NameStandsAfterThePipePrefix) {
    EXPECT_EQ(pipePath(L"status"), L"\\\\.\\pipe\\status");
    EXPECT_EQ(pipePath(L""), L"\\\\.\\pipe\\");
}

TEST(PipePathTest, TheLongestNameFillsThePath) {
    EXPECT_EQ(pipePath(std::wstring(250, L'x')), L"\\\\.\\pipe\\" + std::wstring(250, L'x'));
}

TEST(PipePathTest, ANameThatDoesNotFitHasNoPath) {
    EXPECT_EQ(pipePath(std::wstring(251, L'x')), L"");
    EXPECT_EQ(pipePath(std::wstring(5000, L'x')), L"");
}
