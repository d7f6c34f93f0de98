#pragma once

#include <windows.h>

// Whether a window without an owner lies above another one of the same desktop.
[[nodiscard]] inline bool isAbove(HWND upper, HWND lower) {
    HWND window = upper;
    while (window != nullptr && window != lower)
        window = ::GetWindow(window, GW_HWNDNEXT);
    return window == lower && upper != lower;
}
