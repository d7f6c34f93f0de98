#include "tools/printpath/scenario_order.h"

#include "tools/printpath/keyword.h"

namespace printpath {

std::string ScenarioOrder::take(const Step& step) {
    const Phase phase = step.keyword->phase;
    if (_joined > 0 && phase != Phase::Record)
        return "\"together\" still waits for " + std::to_string(_joined) + " records";
    switch (phase) {
        case Phase::Anywhere:
            return {};
        case Phase::Preparation:
            if (_running) return "the monitor runs already; this stands before \"start\"";
            if (step.keyword->name == "no-pipe") _pipe = false;
            return {};
        case Phase::Start:
            if (_running) return "the monitor runs already; \"expect-exit\" ends a run";
            _started = _running = true;
            _hungUp = !_pipe;
            return {};
        case Phase::Running:
            return _running ? "" : "no monitor runs here; \"start\" must come first";
        case Phase::Writing:
        case Phase::Record:
        case Phase::HangUp:
            if (!_running) return "no monitor runs here; \"start\" must come first";
            if (_hungUp) return "there is no pipe to write to here";
            _hungUp = phase == Phase::HangUp;
            if (step.keyword->name == "together")
                _joined = static_cast<int>(step["records"].number);
            if (phase == Phase::Record && _joined > 0) --_joined;
            return {};
        case Phase::Exit:
            if (!_running) return "no monitor runs here; \"start\" must come first";
            _running = false;
            return {};
    }
    return "this step has no place";
}

std::string ScenarioOrder::atEnd() const {
    if (_joined > 0) return "\"together\" still waits for " + std::to_string(_joined) + " records";
    if (!_started) return "the scenario never starts the monitor; \"start\" is missing";
    if (_running) return "the scenario ends while the monitor runs; \"expect-exit\" is missing";
    return {};
}

}  // namespace printpath
