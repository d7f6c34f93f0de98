#include "platform/text.h"

#include "platform/simulated/best_fits.h"

#include <algorithm>
#include <array>
#include <cstddef>

// The simulated code page is Windows-1252, with every best fit of the system. With a simpler code
// page, a test of a device's text could pass here and fail on Windows.
namespace platform {
namespace {

using simulated::BestFit;
using simulated::kBestFits;

constexpr char kDefaultCharacter = '?';
constexpr char32_t kFirstBeyondTheBytes = 0x100;
constexpr char32_t kFirstOfPairs = 0x10000;  // from here on a character has two UTF-16 units

// What the bytes 0x80 to 0x9F mean. Every other byte means the Unicode character of its number.
constexpr char32_t kFirstSpecial = 0x80;
constexpr std::array<char16_t, 32> kSpecials = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The full-width forms of the printable ASCII characters. They stand in ASCII order.
constexpr char32_t kFirstFullWidth = 0xFF01;
constexpr char32_t kLastFullWidth = 0xFF5E;
constexpr char32_t kFirstPrinted = 0x21;

char byteOf(char32_t byte) {
    return static_cast<char>(static_cast<unsigned char>(byte));
}

char narrowedCharacter(char32_t character) {
    const auto* const special = std::find(kSpecials.begin(), kSpecials.end(), character);
    if (special != kSpecials.end()) {
        return byteOf(kFirstSpecial + static_cast<char32_t>(special - kSpecials.begin()));
    }
    const bool isSpecialByte =
        character >= kFirstSpecial && character < kFirstSpecial + kSpecials.size();
    if (character < kFirstBeyondTheBytes && !isSpecialByte) return byteOf(character);
    if (character >= kFirstFullWidth && character <= kLastFullWidth) {
        return byteOf(character - kFirstFullWidth + kFirstPrinted);
    }
    for (const BestFit& fit : kBestFits) {
        if (fit.characters.find(static_cast<char16_t>(character)) != std::u16string_view::npos) {
            return fit.byte;
        }
    }
    return kDefaultCharacter;
}

}  // namespace

std::wstring widened(std::string_view narrow) {
    std::wstring wide(narrow.size(), L'\0');
    std::transform(narrow.begin(), narrow.end(), wide.begin(), [](char character) {
        const std::size_t byte = static_cast<unsigned char>(character);
        // The difference wraps around for smaller bytes and is then far beyond the table.
        const std::size_t special = byte - kFirstSpecial;
        return static_cast<wchar_t>(special < kSpecials.size() ? kSpecials[special] : byte);
    });
    return wide;
}

std::string narrowed(std::wstring_view wide) {
    std::string narrow;
    narrow.reserve(wide.size());
    for (const wchar_t unit : wide) {
        const auto character = static_cast<char32_t>(unit);
        if (character < kFirstOfPairs) {
            narrow += narrowedCharacter(character);
        } else {
            narrow.append(2, kDefaultCharacter);
        }
    }
    return narrow;
}

}  // namespace platform
