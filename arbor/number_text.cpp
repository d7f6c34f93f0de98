#include "arbor/number_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <limits>

namespace arbor {

namespace {

constexpr std::uint32_t kOverflow = std::numeric_limits<std::uint32_t>::max();
constexpr int kSignificantDigits = 6;
// Equally right with 33: one byte of room more.
constexpr std::size_t kLongestGeneral = 32;  // a sign, the digits, a point, an exponent
constexpr unsigned kNoDigit = 99;

template <typename Char>
bool isBlank(Char c) noexcept {
    return c == Char(' ') || (c >= Char('\t') && c <= Char('\r'));
}

template <typename Char>
unsigned digitOf(Char c) noexcept {
    if (c >= Char('0') && c <= Char('9')) return static_cast<unsigned>(c - Char('0'));
    if (c >= Char('a') && c <= Char('f')) return static_cast<unsigned>(c - Char('a')) + 10;
    if (c >= Char('A') && c <= Char('F')) return static_cast<unsigned>(c - Char('A')) + 10;
    return kNoDigit;
}

// Steps over blanks and one sign; returns whether the sign was a minus.
template <typename Char>
bool skipSign(const Char*& text) noexcept {
    while (isBlank(*text))
        ++text;
    const bool negative = *text == Char('-');
    if (negative || *text == Char('+')) ++text;
    return negative;
}

// Chooses the base by the prefix and steps over "0x" where a hexadecimal digit follows it.
template <typename Char>
unsigned takeBase(const Char*& text) noexcept {
    if (*text != Char('0')) return 10;
    const bool marked = text[1] == Char('x') || text[1] == Char('X');
    if (!marked || digitOf(text[2]) == kNoDigit) return 8;
    text += 2;
    return 16;
}

template <typename Char>
std::uint32_t parseUnsigned(const Char* text) noexcept {
    const bool negative = skipSign(text);
    const unsigned base = takeBase(text);

    std::uint64_t value = 0;
    for (unsigned digit = digitOf(*text); digit < base; digit = digitOf(*++text)) {
        value = value * base + digit;
        if (value > kOverflow) return kOverflow;
    }
    const auto number = static_cast<std::uint32_t>(value);
    return negative ? 0 - number : number;
}

template <typename Char>
bool parseSigned(const Char* text, std::int32_t& value) noexcept {
    const bool negative = skipSign(text);
    if (digitOf(*text) >= 10) return false;

    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (unsigned digit = digitOf(*text); digit < 10; digit = digitOf(*++text)) {
        number = number * 10 + digit;
        number = std::min(number, kLargest + 1);
    }
    if (negative) {
        value = static_cast<std::int32_t>(-number);
    } else {
        value = static_cast<std::int32_t>(std::min(number, kLargest));
    }
    return true;
}

template <typename Number>
std::string textOf(Number value) {
    char buffer[32];  // Equally right with 33: one byte of room more.
    const auto end = std::to_chars(std::begin(buffer), std::end(buffer), value);
    return {std::begin(buffer), end.ptr};
}

}  // namespace

std::uint32_t parsedNumber(const char* text) noexcept {
    return parseUnsigned(text);
}
std::uint32_t parsedNumber(const wchar_t* text) noexcept {
    return parseUnsigned(text);
}

bool parsedDecimal(const char* text, std::int32_t& value) noexcept {
    return parseSigned(text, value);
}
bool parsedDecimal(const wchar_t* text, std::int32_t& value) noexcept {
    return parseSigned(text, value);
}

std::string decimalText(std::int32_t value) {
    return textOf(value);
}
std::string decimalText(std::uint64_t value) {
    return textOf(value);
}

// Uses printf: std::to_chars for floating-point numbers would add 190 KB of tables to the program.
std::string generalText(double value) {
    char text[kLongestGeneral];
    const int written = std::snprintf(text, sizeof text, "%.*g", kSignificantDigits, value);
    return std::string(text, static_cast<std::size_t>(written));
}

}  // namespace arbor
