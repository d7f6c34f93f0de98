#pragma once

#include <string>
#include <vector>

// Collects the trace lines of the program for as long as it exists, without their line feeds. Only
// one object may exist at a time, and only one thread may trace.
class TraceLines {
public:
    TraceLines();
    ~TraceLines();
    TraceLines(const TraceLines&) = delete;
    TraceLines& operator=(const TraceLines&) = delete;

    [[nodiscard]] const std::vector<std::string>& all() const noexcept;
    [[nodiscard]] std::size_t count(const std::string& line) const;
    [[nodiscard]] bool contains(const std::string& line) const { return count(line) != 0; }
    void forget();
};
