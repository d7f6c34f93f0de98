#include "platform/shell_argument.h"

#include <string>

namespace platform {
namespace {

// The control characters are those below the blank and the range behind the tilde. All of them, as
// the blank and the quotation mark, have numbers of two hexadecimal digits.
constexpr bool mustBeEscaped(wchar_t character) noexcept {
    return character <= L' ' || character == L'"' ||
           (character >= wchar_t{0x7F} && character <= wchar_t{0x9F});
}

}  // namespace

std::wstring shellArgument(std::wstring_view address) {
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    constexpr unsigned kBase = 16;
    std::wstring argument;
    argument.reserve(address.size());
    for (const wchar_t character : address) {
        if (!mustBeEscaped(character)) {
            argument += character;
            continue;
        }
        const auto number = std::char_traits<wchar_t>::to_int_type(character);
        argument += L'%';
        argument += kDigits[number / kBase];
        argument += kDigits[number % kBase];
    }
    return argument;
}

}  // namespace platform
