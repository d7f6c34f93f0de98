#include "tools/printpath/scenario_values.h"

#include "tools/printpath/key_press.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace printpath {

namespace {

std::string expected(const Parameter& parameter, const std::string& what, const Word& word) {
    return "<" + std::string(parameter.name) + "> must be " + what + ", not \"" + word.text + "\"";
}

// The text as a number: decimal with an optional minus sign, or hexadecimal after 0x. Nothing if a
// part of the text is not read.
std::optional<std::int64_t> numberOf(std::string_view text) {
    int base = 10;
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
        text.remove_prefix(2);
        base = 16;
        if (!text.empty() && text.front() == '-') return std::nullopt;
    }
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc() || stopped != end) return std::nullopt;
    return number;
}

// Calls `take` with each part of "a,b,c" until it returns false. Returns what the last call did.
template <typename Take>
bool eachPart(std::string_view text, Take take) {
    for (;;) {
        const std::size_t comma = text.find(',');
        if (!take(text.substr(0, comma))) return false;
        if (comma == std::string_view::npos) return true;
        text.remove_prefix(comma + 1);
    }
}

// Reads a range such as "1..9"; a single number is a range from this number to itself.
std::optional<NumberRange> rangeOf(const Parameter& parameter, std::string_view text) {
    const std::size_t dots = text.find("..");
    const auto first = numberOf(text.substr(0, dots));
    const auto last = dots == std::string_view::npos ? first : numberOf(text.substr(dots + 2));
    if (!first || !last || *first < parameter.least || *last > parameter.most || *last < *first)
        return std::nullopt;
    return NumberRange{*first, *last};
}

// Stores the ranges. A single number needs no turns, because it is the same in each of them.
void keepTurns(Value& value, std::vector<NumberRange> ranges) {
    value.number = ranges.front().first;
    if (ranges.size() > 1 || ranges.front().last != value.number) value.turns = std::move(ranges);
}

std::string readNumber(const Parameter& parameter, const Word& word, Value& value) {
    std::vector<NumberRange> ranges;
    const bool good = eachPart(word.text, [&](std::string_view part) {
        const std::optional<NumberRange> range = rangeOf(parameter, part);
        if (range) ranges.push_back(*range);
        return range.has_value();
    });
    if (!good)
        return expected(parameter,
                        "a number from " + std::to_string(parameter.least) + " to " +
                            std::to_string(parameter.most),
                        word);
    keepTurns(value, std::move(ranges));
    return {};
}

std::string readHex(const Parameter& parameter, const Word& word, Value& value) {
    std::string digits;
    for (const char c : word.text) {
        if (c != ' ')
            digits += c;
        else if (digits.size() % 2 != 0)
            break;
    }
    if (digits.size() % 2 != 0) return expected(parameter, "pairs of hexadecimal digits", word);
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        unsigned int byte = 0;
        const char* const end = digits.data() + at + 2;
        const auto [stopped, error] = std::from_chars(digits.data() + at, end, byte, 16);
        if (error != std::errc() || stopped != end)
            return expected(parameter, "pairs of hexadecimal digits", word);
        value.bytes += static_cast<char>(byte);
    }
    return {};
}

std::string readControl(const Parameter& parameter, const Word& word, Value& value) {
    for (const ControlName& control : controlNames()) {
        if (control.name == word.text) {
            value.number = control.id;
            return {};
        }
    }
    const std::optional<std::int64_t> number = numberOf(word.text);
    if (!number || *number < parameter.least || *number > parameter.most)
        return expected(parameter, "a control id from 0 to 65535 or the name of a control", word);
    value.number = *number;
    return {};
}

// The position of a word in a list such as "a|b|c", from 0; -1 if the list does not have it.
int placeOf(std::string_view word, std::string_view words) {
    for (int place = 0; !words.empty(); ++place) {
        const std::size_t bar = words.find('|');
        if (words.substr(0, bar) == word) return place;
        words.remove_prefix(bar == std::string_view::npos ? words.size() : bar + 1);
    }
    return -1;
}

std::string listed(std::string_view words) {
    std::string text;
    for (const char c : words)
        text += c == '|' ? std::string(", ") : std::string(1, c);
    return text;
}

std::string readChoice(const Parameter& parameter, const Word& word, Value& value) {
    std::vector<NumberRange> places;
    const bool good = eachPart(word.text, [&](std::string_view part) {
        const int place = placeOf(part, parameter.words);
        places.push_back({place, place});
        return place >= 0;
    });
    if (!good) return expected(parameter, "one of " + listed(parameter.words), word);
    keepTurns(value, std::move(places));
    return {};
}

std::string readChoices(const Parameter& parameter, const Word& word, Value& value) {
    value.number = 0;
    if (word.text == "none") return {};
    const bool good = eachPart(word.text, [&](std::string_view part) {
        const int place = placeOf(part, parameter.words);
        if (place >= 0) value.number |= std::int64_t{1} << place;
        return place >= 0;
    });
    if (!good)
        return expected(parameter,
                        "none, or some of " + listed(parameter.words) + " with commas between them",
                        word);
    return {};
}

std::string readKey(const Parameter& parameter, const Word& word) {
    if (parseKey(word.text)) return {};
    return expected(
        parameter,
        "a letter, a digit, enter, esc, tab, space, up, down, left, right, home, end or "
        "f4, perhaps after shift+, ctrl+ or alt+",
        word);
}

}  // namespace

std::string readValue(const Parameter& parameter, const Word& word, Value& value) {
    value.given = true;
    value.text = word.text;
    switch (parameter.kind) {
        case ValueKind::Number:
            return readNumber(parameter, word, value);
        case ValueKind::Text:
            return isUtf8(word.text) ? "" : "the text is not UTF-8";
        case ValueKind::Hex:
            return readHex(parameter, word, value);
        case ValueKind::Control:
            return readControl(parameter, word, value);
        case ValueKind::Choice:
            return readChoice(parameter, word, value);
        case ValueKind::Choices:
            return readChoices(parameter, word, value);
        case ValueKind::Key:
            return readKey(parameter, word);
    }
    return "this kind of value is unknown";
}

}  // namespace printpath
