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

// A number of 32 bits: the bounds in the table of keywords keep it that small.
inline std::uint32_t numberOf(const Value& value) {
    return static_cast<std::uint32_t>(value.number);
}

std::vector<Action> startActions();   // preparation, start, end, time
std::vector<Action> recordActions();  // what is written into the pipe
std::vector<Action> dialogActions();  // what the user does and sees
std::vector<Action> memoryActions();  // registry, cartridges, spooler
std::vector<Action> deviceActions();  // device pages and buttons, links, files

}  // namespace printpath
