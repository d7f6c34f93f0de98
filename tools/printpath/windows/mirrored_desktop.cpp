#include "tools/printpath/windows/mirrored_desktop.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wine.h"

namespace printpath {

namespace {

constexpr wchar_t kDesktopClass[] = L"Progman";

}  // namespace

MirroredDesktop::MirroredDesktop() {
    if (!underWine())
        throw Failure("the desktop is mirrored in a Wine prefix only", Outcome::Unusable);
    WNDCLASSW desktop{};
    desktop.lpfnWndProc = ::DefWindowProcW;
    desktop.hInstance = ::GetModuleHandleW(nullptr);
    desktop.lpszClassName = kDesktopClass;
    ::RegisterClassW(&desktop);
    _window = ::CreateWindowExW(WS_EX_LAYOUTRTL | WS_EX_TOOLWINDOW, kDesktopClass, L"", WS_POPUP, 0,
                                0, 1, 1, nullptr, nullptr, desktop.hInstance, nullptr);
    if (_window == nullptr)
        throw Failure("the mirrored desktop could not be made", Outcome::Unusable);
}

MirroredDesktop::~MirroredDesktop() {
    ::DestroyWindow(_window);
    ::UnregisterClassW(kDesktopClass, ::GetModuleHandleW(nullptr));
}

}  // namespace printpath
