#include "platform/clock.h"

#include "platform/thread.h"

#include <gtest/gtest.h>
#include <ctime>

#ifndef _WIN32
#include "platform/simulated/world.h"
#endif

namespace {

TEST(ClockTest, TheTimeIsCountedInSecondsSince1970) {
    constexpr platform::UnixSeconds kTolerance = 5;
#ifndef _WIN32
    platform::simulated::world().time = std::time(nullptr);
#endif

    const platform::UnixSeconds difference = platform::now() - std::time(nullptr);

    EXPECT_LE(difference < 0 ? -difference : difference, kTolerance);
}

TEST(ClockTest, TheUptimeCountsMilliseconds) {
    const std::uint64_t start = platform::uptimeMs();

    platform::sleepFor(100);

    const std::uint64_t passed = platform::uptimeMs() - start;
    EXPECT_GE(passed, 84U);  // 100 less a step of the clock
    EXPECT_LT(passed, 20'000U);
}

}  // namespace
