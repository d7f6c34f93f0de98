#pragma once

#include <windows.h>

// Where the windows of the program stand. Main thread.

// In pixels of the screen.
[[nodiscard]] RECT placeOf(HWND window);
[[nodiscard]] SIZE clientSizeOf(HWND window);
// A control's, in pixels of the dialog's client area; in a mirrored dialog reckoned from the right.
[[nodiscard]] RECT placeIn(HWND dialog, HWND control);

// Moves a window so that its upper left corner comes to `corner`, or as near as shows all of the
// window within the work area of its screen. The size stays.
void standOnScreen(HWND window, POINT corner);
// The same for where it stands already.
void stayOnScreen(HWND window);
