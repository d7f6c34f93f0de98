#pragma once

#include <cstdint>
#include <string>

namespace arbor {
class IPropertyHolder;
}

// Store a value. std::bad_alloc when there is no memory for it or, unlike the bag's own operations,
// for the letters of the text: a null text may then stand under `key`.
void putText(arbor::IPropertyHolder& bag, const wchar_t* key, const std::wstring& text);
void putInt(arbor::IPropertyHolder& bag, const wchar_t* key, std::int32_t value);
