#include "platform/text.h"

#include <algorithm>

namespace platform {
namespace {

// The simulated code page is Latin-1: 256 characters that are the first of Unicode.
constexpr char32_t kCharacters = 256;
constexpr char kDefaultCharacter = '?';

}  // namespace

std::wstring widened(std::string_view narrow) {
    std::wstring wide(narrow.size(), L'\0');
    std::transform(narrow.begin(), narrow.end(), wide.begin(), [](char character) {
        return static_cast<wchar_t>(static_cast<unsigned char>(character));
    });
    return wide;
}

std::string narrowed(std::wstring_view wide) {
    std::string narrow;
    narrow.reserve(wide.size());
    for (const wchar_t character : wide) {
        const auto value = static_cast<char32_t>(character);
        narrow += value < kCharacters ? static_cast<char>(static_cast<unsigned char>(value))
                                      : kDefaultCharacter;
    }
    return narrow;
}

}  // namespace platform
