#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The dialogs of the monitor as another program sees them.
namespace printpath {

// Visible dialogs and message boxes of a process, the newest first. Asks the process nothing.
std::vector<HWND> dialogWindows(DWORD process);
bool isMessageBox(HWND dialog);

// What the dialog is about; of a message box its text.
std::wstring headlineOf(HWND dialog);

// Text of a window of any process; empty when it does not answer within two seconds.
std::wstring textOf(HWND window);

// Title and the texts of all visible controls, one a line.
std::wstring allTexts(HWND dialog);

// Whether the window's thread answers messages at all.
bool answers(HWND window);

}  // namespace printpath
