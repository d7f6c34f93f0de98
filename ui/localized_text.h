#pragma once

#include "platform/native_handle.h"
#include "platform/resource_text.h"

#include <cstddef>
#include <cstdint>
#include <string>

// Texts of the localized strings library. Main thread only.

inline constexpr std::size_t kTextUnits = 1024;        // of a loaded text, terminator included
inline constexpr std::size_t kFactoryTextUnits = 512;  // the same where an alert is described
inline constexpr std::size_t kHelpTextUnits = 2048;    // the same for help

// The language in which every text of `module` is shown: that of the user interface, else another
// variant of the same language, else English.
[[nodiscard]] platform::LanguageId chosenLanguage(platform::NativeHandle module);

// Loads a text into the next of four buffers and returns the buffer: copy it before four further
// loads. Empty for id 0 and for a missing text; cut at kTextUnits.
[[nodiscard]] const wchar_t* loadText(platform::NativeHandle module, std::uint32_t id);

// The same as an owned text, cut at `units` with its terminator.
[[nodiscard]] std::wstring localizedText(platform::NativeHandle module, std::uint32_t id,
                                         std::size_t units = kTextUnits);

// Whether the user's language is read from right to left: Arabic and Hebrew.
[[nodiscard]] bool isRightToLeftUI();

// Simplified Chinese systems check a new cartridge on the maker's site.
inline constexpr platform::LanguageId kSimplifiedChinese = 2052;
