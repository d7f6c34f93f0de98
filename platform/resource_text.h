#pragma once

#include "platform/native_handle.h"

#include <cstdint>
#include <string>
#include <vector>

// Texts in the string tables of a module, and the languages of the system. Any thread may call.
namespace platform {

using LanguageId = std::uint16_t;  // low 10 bits: primary language

// The text `id` of exactly this language. False when the module, the language or the text is
// missing or empty; `text` is then empty. A null module has no texts.
[[nodiscard]] bool resourceText(NativeHandle module, std::uint32_t id, LanguageId language,
                                std::wstring& text);

// Whether the module has the string block of `id` in exactly this language.
[[nodiscard]] bool hasTexts(NativeHandle module, std::uint32_t id, LanguageId language) noexcept;

// The names of the user's languages, such as L"pt-AO", the preferred one first. If the system does
// not tell them, that of the user's dates and numbers; empty if there is none either.
[[nodiscard]] std::vector<std::wstring> preferredLanguages();

// The language of the user interface; if the system names none, the user's default language.
[[nodiscard]] LanguageId userInterfaceLanguage() noexcept;
[[nodiscard]] LanguageId systemDefaultLanguage() noexcept;

// False when the version of the system cannot be read.
[[nodiscard]] bool systemVersionKnown() noexcept;

// Opens a library for its resources only, so that none of its code is run. Null when it is missing.
// The handle is valid until the process ends.
[[nodiscard]] NativeHandle openResourceLibrary(const wchar_t* name) noexcept;

}  // namespace platform
