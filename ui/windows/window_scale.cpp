#include "ui/windows/window_scale.h"

#include "ui/windows/gdi_handles.h"

namespace {

// A function of the system's library by its name; null on older systems, which lack it.
template <typename Function>
Function optionalFunction(const char* name) noexcept {
    const HMODULE library = ::GetModuleHandleW(L"user32.dll");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

}  // namespace

int screenDpi(HWND window) {
    static const auto query = optionalFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    if (query != nullptr) return static_cast<int>(query(window));
    const WindowDc dc(window);  // Equally right with nullptr for window: all have one scale.
    return ::GetDeviceCaps(dc.get(), LOGPIXELSY);
}

int metricAt(int metric, int dpi) {
    static const auto query = optionalFunction<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
    if (query != nullptr) return query(metric, static_cast<UINT>(dpi));
    return ::GetSystemMetrics(metric);
}

SIZE framed(SIZE client, HWND window, int dpi) {
    using Adjust = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    static const auto adjust = optionalFunction<Adjust>("AdjustWindowRectExForDpi");
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE));
    // Equally right with nullptr for window: the title bar brings the same frame.
    const auto extended = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE));
    RECT area{0, 0, client.cx, client.cy};
    if (adjust != nullptr) {
        adjust(&area, style, FALSE, extended, static_cast<UINT>(dpi));
    } else {
        ::AdjustWindowRectEx(&area, style, FALSE, extended);
    }
    return {area.right - area.left, area.bottom - area.top};
}

void leaveScaleToTheDialog(HWND dialog) {
    constexpr int kDisableAll = 1;  // DDC_DISABLE_ALL
    using Change = BOOL(WINAPI*)(HWND, int, int);
    static const auto change = optionalFunction<Change>("SetDialogDpiChangeBehavior");
    if (change != nullptr) change(dialog, kDisableAll, kDisableAll);
}
