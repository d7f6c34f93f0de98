#pragma once

#include "tools/printpath/scenario.h"

#include <string>
#include <vector>

namespace printpath {

// Checks that steps stand where they can be played: records only between "start" and "hang-up",
// preparations only while no monitor runs, and so on.
class ScenarioOrder {
public:
    // Takes the next step. Returns what is wrong with its place, or nothing.
    std::string take(const Step& step);

    // The same for the end of the scenario.
    std::string atEnd() const;

private:
    bool _started = false;  // at least one "start" so far
    bool _running = false;
    bool _hungUp = false;
    bool _pipe = true;
    int _joined = 0;  // records that "together" still waits for

    // How the monitor and its pipe stood where a part began that is played several times.
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
