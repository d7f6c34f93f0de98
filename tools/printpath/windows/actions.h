#pragma once

#include "tools/printpath/scenario.h"

#include <string_view>
#include <vector>

namespace printpath {

class ScenarioRun;

// What a keyword does. Throws Failure when something is not as the scenario says.
struct Action {
    std::string_view keyword;
    void (*play)(ScenarioRun& run, const Step& step);
};

std::vector<Action> startActions();   // preparation, start, end, time
std::vector<Action> recordActions();  // what is written into the pipe
std::vector<Action> dialogActions();  // what the user does and sees
std::vector<Action> memoryActions();  // registry, cartridges, spooler
std::vector<Action> deviceActions();  // device pages and buttons, links, files

}  // namespace printpath
