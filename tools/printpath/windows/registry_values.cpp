#include "tools/printpath/windows/registry_values.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/handle.h"
#include "tools/printpath/windows/wide_text.h"

#include <cstring>

namespace printpath {

namespace {

void write(HKEY root, const std::wstring& key, const std::wstring& name, DWORD type,
           const void* data, std::size_t bytes) {
    HKEY opened = nullptr;
    LSTATUS error = ::RegCreateKeyExW(root, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                                      &opened, nullptr);
    const RegistryKey owner(opened);
    if (error == ERROR_SUCCESS)
        error = ::RegSetValueExW(opened, name.c_str(), 0, type, static_cast<const BYTE*>(data),
                                 static_cast<DWORD>(bytes));
    if (error != ERROR_SUCCESS)
        throw Failure("the registry value " + shown(name) + " could not be written (system error " +
                          std::to_string(error) + ")",
                      Outcome::Unusable);
}

std::optional<std::vector<std::uint8_t>> read(HKEY root, const std::wstring& key,
                                              const std::wstring& name, DWORD type) {
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(root, key.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
        return std::nullopt;
    const RegistryKey owner(opened);
    DWORD found = 0;
    DWORD bytes = 0;
    if (::RegQueryValueExW(opened, name.c_str(), nullptr, &found, nullptr, &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    std::vector<std::uint8_t> data(bytes);
    if (found != type || ::RegQueryValueExW(opened, name.c_str(), nullptr, nullptr, data.data(),
                                            &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    data.resize(bytes);
    return data;
}

}  // namespace

void writeNumber(HKEY root, const std::wstring& key, const std::wstring& name,
                 std::uint32_t value) {
    write(root, key, name, REG_DWORD, &value, sizeof value);
}

void writeText(HKEY root, const std::wstring& key, const std::wstring& name,
               const std::wstring& value) {
    write(root, key, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

void writeBytes(HKEY root, const std::wstring& key, const std::wstring& name,
                const std::vector<std::uint8_t>& value) {
    write(root, key, name, REG_BINARY, value.data(), value.size());
}

std::optional<std::uint32_t> readNumber(HKEY root, const std::wstring& key,
                                        const std::wstring& name) {
    const auto data = read(root, key, name, REG_DWORD);
    std::uint32_t value = 0;
    if (!data || data->size() != sizeof value) return std::nullopt;
    std::memcpy(&value, data->data(), sizeof value);
    return value;
}

std::optional<std::wstring> readText(HKEY root, const std::wstring& key, const std::wstring& name) {
    const auto data = read(root, key, name, REG_SZ);
    if (!data) return std::nullopt;
    std::wstring text(data->size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), data->data(), text.size() * sizeof(wchar_t));
    if (!text.empty() && text.back() == L'\0') text.pop_back();
    return text;
}

std::optional<std::vector<std::uint8_t>> readBytes(HKEY root, const std::wstring& key,
                                                   const std::wstring& name) {
    return read(root, key, name, REG_BINARY);
}

void removeKey(HKEY root, const std::wstring& key) {
    ::RegDeleteTreeW(root, key.c_str());
}

}  // namespace printpath
