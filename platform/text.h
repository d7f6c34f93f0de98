#pragma once

#include <string>
#include <string_view>

// Text between the system's ANSI code page (narrow) and UTF-16 (wide). What a code page cannot hold
// becomes its default character; nothing fails but memory (std::bad_alloc). Any thread may call.
namespace platform {

std::wstring widened(std::string_view narrow);
std::string narrowed(std::wstring_view wide);

}  // namespace platform
