#pragma once

#include <cstddef>

namespace arbor {

// Texts of properties. A clone of a text property carries the same pointer as its source, so each
// text counts its holders and goes with the last one. Any thread may call; a null text is no text.

// A terminated copy with one holder; null when it cannot be allocated or its size overflows.
const char* copyText(const char* text, std::size_t bytes) noexcept;
const wchar_t* copyText(const wchar_t* text, std::size_t units) noexcept;

// One holder more, one holder less. The text must come from copyText.
void shareText(const void* text) noexcept;
void releaseText(const void* text) noexcept;

}  // namespace arbor
