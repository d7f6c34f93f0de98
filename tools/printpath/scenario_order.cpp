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
            if (step.keyword->name == "together" && !step["records"].turns.empty())
                return "the number of records cannot change from turn to turn";
            if (step.keyword->name == "together")
                _joined = static_cast<int>(step["records"].number);
            if (phase == Phase::Record && _joined > 0) --_joined;
            return {};
        case Phase::Repeat:
            if (!step["rounds"].turns.empty()) return "the number of rounds cannot change";
            _repeats.push_back(beginning());
            return {};
        case Phase::End: {
            if (_repeats.empty()) return "there is no \"repeat\" for it";
            const bool asFound = _repeats.back() == beginning();
            _repeats.pop_back();
            if (!asFound)
                return "the repeated steps must leave the monitor and its pipe as they found them";
            return {};
        }
        case Phase::Exit:
            if (!_running) return "no monitor runs here; \"start\" must come first";
            _running = false;
            return {};
    }
    return "this step has no place";
}

std::string ScenarioOrder::missingEnd() const {
    if (!_running) return {};
    return std::string(_hungUp ? "" : "hang-up\n") + "expect-exit 0\n";
}

std::string ScenarioOrder::atEnd() const {
    if (_joined > 0) return "\"together\" still waits for " + std::to_string(_joined) + " records";
    if (!_repeats.empty()) return "\"repeat\" has no \"end\"";
    if (!_started) return "the scenario never starts the monitor; \"start\" is missing";
    if (_running) return "the scenario ends while the monitor runs; \"expect-exit\" is missing";
    return {};
}

}  // namespace printpath
