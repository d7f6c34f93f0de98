#pragma once

#include <string>
#include <string_view>

// Text between the system's ANSI code page (narrow) and UTF-16 (wide). A character that the code
// page does not have becomes one that the system thinks to look like it, where there is one (U+221E
// becomes 8, U+FF02 a quotation mark), and otherwise the code page's default character: text from
// outside may hold a quotation mark after the conversion that it did not hold before. Nothing fails
// but memory (std::bad_alloc). Any thread may call.
namespace platform {

std::wstring widened(std::string_view narrow);
std::string narrowed(std::wstring_view wide);

}  // namespace platform
