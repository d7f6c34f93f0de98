#include "ui/picture_names.h"

#include "strings/string_ids.h"
#include "ui/resource_ids.h"

namespace {

constexpr int kAnyBitmap = -1;  // Equally right with 2: no bitmap has a negative id.

struct NameRow {
    int control;
    int bitmap;
    std::uint32_t name;
};

// clang-format off
constexpr NameRow kNameRows[] = {
    {IDC_ALERT_ICON,         IDB_INFORMATION,       IDS_NAME_INFORMATION},
    {IDC_ALERT_ICON,         IDB_STOP,              IDS_NAME_STOPPED},
    {IDC_ALERT_ICON,         IDB_WARNING,           IDS_NAME_WARNING},
    {IDC_ALERT_PICTURE,      kAnyBitmap,            IDS_NAME_PRINTER_PICTURE},
    {IDC_SUPPLIES_PICTURE,   kAnyBitmap,            IDS_NAME_SUPPLIES_PICTURE},
    {IDC_SUPPLIES_CONDITION, IDB_NEEDS_ATTENTION,   IDS_NAME_NEEDS_ATTENTION},
    {IDC_SUPPLIES_CONDITION, IDB_UNKNOWN_CARTRIDGE, IDS_NAME_NOT_QV_CARTRIDGE},
};
// clang-format on

}  // namespace

std::uint32_t pictureName(int control, int bitmap) {
    if (bitmap == 0) return 0;
    for (const NameRow& row : kNameRows) {
        if (row.control == control && (row.bitmap == bitmap || row.bitmap == kAnyBitmap)) {
            return row.name;
        }
    }
    return 0;
}
