#include "platform/trace.h"

#include "platform/trace_line.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace platform {
namespace {

std::atomic<TraceSink> traceSink{nullptr};

}  // namespace

// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks the arguments against the format
void trace(const char* format, ...) noexcept {
    const TraceSink sink = traceSink.load(std::memory_order_acquire);
    const bool isKept = isTraceKept();
    // Before the line is made: nearly every run keeps no trace, and formatting would cost it time.
    if (sink == nullptr && !isKept) return;

    char line[kTraceLimit + 1];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    if (length < 0) return;

    auto units = static_cast<std::size_t>(std::min(length, kTraceLimit));
    if (units > 0 && line[units - 1] == '\n') line[--units] = '\0';
    if (isKept) keepTraceLine(std::string_view(line, units));
    if (sink != nullptr) sink(line);
}

void setTraceSink(TraceSink sink) noexcept {
    traceSink.store(sink, std::memory_order_release);
}

}  // namespace platform
