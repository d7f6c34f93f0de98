#pragma once

#include <string>
#include <vector>

// Collects what the program traces while it lives, without the line feeds at the ends. One at a
// time, and for tests in which one thread traces.
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
