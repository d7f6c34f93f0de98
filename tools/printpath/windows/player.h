#pragma once

#include "tools/printpath/scenario.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/options.h"

namespace printpath {

// Plays a scenario and prints its timeline.
Outcome playScenario(const Scenario& scenario, const Options& options);

}  // namespace printpath
