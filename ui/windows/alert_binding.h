#pragma once

#include <windows.h>

class StatusDialog;

// The tie between the window of an alert and its object. The object is named twice at the window:
// in the user data, which says whom messages go to and is cleared when the alert is closed, and in
// a property, which stays as long as the window so that the object hears of its end.
class AlertBinding {
public:
    // Null when the window cannot be made, or not be filled: there is no window then.
    static HWND make(HINSTANCE module, int templateId, StatusDialog& dialog);
    // Whether this is a living window of an alert.
    [[nodiscard]] static bool isAlert(HWND window) noexcept;
    [[nodiscard]] static bool belongsTo(HWND window, const StatusDialog& dialog) noexcept;
    // No message reaches the object any more.
    static void cutOff(HWND window) noexcept;

private:
    struct Opening;

    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;
    static void attach(HWND window, StatusDialog& dialog);
    static INT_PTR open(HWND window, WPARAM wParam, Opening& opening);
    static void forget(HWND window) noexcept;
};
