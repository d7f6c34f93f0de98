#include "tools/printpath/windows/wide_text.h"

#include <windows.h>

namespace printpath {

namespace {

std::string narrowed(std::wstring_view text, UINT codePage) {
    const int units = static_cast<int>(text.size());
    const int bytes =
        ::WideCharToMultiByte(codePage, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(codePage, 0, text.data(), units, result.data(), bytes, nullptr, nullptr);
    return result;
}

}  // namespace

std::wstring wideFromUtf8(std::string_view text) {
    const int bytes = static_cast<int>(text.size());
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(units), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, result.data(), units);
    return result;
}

std::string utf8FromWide(std::wstring_view text) {
    return narrowed(text, CP_UTF8);
}

std::string narrowFromUtf8(std::string_view text) {
    return narrowed(wideFromUtf8(text), CP_ACP);
}

std::string shown(std::string_view utf8) {
    std::string result = "\"";
    for (const char c : utf8) {
        if (c == '\n')
            result += "\\n";
        else
            result += c;
    }
    return result + "\"";
}

std::string shown(std::wstring_view text) {
    return shown(utf8FromWide(text));
}

}  // namespace printpath
