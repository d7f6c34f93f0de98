#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// One argument of formatText: wide text, narrow text in the ANSI code page, or a number.
class TextArgument {
public:
    enum class Kind { Wide, Narrow, Number };

    // NOLINTBEGIN(google-explicit-constructor): a list of arguments is written as plain values
    TextArgument(std::wstring_view wide) : kind(Kind::Wide), wideText(wide) {}
    TextArgument(const std::wstring& wide) : TextArgument(std::wstring_view(wide)) {}
    TextArgument(const wchar_t* wide) : TextArgument(std::wstring_view(wide)) {}
    TextArgument(std::string_view narrow) : kind(Kind::Narrow), narrowText(narrow) {}
    TextArgument(const std::string& narrow) : TextArgument(std::string_view(narrow)) {}
    TextArgument(std::int32_t value) : kind(Kind::Number), number(value) {}
    // NOLINTEND(google-explicit-constructor)

    // Borrowed: valid as long as what the argument was made from.
    Kind kind;
    std::wstring_view wideText;
    std::string_view narrowText;
    std::int32_t number = 0;
};

// A localized text with its placeholders filled: "%s" takes wide text, "%S" narrow text, "%d" a
// number, one argument each in their order; "%%" is a per cent sign, and any other one stands for
// itself. A placeholder without an argument of its kind inserts nothing and surplus arguments are
// ignored, so a bad translation is ugly but harmless. Cut at `units` with its terminator. Throws
// std::bad_alloc. Any thread.
[[nodiscard]] std::wstring formatText(std::wstring_view format,
                                      std::initializer_list<TextArgument> arguments,
                                      std::size_t units);
