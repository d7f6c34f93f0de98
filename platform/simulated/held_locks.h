#pragma once

namespace platform::simulated {

// How many critical sections the calling thread holds at this moment, one counted as often as it
// was taken. For tests that ask whether something happens under a lock.
[[nodiscard]] int heldCriticalSections() noexcept;

}  // namespace platform::simulated
