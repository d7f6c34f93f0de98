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

// The language in which a text of `module` is shown: the best one for the first of the user's
// languages that the module can serve, else English. It is chosen again for each text, so that a
// question that fails once does not decide for the whole run.
[[nodiscard]] platform::LanguageId chosenLanguage(platform::NativeHandle module);

// Loads a text into the next of four buffers and returns the buffer: copy it before four further
// loads. Empty for id 0 and for a missing text; cut at kTextUnits.
[[nodiscard]] const wchar_t* loadText(platform::NativeHandle module, std::uint32_t id);

// The same as an owned text, cut at `units` with its terminator.
[[nodiscard]] std::wstring localizedText(platform::NativeHandle module, std::uint32_t id,
                                         std::size_t units = kTextUnits);

// Whether the language of the user interface is read from right to left: Arabic and Hebrew.
[[nodiscard]] bool isRightToLeftUI();

// Simplified Chinese systems check a new cartridge on the maker's site.
inline constexpr platform::LanguageId kSimplifiedChinese = 2052;
