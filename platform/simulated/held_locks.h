#pragma once

namespace platform::simulated {

// How many critical sections the calling thread holds at this moment; a section that it has taken
// twice counts twice. For tests that ask whether something happens under a lock.
[[nodiscard]] int heldCriticalSections() noexcept;

// How often the calling thread has taken a kernel mutex since it began. On the system each time is
// two calls of the kernel, one to take it and one to give it back.
[[nodiscard]] long takenKernelMutexes() noexcept;

}  // namespace platform::simulated
