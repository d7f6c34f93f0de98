#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The dialogs of the monitor as another program sees them.
namespace printpath {

// Visible dialogs and message boxes of a process, the newest first. No message is sent to the
// process, so this works also when it hangs.
std::vector<HWND> dialogWindows(DWORD process);
bool isMessageBox(HWND dialog);

// The headline of an alert, or the text of a message box.
std::wstring headlineOf(HWND dialog);

// The text of a window of any process; empty when the window does not answer within two seconds.
std::wstring textOf(HWND window);

// The title and the texts of all visible controls, each on its own line.
std::wstring allTexts(HWND dialog);

// Whether the window's thread answers messages at all.
bool answers(HWND window);

}  // namespace printpath
