#pragma once

#include "platform/simulated/spin_lock.h"

#include <atomic>
#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

// The lines that the program wrote to the trace and to the debugger. Any thread may call.
class Diagnostics {
public:
    // Switches the trace on. Until then no line is kept, so that tests which count allocations and
    // benchmarks are not disturbed by the trace.
    void keepTrace();
    [[nodiscard]] std::vector<std::string> traceLines() const;
    [[nodiscard]] bool hasTraced(std::string_view line) const;
    [[nodiscard]] std::vector<std::string> debuggerTexts() const;
    void reset();

    // For the simulated services. A line for which there is no memory is dropped.
    [[nodiscard]] bool isTraceKept() const noexcept { return _isTraceKept; }
    void addTraceLine(std::string_view line) noexcept;
    void addDebuggerText(std::string_view text) noexcept;

private:
    std::atomic<bool> _isTraceKept{false};
    mutable SpinLock _lock;
    std::vector<std::string> _lines;
    std::vector<std::string> _texts;
};

}  // namespace platform::simulated
