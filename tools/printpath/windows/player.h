#pragma once

#include "tools/printpath/scenario.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/options.h"

namespace printpath {

class ScenarioRun;

// Throws Failure if the options or steps change this system and the options do not allow it. Call
// it before the first step is played, so that what is refused has changed nothing.
void requireAllowedChanges(const Scenario& scenario, const Options& options);

// Plays the steps in the run. What fails is reported in its timeline and ends them.
Outcome playSteps(const Scenario& scenario, ScenarioRun& run);

// Plays a scenario from its start to its end and prints its timeline.
Outcome playScenario(const Scenario& scenario, const Options& options);

}  // namespace printpath
