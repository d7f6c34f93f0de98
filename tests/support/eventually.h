#pragma once

#include "platform/thread.h"

#include <cstdint>

namespace test {

inline constexpr std::uint32_t kFailureMs = 20000;  // only a failing test waits this long

// Waits until the condition is true, for tests in which another thread makes it true. False when
// it was not true in time.
template <typename Condition>
bool eventually(Condition condition) {
    constexpr std::uint32_t kPollMs = 1;
    for (std::uint32_t waitedMs = 0; waitedMs < kFailureMs; waitedMs += kPollMs) {
        if (condition()) return true;
        platform::sleepFor(kPollMs);
    }
    return condition();
}

}  // namespace test
