#include "tern/guid_text.h"

#include <charconv>
#include <cstdint>
#include <iterator>

namespace tern {

namespace {

constexpr int kHexadecimal = 16;

void appendHex(std::wstring& text, std::uint32_t value) {
    char digits[8];  // Equally right with 9: 32 bits have 8 digits.
    const auto end = std::to_chars(std::begin(digits), std::end(digits), value, kHexadecimal);
    text.append(std::begin(digits), end.ptr);
}

}  // namespace

std::wstring guidText(const arbor::Guid& guid) {
    std::wstring text = L"{";
    appendHex(text, guid.data1);
    text += L'-';
    appendHex(text, guid.data2);
    text += L'-';
    appendHex(text, guid.data3);
    text += L'-';
    for (const std::uint8_t byte : guid.data4)
        appendHex(text, byte);
    text += L'}';
    return text;
}

}  // namespace tern
