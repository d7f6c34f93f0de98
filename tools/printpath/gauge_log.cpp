#include "tools/printpath/gauge_log.h"

#include <algorithm>
#include <cstdio>

namespace printpath {

namespace {

constexpr std::size_t kFewestReadings = 5;
constexpr std::size_t kWarmUpShare = 5;
constexpr std::size_t kThirds = 3;
constexpr std::size_t kTableLines = 12;
// The heap grows in large pieces, and when it does depends on the timing of the thread that reads
// the pipe. One block lost with each of a million records is far more than this allowance.
constexpr long kMemoryAllowanceKiB = 2048;
// The system keeps as many device contexts as windows have painted at the same time. The allowance
// does not hide a leak: one object lost with each alert of a kind adds up to hundreds.
constexpr long kGdiAllowance = 8;

struct Row {
    const char* name;
    long Gauges::*value;
    long allowance;
};

constexpr Row kRows[] = {
    {"handles", &Gauges::handles, 0},
    {"windows", &Gauges::windows, 0},
    {"GDI objects", &Gauges::gdiObjects, kGdiAllowance},
    {"threads", &Gauges::threads, 0},
    {"memory KiB", &Gauges::memoryKiB, kMemoryAllowanceKiB},
};

}  // namespace

std::string GaugeLog::problems(long memoryOfARoundKiB) const {
    const std::size_t count = _readings.size();
    if (count < kFewestReadings)
        return "only " + std::to_string(count) + " readings, which prove nothing";
    const std::size_t warm = count / kWarmUpShare;
    const std::size_t third = (count - warm) / kThirds;
    const auto rounds =
        static_cast<long>(_readings.back().round - _readings[warm + third - 1].round);
    std::string problems;
    for (const Row& row : kRows) {
        const auto value = [&](std::size_t at) { return _readings[at].gauges.*row.value; };
        const auto highest = [&](std::size_t from, std::size_t to) {
            long most = value(from);
            for (std::size_t at = from; at < to; ++at)
                most = std::max(most, value(at));
            return most;
        };
        const auto unread = [&](const Reading& reading) { return reading.gauges.*row.value < 0; };
        long allowance = row.allowance;
        if (row.value == &Gauges::memoryKiB) allowance += rounds * memoryOfARoundKiB;
        const long before = highest(warm, warm + third);
        const long after = highest(count - third, count);
        const std::string separator = problems.empty() ? "" : ", ";
        if (std::any_of(_readings.begin(), _readings.end(), unread))
            problems += separator + row.name + " could not be read";
        else if (after > before + allowance)
            problems += separator + row.name + " " + std::to_string(before) + " -> " +
                        std::to_string(after);
    }
    return problems;
}

std::string GaugeLog::table() const {
    char line[128];
    std::snprintf(line, sizeof line, "%10s %8s %8s %8s %8s %11s\n", "round", "handles", "windows",
                  "GDI", "threads", "memory KiB");
    std::string text = line;
    const std::size_t count = _readings.size();
    const std::size_t lines = std::min(count, kTableLines);
    for (std::size_t at = 0; at < lines; ++at) {
        const auto& [round, gauges] = _readings[lines == 1 ? 0 : at * (count - 1) / (lines - 1)];
        std::snprintf(line, sizeof line, "%10lld %8ld %8ld %8ld %8ld %11ld\n",
                      static_cast<long long>(round), gauges.handles, gauges.windows,
                      gauges.gdiObjects, gauges.threads, gauges.memoryKiB);
        text += line;
    }
    return text;
}

}  // namespace printpath
