#include "platform/clock.h"

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

}  // namespace
