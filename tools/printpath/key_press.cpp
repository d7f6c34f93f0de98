#include "tools/printpath/key_press.h"

namespace printpath {

namespace {

struct KeyName {
    std::string_view name;
    NamedKey key;
};

constexpr KeyName kKeyNames[] = {
    {"enter", NamedKey::Enter}, {"esc", NamedKey::Escape},  {"tab", NamedKey::Tab},
    {"space", NamedKey::Space}, {"up", NamedKey::Up},       {"down", NamedKey::Down},
    {"left", NamedKey::Left},   {"right", NamedKey::Right}, {"home", NamedKey::Home},
    {"end", NamedKey::End},     {"f4", NamedKey::F4},
};

bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (text.substr(0, prefix.size()) != prefix) return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

std::optional<KeyPress> parseKey(std::string_view text) {
    KeyPress key;
    for (bool prefixed = true; prefixed;) {
        prefixed = false;
        if (!key.shift && takePrefix(text, "shift+")) prefixed = key.shift = true;
        if (!key.control && takePrefix(text, "ctrl+")) prefixed = key.control = true;
        if (!key.alt && takePrefix(text, "alt+")) prefixed = key.alt = true;
    }
    if (text.size() == 1 && isLetterOrDigit(text[0])) {
        key.character = text[0];
        return key;
    }
    for (const KeyName& row : kKeyNames) {
        if (row.name == text) {
            key.named = row.key;
            return key;
        }
    }
    return std::nullopt;
}

}  // namespace printpath
