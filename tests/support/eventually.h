#pragma once

#include "platform/thread.h"

#include <cstdint>

namespace test {

inline constexpr std::uint32_t kFailureMs = 20000;  // reached by tests that fail, never by others

// Waits for something that another thread does. False when it never came.
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
