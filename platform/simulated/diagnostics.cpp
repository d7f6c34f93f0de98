#include "platform/simulated/diagnostics.h"

#include <algorithm>
#include <new>

namespace platform::simulated {
namespace {

void append(std::vector<std::string>& list, std::string_view text) noexcept {
    try {
        list.emplace_back(text);
    } catch (const std::bad_alloc&) {
        return;
    }
}

}  // namespace

void Diagnostics::keepTrace() {
    _isTraceKept = true;
}

std::vector<std::string> Diagnostics::traceLines() const {
    const SpinScope scope(_lock);
    return _lines;
}

bool Diagnostics::hasTraced(std::string_view line) const {
    const SpinScope scope(_lock);
    return std::find(_lines.begin(), _lines.end(), line) != _lines.end();
}

std::vector<std::string> Diagnostics::debuggerTexts() const {
    const SpinScope scope(_lock);
    return _texts;
}

void Diagnostics::reset() {
    std::vector<std::string> lines;
    std::vector<std::string> texts;
    const SpinScope scope(_lock);
    lines.swap(_lines);
    texts.swap(_texts);
    _isTraceKept = false;
}

void Diagnostics::addTraceLine(std::string_view line) noexcept {
    const SpinScope scope(_lock);
    append(_lines, line);
}

void Diagnostics::addDebuggerText(std::string_view text) noexcept {
    const SpinScope scope(_lock);
    append(_texts, text);
}

}  // namespace platform::simulated
