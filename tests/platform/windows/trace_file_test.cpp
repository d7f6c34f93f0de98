#include "platform/trace.h"

#include "platform/file.h"
#include "platform/lock.h"
#include "platform/thread.h"

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

std::string content() {
    std::string bytes;
    // Share the file for writing, as a program does that reads a trace while it is written.
    const HANDLE file =
        ::CreateFileA(tracePath().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
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

}  // namespace
