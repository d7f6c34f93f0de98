#pragma once

#include <cstdint>
#include <string>

namespace arbor {
class IPropertyHolder;
}

// The text under `key` with every letter it was stored with: wide where the property is wide, else
// its narrow text through the ANSI code page. `defaultText` stands for an absent key.
[[nodiscard]] std::wstring bagText(const arbor::IPropertyHolder& bag, const wchar_t* key,
                                   const wchar_t* defaultText = L"");

// Store a value. std::bad_alloc when there is no memory for it or, unlike the bag's own operations,
// for the letters of the text: a null text may then stand under `key`.
void putText(arbor::IPropertyHolder& bag, const wchar_t* key, const std::wstring& text);
void putInt(arbor::IPropertyHolder& bag, const wchar_t* key, std::int32_t value);
