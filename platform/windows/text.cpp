#include "platform/text.h"

#include <windows.h>
#include <limits>
#include <new>

namespace platform {
namespace {

// The system's conversions take an int as the length, so they cannot convert a longer text.
int checkedLength(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) throw std::bad_alloc();
    return static_cast<int>(length);
}

}  // namespace

std::wstring widened(std::string_view narrow) {
    if (narrow.empty()) return {};
    const int bytes = checkedLength(narrow.size());
    // A conversion never makes more units than there are bytes, so one call is enough.
    std::wstring wide(narrow.size(), L'\0');
    const int units = ::MultiByteToWideChar(CP_ACP, 0, narrow.data(), bytes, wide.data(), bytes);
    wide.resize(static_cast<std::size_t>(units));
    return wide;
}

std::string narrowed(std::wstring_view wide) {
    if (wide.empty()) return {};
    const int units = checkedLength(wide.size());
    const int bytes =
        ::WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide.data(), units, narrow.data(), bytes, nullptr, nullptr);
    return narrow;
}

}  // namespace platform
