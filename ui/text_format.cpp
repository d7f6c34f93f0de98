#include "ui/text_format.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

// Equally right with 17: both are longer than any 32-bit number.
constexpr std::size_t kNumberUnits = 16;  // longer than any 32-bit number

std::wstring numberText(std::int32_t number) {
    std::array<char, kNumberUnits> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return std::wstring(digits.data(), end);
}

bool placeholderKind(wchar_t letter, TextArgument::Kind& kind) {
    switch (letter) {
        case L's':
            kind = TextArgument::Kind::Wide;
            return true;
        case L'S':
            kind = TextArgument::Kind::Narrow;
            return true;
        case L'd':
            kind = TextArgument::Kind::Number;
            return true;
        default:
            return false;
    }
}

// A narrow text, such as the part number of a cartridge, is in the ANSI code page.
std::wstring inserted(const TextArgument& argument) {
    if (argument.kind == TextArgument::Kind::Number) return numberText(argument.number);
    if (argument.kind == TextArgument::Kind::Narrow) return platform::widened(argument.narrowText);
    return std::wstring(argument.wideText);
}

}  // namespace

std::wstring formatText(std::wstring_view format, std::initializer_list<TextArgument> arguments,
                        std::size_t units) {
    const std::size_t limit = std::max<std::size_t>(units, 1) - 1;
    std::wstring text;
    const TextArgument* next = arguments.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        const wchar_t following = i + 1 < format.size() ? format[i + 1] : L'\0';
        TextArgument::Kind kind{};
        if (format[i] != L'%') {
            text += format[i];
        } else if (following == L'%') {
            text += L'%';
            ++i;
        } else if (placeholderKind(following, kind)) {
            if (next != arguments.end()) {
                // An argument of another kind is passed over, and those behind it keep their place.
                if (next->kind == kind) text += inserted(*next);
                ++next;
            }
            ++i;
        } else {
            text += L'%';
        }
    }
    text.resize(std::min(text.size(), limit));
    return text;
}
