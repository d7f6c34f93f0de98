#include "tools/printpath/windows/player.h"

#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/stage.h"
#include "tools/printpath/windows/text_file.h"

#include <map>

namespace printpath {

namespace {

constexpr std::size_t kTraceTailBytes = 1500;

std::map<std::string_view, Action> allActions() {
    std::map<std::string_view, Action> all;
    for (const auto& part :
         {startActions(), recordActions(), dialogActions(), memoryActions(), deviceActions()})
        for (const Action& action : part)
            all.emplace(action.keyword, action);
    for (const Keyword& keyword : keywords())
        if (!all.contains(keyword.name))
            throw std::logic_error("no action for " + std::string(keyword.name));
    return all;
}

std::string tailOf(const std::string& trace) {
    if (trace.size() <= kTraceTailBytes) return trace;
    const std::size_t line = trace.find('\n', trace.size() - kTraceTailBytes);
    return "...\n" +
           trace.substr(line == std::string::npos ? trace.size() - kTraceTailBytes : line + 1);
}

// What ended the scenario, for somebody who was not there.
void report(Stage& stage, Timeline& timeline, const Options& options, const Step& step,
            const std::string& what) {
    timeline.problem(pathText(options.scenario.filename()) + ":" + std::to_string(step.line) +
                     ": " + std::string(step.keyword->name) + ": " + what);
    const std::string trace = stage.trace();
    if (!trace.empty()) timeline.plain("the monitor's trace ends with:\n" + tailOf(trace));
    if (stage.deviceStage) timeline.plain("the device's log:\n" + stage.deviceStage->log());
}

// Before anything is played, so that a refused scenario has changed nothing.
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

}  // namespace

Outcome playScenario(const Scenario& scenario, const Options& options) {
    const std::map<std::string_view, Action> actions = allActions();
    requireAllowedChanges(scenario, options);
    Timeline timeline;
    timeline.plain(pathText(options.scenario.filename()) + ": " + scenario.about);
    Stage stage(options, timeline);
    for (const Step& step : scenario.steps) {
        if (step.keyword->name == "about") continue;
        timeline.step(step.written);
        try {
            actions.at(step.keyword->name).play(stage, step);
            if (stage.started()) stage.noticeDialogs();
        } catch (const Failure& failure) {
            report(stage, timeline, options, step, failure.what());
            return failure.outcome();
        } catch (const std::exception& error) {
            report(stage, timeline, options, step, error.what());
            return Outcome::Unusable;
        }
    }
    timeline.note("all as expected");
    return Outcome::AsExpected;
}

}  // namespace printpath
