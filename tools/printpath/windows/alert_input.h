#pragma once

#include "tools/printpath/key_press.h"

#include <windows.h>

// What a user does to a dialog, by messages or by real input.
namespace printpath {

// The control; throws Failure when the dialog is gone or the control is missing, hidden or
// disabled.
HWND usableControl(HWND dialog, int id);
// Whether the dialog has the control, visible and enabled.
bool isUsable(HWND dialog, int id);
// The control; throws Failure when the dialog is gone or has no such control.
HWND existingControl(HWND dialog, int id);

// Presses a button or a link by message.
void pressControl(HWND dialog, int id);
// The same with the mouse.
void clickControl(HWND dialog, int id);
// Selects an entry of a drop-down list as the user does, with the notification.
void chooseEntry(HWND dialog, int id, int entry);

// Posts the messages that a key press makes of itself.
void postKey(HWND dialog, const KeyPress& key);
// Brings the dialog to the front and presses the key.
void typeKey(HWND dialog, const KeyPress& key);

}  // namespace printpath
