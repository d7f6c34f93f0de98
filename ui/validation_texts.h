#pragma once

#include <cstdint>
#include <span>

// How a control of the cartridge check or of its details shows its text.
enum class TextStyle { Plain, Heading, Link };

// What a click on a control of these windows asks for.
enum class CheckAction {
    None,
    Submit,       // let the maker's site check the cartridge, which ends the monitor
    ShowDetails,  // open the details, which hold up the check
    OpenPrivacyPage,
    Close
};

struct ControlText {
    int control;
    std::uint32_t text;  // string id
    TextStyle style;
    CheckAction action;
};

// Every text of the two windows, in the order in which people read them. The tables live as long as
// the program.
[[nodiscard]] std::span<const ControlText> cartridgeCheckTexts();
[[nodiscard]] std::span<const ControlText> cartridgeCheckDetailTexts();

// The action of a control, or of Esc and the close box, which send IDC_CHECK_CANCEL. None for a
// control that has no row.
[[nodiscard]] CheckAction checkAction(std::span<const ControlText> rows, int control);
