#include "ui/windows/window_place.h"

#include "ui/screen_place.h"

namespace {

ScreenPlace workArea(const RECT& place) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfoW(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& area = monitor.rcWork;
    return {area.left, area.top, area.right, area.bottom};
}

}  // namespace

RECT placeOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

SIZE clientSizeOf(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    return {client.right, client.bottom};
}

RECT placeIn(HWND dialog, HWND control) {
    RECT place = placeOf(control);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void stayOnScreen(HWND window) {
    const RECT place = placeOf(window);
    standOnScreen(window, {place.left, place.top});
}

void standOnScreen(HWND window, POINT corner) {
    RECT wanted = placeOf(window);
    ::OffsetRect(&wanted, corner.x - wanted.left, corner.y - wanted.top);
    const ScreenPlace place =
        keptInside({wanted.left, wanted.top, wanted.right, wanted.bottom}, workArea(wanted));
    // Equally right with 1 or with 1 (2): the size stays.
    ::SetWindowPos(window, nullptr, place.left, place.top, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
