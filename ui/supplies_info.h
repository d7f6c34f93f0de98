#pragma once

namespace arbor {
class IPropertyHolder;
}

// What the supplies block says below the cartridge's part number.
enum class SuppliesMode : int {
    Pages = 0,         // estimated pages remaining
    PagesUnknown = 1,  // "?" in their place
    NameOnly = 2       // nothing
};

// Makes `description` a supplies alert: its template, the picture of the cartridge, and the lines
// about it, asked of the device. `estimateUnknown` shows dashes for the pages of mode Pages;
// `conditionIcon` is the bitmap beside them. Throws std::bad_alloc; the description may then be
// complete in part. Main thread.
void fillSuppliesInfo(arbor::IPropertyHolder& description, bool estimateUnknown, SuppliesMode mode,
                      int conditionIcon);
