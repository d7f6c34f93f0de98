#include "printer/registry_text.h"

#include "platform/native_handle.h"
#include "platform/utf16.h"

#include <string_view>

namespace {

constexpr std::uint32_t kInvalidData = 13;  // the system's number for a value that makes no sense

}  // namespace

std::uint32_t readRegistryText(const platform::RegistryKey& key, const wchar_t* name,
                               std::size_t maxUnits, std::wstring& text) {
    std::u16string units(maxUnits, u'\0');
    auto bytes = static_cast<std::uint32_t>(units.size() * sizeof(char16_t));
    platform::ValueType type = platform::ValueType::None;
    const std::uint32_t error = key.read(name, type, units.data(), bytes);
    if (error != platform::kSuccess) return error;
    if (type != platform::ValueType::String) return kInvalidData;
    // Some writers of texts leave the terminator out, so the text ends at the first zero or with
    // the value, whichever comes first.
    const std::u16string_view value(units.data(), bytes / sizeof(char16_t));
    text = platform::fromUtf16(value.substr(0, value.find(u'\0')));
    return platform::kSuccess;
}
