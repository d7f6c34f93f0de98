#pragma once

#include <string>
#include <string_view>

// Converts between the system's ANSI code page (narrow) and UTF-16 (wide). If the code page lacks a
// character, a similar one that the system knows is taken (8 for U+221E, a quotation mark for
// U+FF02), and otherwise the code page's default character. So a text from outside may have a
// quotation mark after the conversion that it did not have before. Throws std::bad_alloc only. Any
// thread may call.
namespace platform {

std::wstring widened(std::string_view narrow);
std::string narrowed(std::wstring_view wide);

}  // namespace platform
