#include "tools/printpath/gauge_log.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace printpath {
namespace {

constexpr int kReadings = 60;

// Makes the log of a run in which one gauge has at each reading the value that `value` returns.
template <typename Value>
GaugeLog logOf(long Gauges::*gauge, Value value) {
    GaugeLog log;
    for (int at = 0; at < kReadings; ++at) {
        Gauges gauges;
        gauges.*gauge = value(at);
        log.add(at, gauges);
    }
    return log;
}

std::string problems(const GaugeLog& log) {
    return log.problems(0);
}

TEST(GaugeLogTest, AHandleLostNowAndThenIsNotFlat) {
    const auto log = logOf(&Gauges::handles, [](int at) { return 100L + at / 20; });

    EXPECT_EQ(problems(log), "handles 101 -> 102");
}

TEST(GaugeLogTest, GrowthDuringTheWarmUpIsFlat) {
    const auto log = logOf(&Gauges::gdiObjects, [](int at) { return 100L + std::min(at, 11); });

    EXPECT_EQ(problems(log), "");
}

TEST(GaugeLogTest, ReadingsThatWanderAreFlat) {
    const auto log = logOf(&Gauges::threads, [](int at) { return at % 5 == 0 ? 9L : 8L; });

    EXPECT_EQ(problems(log), "");
}

TEST(GaugeLogTest, MemoryMayGrowByTwoMebibytesButNotByMore) {
    const auto little = logOf(&Gauges::memoryKiB, [](int at) { return at < 50 ? 5000L : 7048L; });
    const auto much = logOf(&Gauges::memoryKiB, [](int at) { return at < 50 ? 5000L : 7049L; });

    EXPECT_EQ(problems(little), "");
    EXPECT_EQ(problems(much), "memory KiB 5000 -> 7049");
}

TEST(GaugeLogTest, EachRoundMayKeepTheMemoryThatIsAllowed) {
    const auto log = logOf(&Gauges::memoryKiB, [](int at) { return 100L * at; });

    EXPECT_EQ(log.problems(36), "");
    EXPECT_EQ(log.problems(35), "memory KiB 2700 -> 5900");
}

TEST(GaugeLogTest, GdiObjectsMayGrowByEightButNotByMore) {
    const auto few = logOf(&Gauges::gdiObjects, [](int at) { return at < 50 ? 245L : 253L; });
    const auto many = logOf(&Gauges::gdiObjects, [](int at) { return at < 50 ? 245L : 254L; });

    EXPECT_EQ(problems(few), "");
    EXPECT_EQ(problems(many), "GDI objects 245 -> 254");
}

TEST(GaugeLogTest, AGaugeThatCannotBeReadIsNotFlat) {
    const auto log = logOf(&Gauges::windows, [](int at) { return at == 30 ? -1L : 1L; });

    EXPECT_EQ(problems(log), "windows could not be read");
}

TEST(GaugeLogTest, TooFewReadingsProveNothing) {
    const GaugeLog log;

    EXPECT_EQ(problems(log), "only 0 readings, which prove nothing");
}

TEST(GaugeLogTest, TheTableShowsTheFirstAndTheLastReading) {
    const auto log = logOf(&Gauges::handles, [](int at) { return 1000L + at; });

    const std::string table = log.table();

    EXPECT_NE(table.find(" 1000 "), std::string::npos);
    EXPECT_NE(table.find(" 1059 "), std::string::npos);
}

}  // namespace
}  // namespace printpath
