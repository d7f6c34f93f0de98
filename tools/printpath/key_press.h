#pragma once

#include <optional>
#include <string_view>

namespace printpath {

// Keys that are no letter or digit.
enum class NamedKey { None, Enter, Escape, Tab, Space, Up, Down, Left, Right, Home, End, F4 };

struct KeyPress {
    bool shift = false;
    bool control = false;
    bool alt = false;
    NamedKey named = NamedKey::None;
    char character = 0;  // a letter or digit as written, when `named` is None
};

// Reads keys such as "o", "H", "esc", "shift+tab" and "alt+u"; nothing if the text names no key.
std::optional<KeyPress> parseKey(std::string_view text);

}  // namespace printpath
