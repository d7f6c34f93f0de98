#pragma once

#include <windows.h>

// Keeps a value at a window under a name until RemovePropW takes it away. `name` must be a literal.
// std::bad_alloc when the system has no room for it. Main thread.
void setWindowProperty(HWND window, const wchar_t* name, void* value);

// The system's function can be replaced: no test machine can be made to refuse a property.
using SetProperty = BOOL(WINAPI*)(HWND, LPCWSTR, HANDLE);
void setPropertyFunction(SetProperty function) noexcept;  // null: the system's
