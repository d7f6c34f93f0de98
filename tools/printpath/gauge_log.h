#pragma once

#include "tools/gauges/gauges.h"

#include <cstdint>
#include <string>
#include <vector>

namespace printpath {

// Readings of the gauges along the rounds of a scenario, each taken in the same state of the
// monitor.
//
// A gauge is flat when the highest reading of the last third is not above the highest of the first
// third after the warm-up, the first fifth of the run. Highest against highest, because single
// readings vary: the system keeps some objects for a while. Counts have no allowance, so that one
// object lost in each third shows.
class GaugeLog {
public:
    void add(std::int64_t round, const Gauges& gauges) { _readings.push_back({round, gauges}); }

    // Every gauge that is not flat, for example "handles 23 -> 25"; empty when all are.
    // `memoryOfARoundKiB` is how much memory each round may keep.
    std::string problems(long memoryOfARoundKiB) const;

    // Lines of the first reading, the last one, and some between.
    std::string table() const;

private:
    struct Reading {
        std::int64_t round;
        Gauges gauges;
    };

    std::vector<Reading> _readings;
};

}  // namespace printpath
