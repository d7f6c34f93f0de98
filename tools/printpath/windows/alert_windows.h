#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The dialogs of the monitor as another program sees them.
namespace printpath {

struct AlertWindow {
    HWND window = nullptr;
    bool messageBox = false;
    std::wstring title;
    std::wstring headline;  // of a message box: its text
};

// Visible dialogs and message boxes of a process, in no fixed order. Asks the process nothing.
std::vector<HWND> dialogWindows(DWORD process);
// The same with their texts, for which the process must answer.
std::vector<AlertWindow> openDialogs(DWORD process);

// Text of a window of any process; empty when it does not answer within two seconds.
std::wstring textOf(HWND window);

// Title and the texts of all visible controls, one a line.
std::wstring allTexts(HWND dialog);

// Whether the window's thread answers messages at all.
bool answers(HWND window);

// Id that every message box gives to its text.
inline constexpr int kMessageBoxText = 0xFFFF;

}  // namespace printpath
