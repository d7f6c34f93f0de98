#pragma once

#include "tools/printpath/scenario.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace printpath {

struct ScenarioError {
    int line = 0;         // from 1
    std::string message;  // what is written there and what was expected
};

// A file or a line that is longer is not a scenario; somebody has named the wrong file.
inline constexpr std::size_t kMostScenarioBytes = std::size_t{1024} * 1024;
inline constexpr std::size_t kMostLineBytes = std::size_t{16} * 1024;

// Reads one line, given without its line end, as a step; whether the step may stand here is not
// checked. Returns what is wrong, or an empty text. A line without a step leaves `step` as it was.
std::string parseLine(std::string_view line, Step& step);

// Reads a whole scenario, or says what is wrong with its first wrong line. It does not open the
// files that steps name.
std::variant<Scenario, ScenarioError> parseScenario(std::string_view text);

}  // namespace printpath
