#pragma once

#include <string>
#include <string_view>

namespace printpath {

// Between UTF-8, in which scenarios are written, and the system's wide text.
std::wstring wideFromUtf8(std::string_view text);
std::string utf8FromWide(std::wstring_view text);

// The same text in the system's ANSI code page, as a narrow program would write it.
std::string narrowFromUtf8(std::string_view text);

// The text in double quotes, line feeds shown as \n: for one line of the timeline.
std::string shown(std::string_view utf8);
std::string shown(std::wstring_view text);

}  // namespace printpath
