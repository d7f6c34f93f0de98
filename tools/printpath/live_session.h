#pragma once

#include "tools/printpath/scenario.h"
#include "tools/printpath/scenario_order.h"
#include "tools/printpath/scenario_parser.h"

#include <string>
#include <string_view>
#include <variant>

namespace printpath {

// What a typed line asks for.
enum class LiveWish {
    Nothing,  // an empty line, or a step of a repeated part that has not ended yet
    Tell,     // `text` is the answer
    Refuse,   // `text` says what is wrong
    Play,     // the steps of toPlay() are to be played
    Save,     // `text` is the name of the file
    Quit
};

struct LiveAnswer {
    LiveWish wish = LiveWish::Nothing;
    std::string text;
};

// The steps of a scenario as they are typed one by one. It knows what may be typed next and keeps
// the steps that went well; playing them is the caller's.
class LiveSession {
public:
    // `line` has no line end.
    LiveAnswer take(std::string_view line);

    // After Play: the step, or a whole repeated part.
    const Scenario& toPlay() const { return _pending; }
    // The caller says how toPlay() went, before it takes the next line. Steps that failed are
    // forgotten, unless they have started the monitor or seen its end. `monitorRuns` is whether
    // there is a monitor whose end nobody has awaited.
    void succeeded();
    void failed(bool monitorRuns);

    // The steps that went well as a scenario that ends the monitor, or what is wrong with that.
    std::variant<std::string, ScenarioError> saved() const;

private:
    LiveAnswer takeStep(std::string_view line);

    ScenarioOrder _order;
    ScenarioOrder _before;  // the order before the pending steps
    Scenario _pending;
    std::string _history;  // with a line feed after each step
    int _line = 0;
};

// What `help` shows.
const char* liveHelp();

}  // namespace printpath
