#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

// The language of scenarios: which words begin a step, what may follow them, and where in a
// scenario they may stand. One table; the parser and the documentation's check walk it.
namespace printpath {

enum class ValueKind {
    Number,   // decimal or 0x..., between two bounds
    Text,     // a word or a quoted text, UTF-8
    Hex,      // bytes as pairs of hexadecimal digits, blanks between pairs allowed
    Control,  // a control id or its name
    Choice,   // one of a list of words; its number is the place in the list
    Choices,  // words of a list, separated by commas, or "none"; its number has a bit for each
    Key       // a key, perhaps with shift+, ctrl+ or alt+ in front
};

// When a step may be played.
enum class Phase {
    Anywhere,
    Preparation,  // while no monitor runs
    Start,        // starts the monitor
    Running,      // while the monitor runs
    Writing,      // while the monitor runs and the pipe has not been hung up
    Record,       // as Writing, and it writes one record
    HangUp,       // closes the pipe
    Repeat,       // begins a part that is played several times
    End,          // ends it
    Exit          // waits for the end of the monitor
};

struct Parameter {
    std::string_view name;
    ValueKind kind = ValueKind::Text;
    bool required = true;  // required ones stand in this order; others are written name=value
    std::int64_t least = 0;
    std::int64_t most = 0;
    std::string_view words = {};  // of Choice and Choices, separated by '|'
};

struct Keyword {
    std::string_view name;
    Phase phase = Phase::Anywhere;
    std::vector<Parameter> parameters;
    // Whether it writes to the registry, the spooler or files outside the scenario's own folder.
    bool changesSystem = false;
};

// All keywords, in the order in which the documentation explains them.
const std::vector<Keyword>& keywords();

// Null when there is no such keyword.
const Keyword* findKeyword(std::string_view name);

// The controls that have names, for scenarios that should read like a story.
struct ControlName {
    std::string_view name;
    int id;
};
const std::vector<ControlName>& controlNames();

}  // namespace printpath
