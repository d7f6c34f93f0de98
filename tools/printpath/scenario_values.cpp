#include "tools/printpath/scenario_values.h"

#include "tools/printpath/key_press.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

namespace printpath {

namespace {

std::string expected(const Parameter& parameter, const std::string& what, const Word& word) {
    return "<" + std::string(parameter.name) + "> must be " + what + ", not \"" + word.text + "\"";
}

// The whole text must be a number: decimal with an optional minus, or hexadecimal after 0x.
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

std::string readNumber(const Parameter& parameter, const Word& word, Value& value) {
    const std::optional<std::int64_t> number = numberOf(word.text);
    if (!number || *number < parameter.least || *number > parameter.most)
        return expected(parameter,
                        "a number from " + std::to_string(parameter.least) + " to " +
                            std::to_string(parameter.most),
                        word);
    value.number = *number;
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

// The place of a word in "a|b|c", -1 when it is not there.
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
    value.number = placeOf(word.text, parameter.words);
    if (value.number < 0) return expected(parameter, "one of " + listed(parameter.words), word);
    return {};
}

std::string readChoices(const Parameter& parameter, const Word& word, Value& value) {
    value.number = 0;
    if (word.text == "none") return {};
    std::string_view rest = word.text;
    for (bool more = true; more;) {
        const std::size_t comma = rest.find(',');
        const int place = placeOf(rest.substr(0, comma), parameter.words);
        if (place < 0)
            return expected(
                parameter,
                "none, or some of " + listed(parameter.words) + " with commas between them", word);
        value.number |= std::int64_t{1} << place;
        more = comma != std::string_view::npos;
        if (more) rest.remove_prefix(comma + 1);
    }
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
