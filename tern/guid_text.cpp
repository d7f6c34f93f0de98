#include "tern/guid_text.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace tern {

namespace {

constexpr int kHexadecimal = 16;

void appendHex(std::wstring& text, std::uint32_t value) {
    std::array<char, 8> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, kHexadecimal);
    text.append(digits.data(), end.ptr);
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
