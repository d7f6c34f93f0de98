#include "platform/trace.h"

#include "platform/file.h"
#include "platform/lock.h"
#include "platform/thread.h"
#include "platform/trace_line.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <atomic>
#include <regex>
#include <string>

namespace {

constexpr char kFile[] = "contract-trace.txt";

std::string tracePath() {
    char folder[MAX_PATH + 1];
    return std::string(folder, ::GetTempPathA(MAX_PATH, folder)) + kFile;
}

// The trace asks for its file only once, so all tests of this program share one file. It must be
// named before the first trace line.
[[maybe_unused]] const bool isWanted = [] {
    static_cast<void>(platform::writeFile(tracePath().c_str(), "from an earlier run\r\n"));
    return ::SetEnvironmentVariableA("QVSM_TRACE", tracePath().c_str()) != 0;
}();

std::string content(const std::string& path = tracePath()) {
    std::string bytes;
    // Share the file for writing, as a program does that reads a trace while it is written.
    const HANDLE file =
        ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(file, platform::invalidHandle());
    char buffer[1 << 16];
    DWORD got = 0;
    while (::ReadFile(file, buffer, sizeof buffer, &got, nullptr) != 0 && got != 0) {
        bytes.append(buffer, got);
    }
    ::CloseHandle(file);
    return bytes;
}

TEST(TraceFileTest, EachLineIsAppendedAtOnceWithItsTimeAndThread) {
    platform::trace("TERNA - run ... %d\n", 7);

    const std::regex line(
        "from an earlier run\r\n(.*\r\n)*"
        "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} " +
        std::to_string(platform::currentThreadId()) + " TERNA - run \\.\\.\\. 7\r\n(.*\r\n)*");
    EXPECT_TRUE(std::regex_match(content(), line)) << content();
}

TEST(TraceFileTest, ATraceLeavesTheLastErrorAlone) {
    ::SetLastError(ERROR_BROKEN_PIPE);

    platform::trace("between a call and its error");

    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_BROKEN_PIPE));
}

constexpr int kLinesOfAThread = 500;

std::uint32_t traceLines(void*) {
    for (int i = 0; i < kLinesOfAThread; ++i)
        platform::trace("<%s>", std::string(80, 'x').c_str());
    return 0;
}

TEST(TraceFileTest, LinesOfSeveralThreadsDoNotMix) {
    platform::NativeHandle threads[3] = {};
    std::atomic<std::uint32_t> id{0};
    for (auto& thread : threads)
        thread = platform::startThread(&traceLines, nullptr, id);
    for (const auto thread : threads) {
        EXPECT_EQ(platform::waitForThread(thread, platform::kNoTimeout), 0U);
        platform::closeThread(thread);
    }

    const std::string all = content();
    const std::string whole = " <" + std::string(80, 'x') + ">\r\n";
    int count = 0;
    for (auto at = all.find(whole); at != std::string::npos; at = all.find(whole, at + 1))
        ++count;
    EXPECT_EQ(count, 3 * kLinesOfAThread);
}

std::string olderPath() {
    return tracePath() + ".old";
}

std::int64_t sizeOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    ::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
    return data.nFileSizeLow;
}

void fillFile() {
    const std::string line(platform::kTraceLimit, 'x');
    while (platform::isTraceKept() && sizeOf(tracePath()) < platform::kTraceFileLimit)
        platform::trace("%s", line.c_str());
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

TEST(TraceFileTest, AFullFileBecomesTheOlderOneAndTheOneBeforeGoes) {
    ASSERT_TRUE(platform::writeFile(olderPath().c_str(), "from long ago"));
    fillFile();

    platform::trace("the first line of the new file");

    EXPECT_GE(sizeOf(olderPath()), platform::kTraceFileLimit);
    EXPECT_LT(sizeOf(tracePath()), 100);
    EXPECT_TRUE(endsWith(content(), " the first line of the new file\r\n"));
}

TEST(TraceFileTest, AFileThatAnotherProcessHasSetAsideIsNotSetAsideAgain) {
    const std::string elsewhere = tracePath() + ".elsewhere";
    fillFile();
    ASSERT_TRUE(platform::writeFile(olderPath().c_str(), "kept"));
    ASSERT_TRUE(::MoveFileExA(tracePath().c_str(), elsewhere.c_str(), MOVEFILE_REPLACE_EXISTING));

    platform::trace("into the file of that name");

    EXPECT_TRUE(endsWith(content(), " into the file of that name\r\n"));
    EXPECT_EQ(content(olderPath()), "kept");
    ::DeleteFileA(elsewhere.c_str());
}

TEST(TraceFileTest, ATraceThatBeginsANewFileLeavesTheLastErrorAlone) {
    fillFile();
    ::SetLastError(ERROR_BROKEN_PIPE);

    platform::trace("between a call and its error");

    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_BROKEN_PIPE));
}

// The last test of this program: after it the trace is off.
TEST(TraceFileTest, WhereTheFullFileCannotBeSetAsideTheTraceEnds) {
    fillFile();
    ::DeleteFileA(olderPath().c_str());
    ASSERT_TRUE(::CreateDirectoryA(olderPath().c_str(), nullptr));
    const std::int64_t size = sizeOf(tracePath());

    platform::trace("one too many");

    EXPECT_EQ(sizeOf(tracePath()), size);
    EXPECT_FALSE(platform::isTraceKept());
    ::RemoveDirectoryA(olderPath().c_str());
}

}  // namespace
