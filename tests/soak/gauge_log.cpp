#include "tests/soak/gauge_log.h"

#include <algorithm>
#include <cstdio>

namespace soak {

namespace {

constexpr std::size_t kFewestReadings = 5;
constexpr std::size_t kWarmUpShare = 5;
constexpr std::size_t kThirds = 3;
constexpr std::size_t kTableLines = 12;
// The heap takes memory in pieces, and where a block comes to lie depends on when the thread that
// reads the pipe runs. Two bytes lost with each of a million records are more than this.
constexpr long kMemoryAllowanceKiB = 2048;
// Under Wine the system keeps a dozen small blocks for every dialog, also for one that does
// nothing.
constexpr long kMemoryOfAnAlertKiB = 1;
// The system keeps device contexts for windows that paint at the same time, and what belongs to
// them, for as many as there have been at once. One object lost with any kind of alert comes to
// hundreds.
constexpr long kGdiAllowance = 8;

struct Row {
    const char* name;
    long Gauges::*value;
    long allowance;
    long allowanceOfAnAlert;
};

constexpr Row kRows[] = {
    {"handles", &Gauges::handles, 0, 0},
    {"windows", &Gauges::windows, 0, 0},
    {"GDI objects", &Gauges::gdiObjects, kGdiAllowance, 0},
    {"threads", &Gauges::threads, 0, 0},
    {"memory KiB", &Gauges::memoryKiB, kMemoryAllowanceKiB, kMemoryOfAnAlertKiB},
};

}  // namespace

std::vector<GaugeLog::Verdict> GaugeLog::verdicts() const {
    std::vector<Verdict> verdicts;
    for (const Row& row : kRows) {
        Verdict verdict{row.name, ""};
        const auto value = [&row](const Reading& reading) { return reading.gauges.*row.value; };
        const auto highest = [&](std::size_t from, std::size_t to) {
            long most = value(_readings[from]);
            for (std::size_t at = from; at < to; ++at)
                most = std::max(most, value(_readings[at]));
            return most;
        };
        if (_readings.size() < kFewestReadings) {
            verdict.problem = "only " + std::to_string(_readings.size()) + " readings";
        } else if (std::any_of(_readings.begin(), _readings.end(),
                               [&value](const Reading& reading) { return value(reading) < 0; })) {
            verdict.problem = "could not be read";
        } else {
            const std::size_t warm = _readings.size() / kWarmUpShare;
            const std::size_t third = (_readings.size() - warm) / kThirds;
            const long before = highest(warm, warm + third);
            const long after = highest(_readings.size() - third, _readings.size());
            const auto alerts =
                static_cast<long>(_readings.back().alerts - _readings[warm + third - 1].alerts);
            if (after > before + row.allowance + alerts * row.allowanceOfAnAlert)
                verdict.problem = std::to_string(before) + " -> " + std::to_string(after);
        }
        verdicts.push_back(std::move(verdict));
    }
    return verdicts;
}

std::string GaugeLog::table() const {
    char line[128];
    std::snprintf(line, sizeof line, "%10s %8s %8s %8s %8s %11s\n", _unit.c_str(), "handles",
                  "windows", "GDI", "threads", "memory KiB");
    std::string text = line;
    const std::size_t count = _readings.size();
    const std::size_t lines = std::min(count, kTableLines);
    for (std::size_t at = 0; at < lines; ++at) {
        const Reading& reading = _readings[lines == 1 ? 0 : at * (count - 1) / (lines - 1)];
        const Gauges& gauges = reading.gauges;
        std::snprintf(line, sizeof line, "%10llu %8ld %8ld %8ld %8ld %11ld\n",
                      static_cast<unsigned long long>(reading.at), gauges.handles, gauges.windows,
                      gauges.gdiObjects, gauges.threads, gauges.memoryKiB);
        text += line;
    }
    return text;
}

}  // namespace soak
