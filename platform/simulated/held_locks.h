#pragma once

namespace platform::simulated {

// How many critical sections the calling thread holds at this moment; a section that it has taken
// twice counts twice. For tests that ask whether something happens under a lock.
[[nodiscard]] int heldCriticalSections() noexcept;

}  // namespace platform::simulated
