#include "tools/printpath/windows/player.h"

#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/text_file.h"

#include <algorithm>
#include <map>

namespace printpath {

namespace {

constexpr std::size_t kTailBytes = 1500;

bool isRepetition(const Keyword& keyword) {
    return keyword.phase == Phase::Repeat || keyword.phase == Phase::End;
}

std::map<std::string_view, Action> allActions() {
    std::map<std::string_view, Action> all;
    for (const auto& part :
         {startActions(), recordActions(), dialogActions(), memoryActions(), deviceActions()})
        for (const Action& action : part)
            all.emplace(action.keyword, action);
    for (const Keyword& keyword : keywords())
        if (!all.contains(keyword.name) && !isRepetition(keyword))
            throw std::logic_error("no action for " + std::string(keyword.name));
    return all;
}

// The last lines of a log.
std::string tailOf(const std::string& log) {
    if (log.size() <= kTailBytes) return log;
    const std::size_t line = log.find('\n', log.size() - kTailBytes);
    return "...\n" + log.substr(line == std::string::npos ? log.size() - kTailBytes : line + 1);
}

// Prints what ended the scenario and the last lines of the logs, so that a reader of the output can
// understand a failure without playing the scenario again.
void report(ScenarioRun& run, Timeline& timeline, const Options& options, const Step& step,
            const std::string& what) {
    timeline.problem(pathText(options.scenario.filename()) + ":" + std::to_string(step.line) +
                     ": " + std::string(step.keyword->name) + ": " + what);
    const std::string trace = run.trace();
    if (!trace.empty()) timeline.plain("the monitor's trace ends with:\n" + tailOf(trace));
    if (run.simulatedDevice)
        timeline.plain("the device's log ends with:\n" + tailOf(run.simulatedDevice->log()));
}

// Returns the steps in the order in which they are played, the steps of a repeated part as often as
// the part is repeated.
class StepOrder {
public:
    StepOrder(const Scenario& scenario, ScenarioRun& run)
        : _run(run), _steps(scenario.steps), _turns(_steps.size()) {}

    // Null after the last step. The step is valid until the next call.
    const Step* next() {
        for (; _at < _steps.size(); ++_at) {
            Step& step = _steps[_at];
            const Phase phase = step.keyword->phase;
            if (phase == Phase::Repeat)
                beginRound({_at, 1, step["rounds"].number});
            else if (phase == Phase::End)
                endRound();
            else
                break;
        }
        if (_at == _steps.size()) return nullptr;
        Step& step = _steps[_at];
        for (Value& value : step.values)
            value.takeTurn(_turns[_at]);
        ++_turns[_at++];
        return &step;
    }

private:
    struct Repeat {
        std::size_t place;  // position of its "repeat" step
        std::int64_t round;
        std::int64_t rounds;
    };

    void beginRound(const Repeat& repeat) {
        _repeats.push_back(repeat);
        showProgress();
    }

    void endRound() {
        Repeat repeat = _repeats.back();
        _repeats.pop_back();
        if (++repeat.round <= repeat.rounds) {
            _at = repeat.place;
            _repeats.push_back(repeat);
        }
        showProgress();
    }

    // Shows all lines of the first round, and of the later rounds a progress line now and then.
    void showProgress() {
        const bool repeated = std::any_of(_repeats.begin(), _repeats.end(),
                                          [](const Repeat& repeat) { return repeat.round > 1; });
        _run.timeline().setQuiet(repeated);
        if (_repeats.size() != 1) return;
        const auto& [place, round, rounds] = _repeats.front();
        _run.round = round;
        _run.rounds = rounds;
        const ULONGLONG now = ::GetTickCount64();
        if (now - _shownAt < kProgressMs) return;
        _shownAt = now;
        _run.timeline().progress("round " + std::to_string(round) + " of " +
                                 std::to_string(rounds));
    }

    ScenarioRun& _run;
    std::vector<Step> _steps;          // a copy, because its values change from turn to turn
    std::vector<std::int64_t> _turns;  // how often each step has been played
    std::vector<Repeat> _repeats;      // the parts being played, the outermost first
    std::size_t _at = 0;
    ULONGLONG _shownAt = ::GetTickCount64();
};

}  // namespace

void requireAllowedChanges(const Scenario& scenario, const Options& options) {
    if (options.systemChanges) return;
    constexpr char kRefused[] =
        " changes this system, which is refused; play it in a Wine prefix made for it, or allow it "
        "with --system-changes allow";
    if (options.clean) throw Failure(std::string("--clean") + kRefused, Outcome::Unusable);
    for (const Step& step : scenario.steps)
        if (step.keyword->changesSystem)
            throw Failure(pathText(options.scenario.filename()) + ":" + std::to_string(step.line) +
                              ": " + std::string(step.keyword->name) + kRefused,
                          Outcome::Unusable);
}

Outcome playSteps(const Scenario& scenario, ScenarioRun& run) {
    static const std::map<std::string_view, Action> actions = allActions();
    Timeline& timeline = run.timeline();
    const Options& options = run.options();
    StepOrder order(scenario, run);
    while (const Step* const step = order.next()) {
        if (step->keyword->name == "about") continue;
        timeline.step(step->written);
        try {
            actions.at(step->keyword->name).play(run, *step);
            if (run.started()) run.noticeDialogs();
        } catch (const Failure& failure) {
            report(run, timeline, options, *step, failure.what());
            return failure.outcome();
        } catch (const std::exception& error) {
            report(run, timeline, options, *step, error.what());
            return Outcome::Unusable;
        }
    }
    return Outcome::AsExpected;
}

Outcome playScenario(const Scenario& scenario, const Options& options) {
    requireAllowedChanges(scenario, options);
    Timeline timeline;
    timeline.plain(pathText(options.scenario.filename()) + ": " + scenario.about);
    ScenarioRun run(options, timeline);
    const Outcome outcome = playSteps(scenario, run);
    if (outcome == Outcome::AsExpected) timeline.note("all as expected");
    return outcome;
}

}  // namespace printpath
