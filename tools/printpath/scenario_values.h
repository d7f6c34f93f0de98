#pragma once

#include "tools/printpath/keyword.h"
#include "tools/printpath/scenario.h"
#include "tools/printpath/scenario_words.h"

#include <string>

namespace printpath {

// Reads one word as the value of a parameter. Returns what is wrong with it, or an empty text.
std::string readValue(const Parameter& parameter, const Word& word, Value& value);

}  // namespace printpath
