#pragma once

#include <string>
#include <string_view>

namespace printpath {

// Conversions between UTF-8, in which scenarios are written, and the wide texts of the system.
std::wstring wideFromUtf8(std::string_view text);
std::string utf8FromWide(std::wstring_view text);

// The text in the system's ANSI code page, as a program with narrow texts would write it.
std::string narrowFromUtf8(std::string_view text);

// The text in double quotes with line feeds as \n, so that it fits in one line of the timeline.
std::string shown(std::string_view utf8);
std::string shown(std::wstring_view text);

}  // namespace printpath
