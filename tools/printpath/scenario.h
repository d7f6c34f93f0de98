#pragma once

#include "tools/printpath/keyword.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace printpath {

// Numbers from the first to the last, both included.
struct NumberRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

// What a scenario wrote for one parameter of a step.
struct Value {
    bool given = false;
    std::int64_t number = 0;  // of Number, Control, Choice, Choices
    std::string text;         // UTF-8: as written, without quotes
    std::string bytes;        // of Hex
    // Of a Number or Choice that is another one each time when the step is repeated, else empty.
    std::vector<NumberRange> turns;

    // Sets `number` to that of the turn, counted from 0; after the last turn the first comes again.
    void takeTurn(std::int64_t turn);
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
