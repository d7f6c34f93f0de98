#include "tools/printpath/live_session.h"

#include "tools/printpath/keyword.h"

#include <cstddef>
#include <utility>

namespace printpath {

namespace {

constexpr std::size_t kLineUnits = 78;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// Appends the word to a text of lines that a narrow window shows whole.
void appendWord(std::string& text, std::string_view word) {
    const std::size_t begin = text.rfind('\n') == std::string::npos ? 0 : text.rfind('\n') + 1;
    if (!text.empty()) text += text.size() - begin + 1 + word.size() > kLineUnits ? '\n' : ' ';
    text += word;
}

LiveAnswer keywordsThatBegin(std::string_view prefix) {
    std::string text;
    for (const Keyword& keyword : keywords())
        if (keyword.name.starts_with(prefix)) appendWord(text, keyword.name);
    if (text.empty())
        return {LiveWish::Refuse, "no keyword begins with \"" + std::string(prefix) + "\""};
    return {LiveWish::Tell, std::move(text)};
}

std::string valuesOf(const Parameter& parameter) {
    std::string words(parameter.words);
    for (std::size_t at = 0; (at = words.find('|', at)) != std::string::npos;)
        words.replace(at, 1, ", ");
    switch (parameter.kind) {
        case ValueKind::Number:
            return "a number from " + std::to_string(parameter.least) + " to " +
                   std::to_string(parameter.most);
        case ValueKind::Text:
            return "a word, or a text in quotes";
        case ValueKind::Hex:
            return "bytes, such as \"56 45 4C 4F\"";
        case ValueKind::Control:
            for (const ControlName& control : controlNames())
                appendWord(words, control.name);
            return "a number, or one of:\n" + words;
        case ValueKind::Choice:
            return "one of " + words;
        case ValueKind::Choices:
            return "none, or some of these with commas between them: " + words;
        case ValueKind::Key:
            return "a key, such as enter, alt+o or shift+tab";
    }
    return {};
}

LiveAnswer describe(std::string_view name) {
    const Keyword* const keyword = findKeyword(name);
    if (keyword == nullptr) return keywordsThatBegin(name);
    std::string text = usageOf(*keyword);
    for (const Parameter& parameter : keyword->parameters)
        text += "\n  " + std::string(parameter.name) + ": " + valuesOf(parameter);
    if (keyword->changesSystem) text += "\n  changes this system";
    return {LiveWish::Tell, std::move(text)};
}

}  // namespace

LiveAnswer LiveSession::take(std::string_view line) {
    const std::string_view text = trimmed(line);
    const std::size_t blank = text.find_first_of(" \t");
    const std::string_view first = text.substr(0, blank);
    const std::string_view rest =
        blank == std::string_view::npos ? std::string_view() : trimmed(text.substr(blank));
    if (text == "quit") return {LiveWish::Quit, {}};
    if (text == "help") return {LiveWish::Tell, liveHelp()};
    if (text == "history")
        return {LiveWish::Tell, _history.empty() ? "no step has been played yet" : _history};
    if (first == "help") return describe(rest);
    if (first == "save") {
        // A name with blanks may stand in quotes; backslashes within it are its own.
        std::string name(rest);
        std::erase(name, '"');
        if (name.empty()) return {LiveWish::Refuse, "name the file: save FILE"};
        return {LiveWish::Save, std::move(name)};
    }
    if (rest == "?") return describe(first);
    if (rest.empty() && text.ends_with('?'))
        return keywordsThatBegin(text.substr(0, text.size() - 1));
    return takeStep(line);
}

LiveAnswer LiveSession::takeStep(std::string_view line) {
    Step step;
    std::string error = parseLine(line, step);
    if (!error.empty()) return {LiveWish::Refuse, std::move(error)};
    if (step.keyword == nullptr) return {};
    if (_pending.steps.empty()) _before = _order;
    const ScenarioOrder order = _order;
    error = _order.take(step);
    if (!error.empty()) {
        _order = order;
        return {LiveWish::Refuse, std::string(step.keyword->name) + ": " + error};
    }
    step.line = ++_line;
    _pending.steps.push_back(std::move(step));
    return {_order.repeats() ? LiveWish::Nothing : LiveWish::Play, {}};
}

void LiveSession::succeeded() {
    for (const Step& step : _pending.steps)
        _history += step.written + "\n";
    _pending = {};
}

void LiveSession::failed(bool monitorRuns) {
    // A step that failed may have started the monitor, or seen its end, all the same.
    if (_order.running() != _before.running() && _order.running() == monitorRuns)
        return succeeded();
    _order = _before;
    _pending = {};
}

std::variant<std::string, ScenarioError> LiveSession::saved() const {
    if (!_pending.steps.empty()) return ScenarioError{0, "the repeated part has no \"end\" yet"};
    std::string text = "about \"Saved from printpath live\"\n\n" + _history + _order.missingEnd();
    auto parsed = parseScenario(text);
    if (const auto* error = std::get_if<ScenarioError>(&parsed)) return *error;
    return text;
}

const char* liveHelp() {
    return R"(Type the steps of a scenario one by one, for example:
  start
  printer "Beamline K7400" USB001
  document-start 7 "Annual report.pdf"
  status 41100
  wait-dialog "out of paper"
  press ok
  hang-up
  expect-exit 0

?               all keywords
st?             the keywords that begin with "st"
status ?        what may follow "status"; so does: help status
history         the steps that went well
save FILE       saves them as a scenario; what ends the monitor is added
help            this text
quit            ends, and ends a monitor that still runs

The steps between "repeat" and "end" are played once "end" is typed.
docs/scenarios.md explains every step.)";
}

}  // namespace printpath
