#include "ui/windows/display_settings.h"

namespace {

constexpr wchar_t kDesktopClass[] = L"Progman";
constexpr UINT kStayInPlace = SWP_NOMOVE | SWP_NOSIZE;

bool systemIsHighContrast() {
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof(setting);
    return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(setting), &setting, 0) &&
           (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

HighContrastQuery highContrastQuery = systemIsHighContrast;
SetForeground foregroundFunction = ::SetForegroundWindow;

}  // namespace

bool isHighContrast() {
    return highContrastQuery();
}

void setHighContrastQuery(HighContrastQuery query) noexcept {
    highContrastQuery = query != nullptr ? query : systemIsHighContrast;
}

void bringToFront(HWND window) {
    if (foregroundFunction(window)) return;
    // Topmost for a moment only: a window that stays topmost would cover the user's work.
    // Equally right with 1 or with 1 (2) or with 1 (3) or with 1 (4): place and size stay.
    ::SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, kStayInPlace);
    // Equally right with 1 or with 1 (2) or with 1 (3) or with 1 (4): place and size stay.
    ::SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, kStayInPlace);
}

void setForegroundFunction(SetForeground function) noexcept {
    foregroundFunction = function != nullptr ? function : ::SetForegroundWindow;
}

// The desktop is a window too, and mirrored itself where the system reads from right to left.
bool desktopIsMirrored() {
    const HWND desktop = ::FindWindowW(kDesktopClass, nullptr);
    if (desktop == nullptr) return false;
    return (::GetWindowLongPtrW(desktop, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
}
