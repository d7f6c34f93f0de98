#pragma once

#include "arbor/i_property_holder.h"

#include <string>

namespace arbor {

// Text of a property without losing a letter: wide where it is stored wide, else from the ANSI code
// page. An absent key gives `defaultValue`, which must not be null. std::bad_alloc. Who may read
// the bag meanwhile: see IPropertyHolder.
[[nodiscard]] std::wstring wideText(const IPropertyHolder& holder, const wchar_t* key,
                                    const wchar_t* defaultValue = L"");

}  // namespace arbor
