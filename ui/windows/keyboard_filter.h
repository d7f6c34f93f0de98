#pragma once

#include <windows.h>

// Who knows which letters press which button of a dialog.
enum class LetterRules {
    OfTheDialog = 1,  // its procedure: a letter typed at a child goes to the dialog as WM_CHAR
    OfTheCaptions     // the system: the letters that captions mark with "&"
};

// Makes the keyboard work in a modeless dialog: the program's message loop knows nothing of
// dialogs, so the messages are changed as they leave the queue. Enter presses the button that has
// the focus; otherwise it goes to the system's dialog rules, as Tab, arrows and Esc do. Letters go
// where the dialog's letter rules say, but for a child that wants letters itself. Nothing else is
// touched, and nothing at all while a menu is open or a window is moved by keys. Works on the
// thread that made it, for as long as one of these objects lives there.
class KeyboardFilter {
public:
    // std::bad_alloc when the dialog cannot be marked as one that is served.
    KeyboardFilter(HWND dialog, LetterRules rules);
    ~KeyboardFilter();
    KeyboardFilter(const KeyboardFilter&) = delete;
    KeyboardFilter& operator=(const KeyboardFilter&) = delete;

private:
    HWND _dialog;
};
