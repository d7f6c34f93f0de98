#pragma once

#include <cstdint>

// The texts of the generic alert. Any thread may ask.

inline constexpr std::uint32_t kNoStatusResource = 0xFFFFFFFF;

// Whether the generic alert has a text for this status code.
bool isKnownStatus(std::int32_t status);

// String id of the text for a status code, kNoStatusResource when there is none.
std::uint32_t statusResource(std::int32_t status);
