#pragma once

#include "platform/registry.h"

#include <cstddef>
#include <cstdint>
#include <string>

// Reads a REG_SZ value of at most `maxUnits` units, with or without its terminator. Returns the
// system's error number, 0 for success; `text` is written on success only. A value of another type
// is "invalid data" (13). Throws std::bad_alloc. Any thread.
[[nodiscard]] std::uint32_t readRegistryText(const platform::RegistryKey& key, const wchar_t* name,
                                             std::size_t maxUnits, std::wstring& text);
