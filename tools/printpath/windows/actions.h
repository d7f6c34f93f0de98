#pragma once

#include "tools/printpath/scenario.h"

#include <string_view>
#include <vector>

namespace printpath {

class ScenarioRun;

// The function that plays the steps of a keyword. It throws Failure when something is not as the
// scenario says.
struct Action {
    std::string_view keyword;
    void (*play)(ScenarioRun& run, const Step& step);
};

// The cast loses nothing: the bounds in the table of keywords allow numbers of 32 bits only.
inline std::uint32_t numberOf(const Value& value) {
    return static_cast<std::uint32_t>(value.number);
}

std::vector<Action> startActions();   // preparation, start, end, time
std::vector<Action> recordActions();  // what is written into the pipe
std::vector<Action> dialogActions();  // what the user does and sees
std::vector<Action> memoryActions();  // registry, cartridges, spooler
std::vector<Action> deviceActions();  // device pages and buttons, links, files

}  // namespace printpath
