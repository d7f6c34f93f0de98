#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace printpath {

// One word of a line: text, "quoted text", name=text or name="quoted text".
struct Word {
    std::string name;  // the part before an unquoted '='; empty if there is none
    std::string text;
    bool quoted = false;
};

struct LineWords {
    std::vector<Word> words;
    std::string error;  // what is wrong with the line; empty if nothing is
};

// Splits a line at its blanks. '#' at the beginning of a word starts a comment. Within quotes a
// backslash and one of ", \, n, t and xHH stand for a quote, a backslash, a line feed, a tab and
// one byte.
LineWords splitWords(std::string_view line);

// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view text);

}  // namespace printpath
