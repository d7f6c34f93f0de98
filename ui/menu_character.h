#pragma once

#include "ui/window_types.h"

// The character of a WM_MENUCHAR message, as DefaultStatusDialog::onChar() knows its keys: a small
// letter from a to z becomes its capital letter, because Alt+U and Alt+u are the same key to a
// person. The whole character counts. Its low byte alone would take letters of other alphabets for
// ours: the low byte of U+044F, for one, is "O".
[[nodiscard]] constexpr MessageWord menuCharacter(MessageWord wParam) noexcept {
    const MessageWord character = wParam & kLowWordMask;  // above it stand the flags of the menu
    const bool isSmall = character >= L'a' && character <= L'z';
    return isSmall ? character - L'a' + L'A' : character;
}
