#pragma once

#include "tools/printpath/keyword.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace printpath {

// What a scenario wrote for one parameter of a step.
struct Value {
    bool given = false;
    std::int64_t number = 0;  // of Number, Control, Choice, Choices
    std::string text;         // UTF-8: as written, without quotes
    std::string bytes;        // of Hex
};

struct Step {
    int line = 0;
    const Keyword* keyword = nullptr;  // of the table, lives as long as the program
    std::vector<Value> values;         // one for each parameter of the keyword, in its order
    std::string written;               // the line without indentation and comment

    // The value of a parameter of this keyword; naming another is an error of the program and
    // throws.
    const Value& operator[](std::string_view parameter) const;
};

struct Scenario {
    std::string about;  // the text of the first "about" step
    std::vector<Step> steps;
};

}  // namespace printpath
