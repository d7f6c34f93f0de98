#include "tools/printpath/scenario_parser.h"

#include "tools/printpath/keyword.h"
#include "tools/printpath/scenario_order.h"
#include "tools/printpath/scenario_values.h"
#include "tools/printpath/scenario_words.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace printpath {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::size_t parameterNamed(const Keyword& keyword, std::string_view name) {
    for (std::size_t i = 0; i < keyword.parameters.size(); ++i)
        if (!keyword.parameters[i].required && keyword.parameters[i].name == name) return i;
    return keyword.parameters.size();
}

// Reads the words after the keyword as its parameters. Returns what is wrong, or an empty text.
std::string readArguments(Step& step, const std::vector<Word>& words) {
    const Keyword& keyword = *step.keyword;
    step.values.resize(keyword.parameters.size());
    std::size_t next = 0;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const Word& word = words[i];
        std::size_t place = 0;
        if (!word.name.empty()) {
            place = parameterNamed(keyword, word.name);
            if (place == keyword.parameters.size())
                return quoted(word.name + "=") +
                       " is no option here; expected: " + usageOf(keyword) +
                       " (put a text that holds '=' in quotes)";
            if (step.values[place].given) return quoted(word.name + "=") + " is given twice";
        } else {
            while (next < keyword.parameters.size() && !keyword.parameters[next].required)
                ++next;
            if (next == keyword.parameters.size())
                return quoted(word.text) + " is too much; expected: " + usageOf(keyword);
            place = next++;
        }
        std::string error = readValue(keyword.parameters[place], word, step.values[place]);
        if (!error.empty()) return error;
    }
    for (std::size_t i = 0; i < keyword.parameters.size(); ++i)
        if (keyword.parameters[i].required && !step.values[i].given)
            return "<" + std::string(keyword.parameters[i].name) +
                   "> is missing; expected: " + usageOf(keyword);
    return {};
}

std::string readStep(std::string_view line, const std::vector<Word>& words, Step& step) {
    const Word& first = words.front();
    const Keyword* const keyword =
        first.quoted || !first.name.empty() ? nullptr : findKeyword(first.text);
    if (keyword == nullptr)
        return "a step must begin with a keyword, and " + quoted(first.text) +
               " is none (printpath --keywords lists them)";
    step.keyword = keyword;
    step.written = line.substr(line.find_first_not_of(" \t"));
    const std::string error = readArguments(step, words);
    return error.empty() ? error : std::string(keyword->name) + ": " + error;
}

class ScenarioReader {
public:
    std::variant<Scenario, ScenarioError> read(std::string_view text) {
        if (text.size() > kMostScenarioBytes)
            return ScenarioError{1, "a scenario has at most 1 MiB"};
        if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
            text.remove_prefix(kByteOrderMark.size());
        while (!text.empty()) {
            const std::size_t end = text.find('\n');
            std::string_view line = text.substr(0, end);
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            ++_line;
            const std::string error = readLine(line);
            if (!error.empty()) return ScenarioError{_line, error};
        }
        const std::string error = _order.atEnd();
        if (!error.empty()) return ScenarioError{_line == 0 ? 1 : _line, error};
        return std::move(_scenario);
    }

private:
    std::string readLine(std::string_view line) {
        Step step;
        std::string error = parseLine(line, step);
        if (!error.empty() || step.keyword == nullptr) return error;
        step.line = _line;
        error = _order.take(step);
        if (!error.empty()) return std::string(step.keyword->name) + ": " + error;
        if (step.keyword->name == "about" && _scenario.about.empty())
            _scenario.about = step["text"].text;
        _scenario.steps.push_back(std::move(step));
        return {};
    }

    Scenario _scenario;
    ScenarioOrder _order;
    int _line = 0;
};

}  // namespace

std::string parseLine(std::string_view line, Step& step) {
    if (line.size() > kMostLineBytes) return "a line has at most 16 KiB";
    if (!isUtf8(line)) return "the line is not UTF-8 text";
    for (const char c : line)
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t')
            return "the line holds a control character; write \\n, \\t or \\x.. in quotes";
    const LineWords split = splitWords(line);
    if (!split.error.empty()) return split.error;
    return split.words.empty() ? std::string() : readStep(line, split.words, step);
}

std::variant<Scenario, ScenarioError> parseScenario(std::string_view text) {
    return ScenarioReader().read(text);
}

}  // namespace printpath
