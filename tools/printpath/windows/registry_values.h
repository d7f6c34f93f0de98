#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Registry values as a scenario prepares and checks them. Writing throws Failure when it fails.
namespace printpath {

void writeNumber(HKEY root, const std::wstring& key, const std::wstring& name, std::uint32_t value);
void writeText(HKEY root, const std::wstring& key, const std::wstring& name,
               const std::wstring& value);
void writeBytes(HKEY root, const std::wstring& key, const std::wstring& name,
                const std::vector<std::uint8_t>& value);

// Returns nothing when the value is missing or has another type.
std::optional<std::uint32_t> readNumber(HKEY root, const std::wstring& key,
                                        const std::wstring& name);
// Reads texts that have a terminating zero in the registry and texts that have none.
std::optional<std::wstring> readText(HKEY root, const std::wstring& key, const std::wstring& name);
std::optional<std::vector<std::uint8_t>> readBytes(HKEY root, const std::wstring& key,
                                                   const std::wstring& name);

void removeKey(HKEY root, const std::wstring& key);

}  // namespace printpath
