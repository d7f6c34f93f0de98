#include "ui/help_texts.h"

#include "strings/string_ids.h"

namespace {

constexpr std::int32_t kAllBits = -1;
constexpr std::int32_t kLow16Bits = 0xFFFF;

struct HelpRow {
    std::int32_t first, last;  // status codes, both included
    HelpText help;
    std::int32_t mask;  // of the status, before it is compared
};

// The first match wins; what is not listed needs attention, as two ranges say of themselves.
// clang-format off
constexpr HelpRow kHelpRows[] = {
    {41000, 41199, {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {41201, 41299, {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {41301, 41399, {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {41900, 41900, {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {30119, 30119, {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {  277,   277, {IDS_HELP_READ_CONTROL_PANEL, 0}, kAllBits},
    {10209, 10209, {IDS_TONER_LOW_DETAIL, IDS_TONER_LOW_CAPTION}, kAllBits},
    {10219, 10219, {IDS_TONER_VERY_LOW_DETAIL, IDS_TONER_VERY_LOW_CAPTION}, kAllBits},
    {10300, 10300, {IDS_CARTRIDGE_EMPTY_DETAIL, IDS_CARTRIDGE_EMPTY_CAPTION}, kAllBits},
    {10403, 10403, {IDS_HELP_NOT_QV_CARTRIDGE, 0}, kLow16Bits},
    {10407, 10407, {IDS_HELP_NOT_QV_CARTRIDGE, 0}, kLow16Bits},
    {10301, 10511, {IDS_HELP_NEEDS_ATTENTION, 0}, kAllBits},
    {10512, 10512, {IDS_HELP_CARTRIDGE_NOT_ACCEPTED, 0}, kAllBits},
    {30017, 30017, {IDS_HELP_CARTRIDGE_MEMORY, 0}, kAllBits},
    {40010, 40010, {IDS_HELP_CARTRIDGE_MEMORY, 0}, kAllBits},
    {40017, 40017, {IDS_HELP_CARTRIDGE_MEMORY, 0}, kAllBits},
    {40018, 40019, {IDS_HELP_NEEDS_ATTENTION, 0}, kAllBits},
    {40020, 40021, {IDS_HELP_DOOR, 0}, kAllBits},
    {40120, 40120, {IDS_DUPLEX_TITLE, 0}, kAllBits},
    {40600, 40600, {IDS_HELP_NO_CARTRIDGE, 0}, kAllBits},
    {40608, 40608, {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {40610, 40610, {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {40612, 40612, {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {40614, 40614, {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {40625, 40625, {IDS_HELP_CARTRIDGE_NOT_ACCEPTED, 0}, kAllBits},
    {42000, 42002, {IDS_HELP_JAM, 0}, kAllBits},
    {42004, 42004, {IDS_HELP_DUPLEX_JAM, 0}, kAllBits},
    {50003, 50003, {IDS_HELP_PRINTER_PROBLEM, 0}, kAllBits},
    {50007, 50008, {IDS_HELP_PRINTER_PROBLEM, 0}, kAllBits},
    {50025, 50025, {IDS_HELP_PRINTER_PROBLEM, 0}, kAllBits},
    {50005, 50005, {IDS_HELP_LASER_SCANNER, 0}, kAllBits},
};
// clang-format on

}  // namespace

HelpText helpText(std::int32_t status) {
    for (const HelpRow& row : kHelpRows) {
        const std::int32_t compared = status & row.mask;
        if (compared >= row.first && compared <= row.last) return row.help;
    }
    return {IDS_HELP_NEEDS_ATTENTION, 0};
}
