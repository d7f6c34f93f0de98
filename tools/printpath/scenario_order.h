#pragma once

#include "tools/printpath/scenario.h"

#include <string>
#include <vector>

namespace printpath {

// Checks that each step is at a place where it can be played: records only between "start" and
// "hang-up", preparations only while no monitor runs, and so on.
class ScenarioOrder {
public:
    // Takes the next step. Returns what is wrong with its place, or an empty text.
    std::string take(const Step& step);

    // Returns what is missing at the end of the scenario, or an empty text.
    std::string atEnd() const;

    // Whether a monitor runs after the steps so far.
    bool running() const { return _running; }
    // Whether the steps so far end within a part that is repeated.
    bool repeats() const { return !_repeats.empty(); }
    // The steps, one on each line, that must follow so that the monitor has ended.
    std::string missingEnd() const;

private:
    bool _started = false;  // at least one "start" so far
    bool _running = false;
    bool _hungUp = false;
    bool _pipe = true;
    int _joined = 0;  // records that "together" still waits for

    // The state of the monitor and its pipe at the beginning of a part that is repeated.
    struct Beginning {
        bool running;
        bool hungUp;
        bool pipe;

        bool operator==(const Beginning&) const = default;
    };
    Beginning beginning() const { return {_running, _running && _hungUp, _pipe}; }
    std::vector<Beginning> _repeats;
};

}  // namespace printpath
