#include "ui/help_texts.h"

#include "printer/status_codes.h"
#include "strings/string_ids.h"

namespace {

namespace code = status_code;

constexpr std::int32_t kAllBits = -1;
constexpr std::int32_t kLow16Bits = 0xFFFF;

struct HelpRow {
    std::int32_t first, last;  // status codes, both included
    HelpText help;
    std::int32_t mask;  // of the status, before it is compared
};

// The first match wins. A status that is not listed has the general text.
// clang-format off
constexpr HelpRow kHelpRows[] = {
    {code::kFirstLoadMedia,              code::kLastPaperOut,                {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {code::kFirstLoadMedia412,           code::kLastLoadMedia412,            {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {code::kFirstLoadMedia413,           code::kLastLoadMedia413,            {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {code::kManualFeed41900,             code::kManualFeed41900,             {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {code::kManualFeed30119,             code::kManualFeed30119,             {IDS_HELP_LOAD_PAPER, 0}, kAllBits},
    {code::kControlPanelMessage,         code::kControlPanelMessage,         {IDS_HELP_READ_CONTROL_PANEL, 0}, kAllBits},
    {code::kTonerLow,                    code::kTonerLow,                    {IDS_TONER_LOW_DETAIL, IDS_TONER_LOW_CAPTION}, kAllBits},
    {code::kTonerVeryLow,                code::kTonerVeryLow,                {IDS_TONER_VERY_LOW_DETAIL, IDS_TONER_VERY_LOW_CAPTION}, kAllBits},
    {code::kTonerOutBlack,               code::kTonerOutBlack,               {IDS_CARTRIDGE_EMPTY_DETAIL, IDS_CARTRIDGE_EMPTY_CAPTION}, kAllBits},
    {code::kNonQvCartridge10403,         code::kNonQvCartridge10403,         {IDS_HELP_NOT_QV_CARTRIDGE, 0}, kLow16Bits},
    {code::kNonQvCartridge10407,         code::kNonQvCartridge10407,         {IDS_HELP_NOT_QV_CARTRIDGE, 0}, kLow16Bits},
    {code::kIllegalCartridge,            code::kIllegalCartridge,            {IDS_HELP_CARTRIDGE_NOT_ACCEPTED, 0}, kAllBits},
    {code::kCartridgeNotRecognized30017, code::kCartridgeNotRecognized30017, {IDS_HELP_CARTRIDGE_MEMORY, 0}, kAllBits},
    {code::kCartridgeNotRecognized40010, code::kCartridgeNotRecognized40010, {IDS_HELP_CARTRIDGE_MEMORY, 0}, kAllBits},
    {code::kCartridgeMemoryError,        code::kCartridgeMemoryError,        {IDS_HELP_CARTRIDGE_MEMORY, 0}, kAllBits},
    {code::kDoorOpen,                    code::kCartridgeDoorOpen,           {IDS_HELP_DOOR, 0}, kAllBits},
    {code::kManualDuplex40120,           code::kManualDuplex40120,           {IDS_DUPLEX_TITLE, 0}, kAllBits},
    {code::kNoCartridge,                 code::kNoCartridge,                 {IDS_HELP_NO_CARTRIDGE, 0}, kAllBits},
    {code::kUsedCartridge40608,          code::kUsedCartridge40608,          {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {code::kUsedCartridge40610,          code::kUsedCartridge40610,          {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {code::kUsedCartridge40612,          code::kUsedCartridge40612,          {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {code::kUsedCartridge40614,          code::kUsedCartridge40614,          {IDS_HELP_CARTRIDGE_USED_BEFORE, 0}, kAllBits},
    {code::kCartridgeNotAccepted,        code::kCartridgeNotAccepted,        {IDS_HELP_CARTRIDGE_NOT_ACCEPTED, 0}, kAllBits},
    {code::kJamInside42000,              code::kRearJam,                     {IDS_HELP_JAM, 0}, kAllBits},
    {code::kDuplexJam42004,              code::kDuplexJam42004,              {IDS_HELP_DUPLEX_JAM, 0}, kAllBits},
    {code::kFuser,                       code::kFuser,                       {IDS_HELP_PRINTER_PROBLEM, 0}, kAllBits},
    {code::kCommunication,               code::kFuserNotWarm,                {IDS_HELP_PRINTER_PROBLEM, 0}, kAllBits},
    {code::kPrintEngine,                 code::kPrintEngine,                 {IDS_HELP_PRINTER_PROBLEM, 0}, kAllBits},
    {code::kLaserScanner,                code::kLaserScanner,                {IDS_HELP_LASER_SCANNER, 0}, kAllBits},
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
