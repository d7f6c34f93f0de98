#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// Puts the value of an environment variable into `value`; false, and nothing, when there is none.
using EnvironmentLookup = bool (*)(const std::wstring& name, std::wstring& value);

// The name of the trace file that an administrator's pattern gives: %NAME% becomes the value of the
// environment variable, and %p, which begins no such name, the number of the process. Other per
// cent signs stay. Throws std::bad_alloc.
[[nodiscard]] std::wstring tracePath(std::wstring_view pattern, std::uint32_t processId,
                                     EnvironmentLookup lookup);

}  // namespace platform
