#pragma once

#include <cstdint>

namespace platform {

// A handle of the operating system. Whoever gets one through an interface does not own it.
using NativeHandle = void*;

// The system returns this when a file or pipe cannot be opened. A handle never opened is null.
inline NativeHandle invalidHandle() noexcept {
    return reinterpret_cast<NativeHandle>(static_cast<std::intptr_t>(-1));
}

// Error numbers of the system that this program tests or reports.
inline constexpr std::uint32_t kSuccess = 0;
inline constexpr std::uint32_t kFileNotFound = 2;
inline constexpr std::uint32_t kInvalidHandleError = 6;
inline constexpr std::uint32_t kBrokenPipe = 109;
inline constexpr std::uint32_t kModuleNotFound = 126;
inline constexpr std::uint32_t kProcedureNotFound = 127;
inline constexpr std::uint32_t kMoreData = 234;

}  // namespace platform
