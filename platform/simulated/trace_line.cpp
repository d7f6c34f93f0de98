#include "platform/trace_line.h"

#include "platform/simulated/world.h"
#include "platform/trace.h"

namespace platform {

using simulated::world;

bool isTraceKept() noexcept {
    return world().diagnostics.isTraceKept();
}

void keepTraceLine(std::string_view line) noexcept {
    world().diagnostics.addTraceLine(line);
}

void debugOutput(const char* text) noexcept {
    world().diagnostics.addDebuggerText(text);
}

}  // namespace platform
