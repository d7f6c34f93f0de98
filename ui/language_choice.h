#pragma once

#include "platform/resource_text.h"

#include <span>
#include <string_view>

// The string tables that serve somebody who reads the language `name`, best first; empty when none
// does. The name is one of the system's, such as L"pt-AO" or L"zh-Hant-HK". A table may be missing
// from a library. The list is valid for ever. Any thread may call.
[[nodiscard]] std::span<const platform::LanguageId> languagesFor(std::wstring_view name) noexcept;
