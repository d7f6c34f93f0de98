#pragma once

#include "tests/support/gauges.h"

#include <cstdint>
#include <string>
#include <vector>

namespace soak {

// Readings of the gauges along a run, each taken in the same state of the monitor.
//
// A gauge is flat when the highest of the last third is not above the highest of the first third
// after the warm-up, the first fifth of the run, in which every kind of alert has come once.
// Highest against highest, since single readings wander: the system keeps some things for a while.
// Counts have no allowance; one lost object in each third would show.
class GaugeLog {
public:
    // What is counted along the run, for the table: "records".
    explicit GaugeLog(std::string unit) : _unit(std::move(unit)) {}

    // `alerts`: how many the process that is read has opened so far.
    void add(std::uint64_t at, const Gauges& gauges, std::uint64_t alerts = 0) {
        _readings.push_back({at, gauges, alerts});
    }

    // Gauges that are judged, by name, and what is wrong with each; empty when it is flat.
    struct Verdict {
        std::string gauge;
        std::string problem;
    };
    std::vector<Verdict> verdicts() const;

    // Lines of the first reading, the last one, and some between.
    std::string table() const;

private:
    struct Reading {
        std::uint64_t at;
        Gauges gauges;
        std::uint64_t alerts;
    };

    std::string _unit;
    std::vector<Reading> _readings;
};

}  // namespace soak
