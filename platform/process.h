#pragma once

#include <cstdint>

namespace platform {

// What the run-time library of the system ends a process with after an invalid parameter.
inline constexpr std::uint32_t kInvalidParameterExit = 0xC0000417;

// Ends the process at once; no destructor runs. The simulated platform throws ProcessEnded instead.
// Any thread may call.
[[noreturn]] void endProcess(std::uint32_t exitCode);

}  // namespace platform
