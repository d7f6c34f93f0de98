#pragma once

#include <cstdint>

namespace platform {

// A handle of the operating system, as the framework's interfaces pass it around: not owned.
using NativeHandle = void*;

// What the system answers to an open that failed; an object that was never opened holds nullptr.
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
