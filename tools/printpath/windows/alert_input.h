#pragma once

#include "tools/printpath/key_press.h"

#include <windows.h>

// Does to a dialog what a user does, with window messages or with input of mouse and keyboard.
namespace printpath {

// A control that a user can use. Throws Failure when the dialog is gone or the control is missing,
// hidden or disabled.
HWND usableControl(HWND dialog, int id);
// Whether the dialog has the control and it is visible and enabled.
bool isUsable(HWND dialog, int id);
// A control that may be hidden or disabled. Throws Failure when the dialog is gone or does not have
// the control.
HWND existingControl(HWND dialog, int id);

// Presses a button or a link with a window message, which works for covered windows too.
void pressControl(HWND dialog, int id);
// Brings the dialog to the front and clicks the middle of the control with the mouse.
void clickControl(HWND dialog, int id);
// Selects an entry of a drop-down list and notifies the dialog, as it happens when a user does it.
void chooseEntry(HWND dialog, int id, int entry);

// The control that has the focus, or the dialog itself.
HWND focusOf(HWND dialog);

// Posts the window messages that the system makes of a key press.
void postKey(HWND dialog, const KeyPress& key);
// Brings the dialog to the front and presses the key on the simulated keyboard.
void typeKey(HWND dialog, const KeyPress& key);

}  // namespace printpath
