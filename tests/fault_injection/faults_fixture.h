#pragma once

#include "tests/support/allocation_faults.h"

#include <gtest/gtest.h>
#include <string>

namespace fault_injection {

// Each test makes every allocation of a scene fail, and runs once for each Mode.
class FaultsTest : public testing::TestWithParam<Mode> {
protected:
    // There must be at least `points` allocations, so that a scene without any is noticed, and none
    // may leak.
    static void failEachAllocation(const Scene& scene, const Check& check, long points = 0) {
        const Outcome outcome = everyAllocation(GetParam(), scene, check);
        EXPECT_GE(outcome.points, points);
        EXPECT_EQ(outcome.leakedAt, 0);
    }
};

inline const auto kBothModes = testing::Values(Mode::Once, Mode::FromThenOn);

inline std::string modeName(const testing::TestParamInfo<Mode>& tested) {
    return tested.param == Mode::Once ? "Once" : "FromThenOn";
}

}  // namespace fault_injection
