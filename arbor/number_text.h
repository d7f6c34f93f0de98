#pragma once

#include <cstdint>
#include <string>

namespace arbor {

// Reads an unsigned 32-bit number with automatic base: 0x is hexadecimal, a leading 0 octal. White
// space and a sign may stand in front; reading stops at the first character that does not belong.
// No digits give 0, overflow gives 4294967295. Not strtoul, because a long has 32 bits on Windows
// and 64 where most tests run.
std::uint32_t parsedNumber(const char* text) noexcept;
std::uint32_t parsedNumber(const wchar_t* text) noexcept;

// Reads a signed decimal number as "%d" does. False, with `value` untouched, without digits; a
// number outside 32 bits is limited to the nearest.
bool parsedDecimal(const char* text, std::int32_t& value) noexcept;
bool parsedDecimal(const wchar_t* text, std::int32_t& value) noexcept;

// Decimal, or general notation with six significant digits. Throw std::bad_alloc.
std::string decimalText(std::int32_t value);
std::string decimalText(std::uint64_t value);
std::string generalText(double value);

}  // namespace arbor
