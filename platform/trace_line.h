#pragma once

#include <string_view>

// Where the lines of platform/trace.h go besides the sink; known to the trace alone.
namespace platform {

// Cheap after the first call. Any thread may ask.
[[nodiscard]] bool isTraceKept() noexcept;

// `line` has no line feed at its end. Called only where the trace is kept.
void keepTraceLine(std::string_view line) noexcept;

}  // namespace platform
