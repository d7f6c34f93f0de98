#pragma once

#include <windows.h>

// A second procedure in front of the one that a window has. `name` is the property that keeps the
// first one, a literal of its own for each kind of second procedure. Main thread.

// std::bad_alloc when the first one cannot be kept; the window then stays as it was.
void subclass(HWND window, const wchar_t* name, WNDPROC procedure);

[[nodiscard]] bool isSubclassed(HWND window, const wchar_t* name);

// Gives the message to the first procedure. At WM_DESTROY the window gets that one back before,
// because the system asks that a window has no properties left when it is gone.
LRESULT callOriginal(HWND window, const wchar_t* name, UINT message, WPARAM wParam, LPARAM lParam);
