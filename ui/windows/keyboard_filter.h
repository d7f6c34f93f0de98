#pragma once

#include <windows.h>

// Makes the keyboard work in a modeless dialog: the program's message loop knows nothing of
// dialogs, so the messages are changed as they leave the queue. Tab, arrows, Enter and Esc go to
// the system's dialog rules, and a letter typed at a child that does not want letters goes to the
// dialog, which knows the keys of its buttons. Nothing else is touched. Works on the thread that
// made it, for as long as one of these objects lives there.
class KeyboardFilter {
public:
    // std::bad_alloc when the dialog cannot be marked as one that is served.
    explicit KeyboardFilter(HWND dialog);
    ~KeyboardFilter();
    KeyboardFilter(const KeyboardFilter&) = delete;
    KeyboardFilter& operator=(const KeyboardFilter&) = delete;

private:
    HWND _dialog;
};
