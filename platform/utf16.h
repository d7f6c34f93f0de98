#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Text in UTF-16 units, as the registry and the spooler hold it: the same bytes wherever this is
// compiled, while a wchar_t is a whole character on some systems. Nothing fails but memory
// (std::bad_alloc). Any thread may call.
namespace platform {

namespace utf16 {
inline constexpr char32_t kFirstHigh = 0xD800, kFirstLow = 0xDC00, kPastLow = 0xE000;
inline constexpr char32_t kFirstOfPairs = 0x10000;
inline constexpr int kUnitBits = 10;  // each unit of a pair has so many bits of the character
inline constexpr char32_t kUnitMask = 0x3FF;
}  // namespace utf16

inline std::u16string toUtf16(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t character : text) {
        const auto value = static_cast<char32_t>(character);
        if (value < utf16::kFirstOfPairs) {
            units += static_cast<char16_t>(value);
            continue;
        }
        const char32_t beyond = value - utf16::kFirstOfPairs;
        units += static_cast<char16_t>(utf16::kFirstHigh +
                                       ((beyond >> utf16::kUnitBits) & utf16::kUnitMask));
        units += static_cast<char16_t>(utf16::kFirstLow + (beyond & utf16::kUnitMask));
    }
    return units;
}

// One unit of a pair without the other is kept as it is.
inline std::wstring fromUtf16(std::u16string_view units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i];
        const char32_t next = i + 1 < units.size() ? units[i + 1] : 0;
        const bool pair = unit >= utf16::kFirstHigh && unit < utf16::kFirstLow &&
                          next >= utf16::kFirstLow && next < utf16::kPastLow;
        if (pair && sizeof(wchar_t) > sizeof(char16_t)) {
            text += static_cast<wchar_t>(utf16::kFirstOfPairs +
                                         ((unit - utf16::kFirstHigh) << utf16::kUnitBits) +
                                         (next - utf16::kFirstLow));
            ++i;
        } else {
            text += static_cast<wchar_t>(unit);
        }
    }
    return text;
}

}  // namespace platform
