#include "platform/registry.h"

#include <windows.h>

namespace platform {
namespace {

HKEY rootOf(Hive hive) noexcept {
    return hive == Hive::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::uint32_t errorNumber(LSTATUS status) noexcept {
    return static_cast<std::uint32_t>(status);
}

}  // namespace

RegistryKey::~RegistryKey() {
    close();
}

void RegistryKey::close() noexcept {
    if (_key != nullptr) ::RegCloseKey(static_cast<HKEY>(_key));
    _key = nullptr;
}

std::uint32_t RegistryKey::openForReading(Hive hive, const wchar_t* path) noexcept {
    close();
    HKEY key = nullptr;
    const LSTATUS status = ::RegOpenKeyExW(rootOf(hive), path, 0, KEY_READ, &key);
    if (status == ERROR_SUCCESS) _key = key;
    return errorNumber(status);
}

std::uint32_t RegistryKey::createForWriting(Hive hive, const wchar_t* path) noexcept {
    close();
    HKEY key = nullptr;
    const LSTATUS status =
        ::RegCreateKeyExW(rootOf(hive), path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                          nullptr, &key, nullptr);
    if (status == ERROR_SUCCESS) _key = key;
    return errorNumber(status);
}

std::uint32_t RegistryKey::read(const wchar_t* name, ValueType& type, void* to,
                                std::uint32_t& bytes) const noexcept {
    if (_key == nullptr) return kInvalidHandleError;
    DWORD valueType = REG_NONE;
    DWORD size = bytes;
    const LSTATUS status = ::RegQueryValueExW(static_cast<HKEY>(_key), name, nullptr, &valueType,
                                              static_cast<BYTE*>(to), &size);
    // Also where the value is too large, so that the caller learns how much room it needs.
    if (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) bytes = size;
    if (status == ERROR_SUCCESS) type = static_cast<ValueType>(valueType);
    return errorNumber(status);
}

std::uint32_t RegistryKey::write(const wchar_t* name, ValueType type, const void* from,
                                 std::uint32_t bytes) noexcept {
    if (_key == nullptr) return kInvalidHandleError;
    return errorNumber(::RegSetValueExW(static_cast<HKEY>(_key), name, 0, static_cast<DWORD>(type),
                                        static_cast<const BYTE*>(from), bytes));
}

std::uint32_t RegistryKey::remove(const wchar_t* name) noexcept {
    if (_key == nullptr) return kInvalidHandleError;
    return errorNumber(::RegDeleteValueW(static_cast<HKEY>(_key), name));
}

}  // namespace platform
