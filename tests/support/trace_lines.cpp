#include "tests/support/trace_lines.h"

#include "platform/trace.h"

#include <algorithm>

namespace {

std::vector<std::string> lines;

void take(const char* line) {
    std::string text(line);
    if (!text.empty() && text.back() == '\n') text.pop_back();
    lines.push_back(std::move(text));
}

}  // namespace

TraceLines::TraceLines() {
    lines.clear();
    platform::setTraceSink(take);
}

TraceLines::~TraceLines() {
    platform::setTraceSink(nullptr);
    lines.clear();
}

const std::vector<std::string>& TraceLines::all() const noexcept {
    return lines;
}

std::size_t TraceLines::count(const std::string& line) const {
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
}

void TraceLines::forget() {
    lines.clear();
}
