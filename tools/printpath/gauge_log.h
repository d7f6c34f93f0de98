#pragma once

#include "tools/gauges/gauges.h"

#include <cstdint>
#include <string>
#include <vector>

namespace printpath {

// Readings of the gauges during the rounds of a scenario. At each reading the monitor is in the
// same state as at the one before.
//
// A gauge is flat when the highest reading of the last third is not above the highest of the first
// third after the warm-up, which is the first fifth of the run. The highest readings are compared
// because single readings vary: the system keeps some objects for a while. Counts other than GDI
// objects have no allowance, so that even one lost object in each third is noticed.
class GaugeLog {
public:
    void add(std::int64_t round, const Gauges& gauges) { _readings.push_back({round, gauges}); }

    // Names every gauge that is not flat, for example "handles 23 -> 25"; empty when all are flat.
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
