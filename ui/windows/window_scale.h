#pragma once

#include <windows.h>

// How large the system wants a window to be drawn, in dots per inch. All lengths in pixels that our
// sources name are those of a screen with 96 of them. Main thread.

inline constexpr int kDesignDpi = 96;

// Messages that systems before Windows 10 do not send, so that our headers lack their names: the
// scale of a window has changed, and the size that it will have at another one.
inline constexpr UINT kScaleChanged = 0x02E0;  // WM_DPICHANGED
inline constexpr UINT kSizeAtScale = 0x02E4;   // WM_GETDPISCALEDSIZE

// A length of the design as it is at `dpi`, rounded to whole pixels.
[[nodiscard]] inline int scaled(int pixels, int dpi) noexcept {
    return ::MulDiv(pixels, dpi, kDesignDpi);
}

// Of the screen on which the window is. Systems that know only one scale for all screens give that.
[[nodiscard]] int screenDpi(HWND window);

// A metric of the system (SM_...) at a scale; the metric of the system's own scale where it knows
// no other.
[[nodiscard]] int metricAt(int metric, int dpi);

// The size of a window of this style around a client area.
[[nodiscard]] SIZE framed(SIZE client, HWND window, int dpi);

// Keeps the system from laying the dialog out anew when its scale changes: DialogScale does that.
// Systems without this function do not try.
void leaveScaleToTheDialog(HWND dialog);
