#pragma once

#include <string>

namespace arbor {
class IPropertyHolder;
}

// The text under `key` with every letter it was stored with: wide where the property is wide, else
// its narrow text through the ANSI code page. `defaultText` stands for an absent key.
[[nodiscard]] std::wstring bagText(const arbor::IPropertyHolder& bag, const wchar_t* key,
                                   const wchar_t* defaultText = L"");
