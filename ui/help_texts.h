#pragma once

#include <cstdint>

// What Help says about a status of the printer: string ids.
struct HelpText {
    std::uint32_t text;
    std::uint32_t caption;  // 0: the printer's name
};

// The general text for a status without one of its own. Any thread.
[[nodiscard]] HelpText helpText(std::int32_t status);
