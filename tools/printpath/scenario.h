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
    std::int64_t number = 0;  // set for Number, Control, Choice and Choices
    std::string text;         // as written, without quotes, in UTF-8
    std::string bytes;        // set for Hex
    // The numbers of a Number or Choice that changes each time the step is repeated, else empty.
    std::vector<NumberRange> turns;

    // Sets `number` to the number of this turn, counted from 0. After the last number the first one
    // comes again.
    void takeTurn(std::int64_t turn);
};

struct Step {
    int line = 0;
    const Keyword* keyword = nullptr;  // a row of the table, which exists until the program ends
    std::vector<Value> values;         // one for each parameter of the keyword, in its order
    std::string written;               // the line without indentation and comment

    // The value of a parameter of this keyword. Throws if the keyword has no such parameter, which
    // is an error in this program and not in the scenario.
    const Value& operator[](std::string_view parameter) const;
};

struct Scenario {
    std::string about;  // the text of the first "about" step
    std::vector<Step> steps;
};

}  // namespace printpath
