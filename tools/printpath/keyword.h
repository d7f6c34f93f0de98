#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The language of scenarios: the words that begin a step, the values that may follow them, and the
// places in a scenario where they are allowed. It is one table, which both the parser and the test
// of the documentation use.
namespace printpath {

enum class ValueKind {
    Number,   // decimal or 0x..., between two bounds
    Text,     // a word or a quoted text, UTF-8
    Hex,      // bytes as pairs of hexadecimal digits, blanks between pairs allowed
    Control,  // a control id or its name
    Choice,   // one of a list of words; its number is its position in the list, from 0
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
    End,          // ends such a part
    Exit          // waits for the end of the monitor
};

struct Parameter {
    std::string_view name;
    ValueKind kind = ValueKind::Text;
    bool required = true;  // written without a name, in this order; others as name=value
    std::int64_t least = 0;
    std::int64_t most = 0;
    std::string_view words = {};  // the words of Choice and Choices, separated by '|'
};

struct Keyword {
    std::string_view name;
    Phase phase = Phase::Anywhere;
    std::vector<Parameter> parameters;
    // Whether the step writes to the registry, to the spooler or to files of the system, which is
    // refused on a machine that somebody uses.
    bool changesSystem = false;
};

// All keywords, in the order in which the documentation explains them.
const std::vector<Keyword>& keywords();

// The keyword of this name, or null.
const Keyword* findKeyword(std::string_view name);

// How a step is written, such as "status <status> [id=...]".
std::string usageOf(const Keyword& keyword);

// Names for controls, so that a scenario can be read without knowing their numbers.
struct ControlName {
    std::string_view name;
    int id;
};
const std::vector<ControlName>& controlNames();

}  // namespace printpath
