#include "ui/windows/face_colours.h"

#include "ui/windows/display_settings.h"
#include "ui/windows/window_resources.h"

namespace {

constexpr COLORREF kText = RGB(0, 0, 0);

}  // namespace

COLORREF faceColour() {
    return isHighContrast() ? ::GetSysColor(COLOR_3DFACE) : kFace;
}

bool isColourRequest(UINT message) {
    return message == WM_CTLCOLORDLG || message == WM_CTLCOLORSTATIC;
}

INT_PTR paintFace(HWND dialog, UINT message, WPARAM wParam) {
    if (isHighContrast()) return FALSE;
    if (message == WM_CTLCOLORSTATIC) {
        auto* dc = reinterpret_cast<HDC>(wParam);
        ::SetTextColor(dc, kText);
        ::SetBkColor(dc, kFace);
    }
    return reinterpret_cast<INT_PTR>(WindowResources::of(dialog).faceBrush());
}

bool isColourChange(UINT message, WPARAM wParam) {
    return message == WM_SYSCOLORCHANGE || message == WM_THEMECHANGED ||
           (message == WM_SETTINGCHANGE && wParam == SPI_SETHIGHCONTRAST);
}

void followColourChange(HWND dialog, UINT message) {
    if (message == WM_SYSCOLORCHANGE) {
        // The system tells only top-level windows, and some controls keep brushes of their own.
        const auto tell = [](HWND control, LPARAM) -> BOOL {
            ::SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
            return TRUE;
        };
        ::EnumChildWindows(dialog, tell, 0);
    }
    ::InvalidateRect(dialog, nullptr, TRUE);
}
