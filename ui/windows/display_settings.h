#pragma once

#include <windows.h>

// What the user's display asks of our own painting. Two functions of the system that are behind
// this can be replaced, because no test machine can be made to answer in every way. Main thread.

// Whether the user chose a high-contrast scheme: everything is painted in system colours then.
[[nodiscard]] bool isHighContrast();
using HighContrastQuery = bool (*)();
void setHighContrastQuery(HighContrastQuery query) noexcept;  // null: ask the system

// Brings a window to the front. The system refuses when another program has the user's attention;
// the window is then put on top of the others without taking the keyboard.
void bringToFront(HWND window);
using SetForeground = BOOL(WINAPI*)(HWND);
void setForegroundFunction(SetForeground function) noexcept;  // null: the system's

// Whether the desktop runs from right to left; alerts are mirrored then.
[[nodiscard]] bool desktopIsMirrored();
