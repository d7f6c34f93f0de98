#pragma once

#include <cstdint>
#include <string_view>

// Keeps the lines of platform/trace.h, in addition to its sink. Only trace.cpp calls this.
namespace platform {

// The file of the trace may grow to this size, and so may the older one beside it.
inline constexpr std::int64_t kTraceFileLimit = 4 << 20;

// Cheap after the first call. Any thread may ask.
[[nodiscard]] bool isTraceKept() noexcept;

// `line` has no line feed at its end. Called only if isTraceKept().
void keepTraceLine(std::string_view line) noexcept;

}  // namespace platform
