#include "tools/printpath/scenario_words.h"

#include <cstddef>

namespace printpath {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Reads one line from left to right.
class WordReader {
public:
    explicit WordReader(std::string_view line) : _line(line) {}

    LineWords read() {
        LineWords result;
        while (result.error.empty()) {
            while (!atEnd() && isBlank(_line[_at]))
                ++_at;
            if (atEnd() || _line[_at] == '#') break;
            Word word;
            result.error = readWord(word);
            result.words.push_back(word);
        }
        return result;
    }

private:
    bool atEnd() const { return _at >= _line.size(); }

    std::string readWord(Word& word) {
        if (_line[_at] == '"') return readQuoted(word);
        while (!atEnd() && !isBlank(_line[_at])) {
            const char c = _line[_at];
            if (c == '"') return "a quote stands inside a word; put the whole text in quotes";
            ++_at;
            if (c == '=' && word.name.empty() && !word.text.empty()) {
                word.name.swap(word.text);
                if (!atEnd() && _line[_at] == '"') return readQuoted(word);
            } else {
                word.text += c;
            }
        }
        return {};
    }

    std::string readQuoted(Word& word) {
        word.quoted = true;
        for (++_at; !atEnd(); ++_at) {
            const char c = _line[_at];
            if (c == '"') {
                ++_at;
                if (!atEnd() && !isBlank(_line[_at])) return "a blank must follow a closing quote";
                return {};
            }
            if (c != '\\') {
                word.text += c;
            } else if (!readEscape(word.text)) {
                return "after a backslash \", \\, n, t or x with two hexadecimal digits must "
                       "follow";
            }
        }
        return "the closing quote is missing";
    }

    // Begins at a backslash and leaves the position at the last character of the escape sequence.
    bool readEscape(std::string& text) {
        if (++_at >= _line.size()) return false;
        switch (_line[_at]) {
            case '"':
            case '\\':
                text += _line[_at];
                return true;
            case 'n':
                text += '\n';
                return true;
            case 't':
                text += '\t';
                return true;
            case 'x':
                return readByte(text);
            default:
                return false;
        }
    }

    bool readByte(std::string& text) {
        if (_at + 2 >= _line.size()) return false;
        const int high = hexDigit(_line[_at + 1]);
        const int low = hexDigit(_line[_at + 2]);
        if (high < 0 || low < 0) return false;
        text += static_cast<char>(high * 16 + low);
        _at += 2;
        return true;
    }

    std::string_view _line;
    std::size_t _at = 0;
};

// How many continuation bytes follow this first byte; -1 if no character begins with it.
int continuationBytes(unsigned char first) {
    if (first < 0x80) return 0;
    if (first >= 0xC2 && first <= 0xDF) return 1;
    if (first >= 0xE0 && first <= 0xEF) return 2;
    if (first >= 0xF0 && first <= 0xF4) return 3;
    return -1;
}

// The limits of the second byte exclude overlong forms, surrogates and numbers above U+10FFFF.
bool isSecondByte(unsigned char first, unsigned char second) {
    switch (first) {
        case 0xE0:
            return second >= 0xA0 && second <= 0xBF;
        case 0xED:
            return second >= 0x80 && second <= 0x9F;
        case 0xF0:
            return second >= 0x90 && second <= 0xBF;
        case 0xF4:
            return second >= 0x80 && second <= 0x8F;
        default:
            return second >= 0x80 && second <= 0xBF;
    }
}

}  // namespace

LineWords splitWords(std::string_view line) {
    return WordReader(line).read();
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto first = static_cast<unsigned char>(text[at]);
        const int more = continuationBytes(first);
        if (more < 0 || text.size() - at <= static_cast<std::size_t>(more)) return false;
        for (int i = 1; i <= more; ++i) {
            const auto next = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
            if (i == 1 ? !isSecondByte(first, next) : (next < 0x80 || next > 0xBF)) return false;
        }
        at += static_cast<std::size_t>(more) + 1;
    }
    return true;
}

}  // namespace printpath
