#pragma once

#include <cstdint>
#include <span>

// How a control of the cartridge check or of its details shows its text.
enum class TextStyle { Plain, Heading, Link };

struct ControlText {
    int control;
    std::uint32_t text;  // string id
    TextStyle style;
};

// Every text of the two windows, in the order in which people read them. The tables live as long as
// the program.
[[nodiscard]] std::span<const ControlText> cartridgeCheckTexts();
[[nodiscard]] std::span<const ControlText> cartridgeCheckDetailTexts();
