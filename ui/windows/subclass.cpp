#include "ui/windows/subclass.h"

#include "ui/windows/window_properties.h"

namespace {

WNDPROC originalProcedure(HWND window, const wchar_t* name) {
    return reinterpret_cast<WNDPROC>(::GetPropW(window, name));
}

}  // namespace

// The original procedure is kept before ours is installed, because the next message needs it.
void subclass(HWND window, const wchar_t* name, WNDPROC procedure) {
    const LONG_PTR before = ::GetWindowLongPtrW(window, GWLP_WNDPROC);
    setWindowProperty(window, name, reinterpret_cast<HANDLE>(before));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

bool isSubclassed(HWND window, const wchar_t* name) {
    return originalProcedure(window, name) != nullptr;
}

LRESULT callOriginal(HWND window, const wchar_t* name, UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC original = originalProcedure(window, name);
    if (original == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_DESTROY) {
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
        ::RemovePropW(window, name);
    }
    return ::CallWindowProcW(original, window, message, wParam, lParam);
}
