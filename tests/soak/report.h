#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace soak {

class GaugeLog;

// What the soak says: progress on the screen of somebody who watches, what was wrong, the count.
class Report {
public:
    explicit Report(bool watched) : _watched(watched) {}

    void expect(bool holds, const std::string& what);
    // One check a gauge, and the table.
    void judge(const std::string& whose, const GaugeLog& log);
    void line(const std::string& text);
    // Rewrites one line of the screen, at most once a second.
    void progress(const std::string& what, std::uint64_t done, std::uint64_t all);

    int failed() const { return _failed; }
    std::string summary() const;

private:
    void clearProgress();

    bool _watched;
    int _passed = 0;
    int _failed = 0;
    ULONGLONG _progressAt = 0;
    std::size_t _progressUnits = 0;
};

}  // namespace soak
