#include "ui/windows/dialog_scale.h"

#include "ui/windows/dialog_units.h"
#include "ui/windows/font_set.h"
#include "ui/windows/window_place.h"
#include "ui/windows/window_resources.h"
#include "ui/windows/window_scale.h"

#include <algorithm>

namespace {

// Systems offer from 96 to 480 dots per inch. Beyond twice as much a picture would take more time
// and room than any screen is worth, and a number that a message brings may be anything.
constexpr int kLeastDpi = 48, kMostDpi = 960;
constexpr UINT kKeepOrder = SWP_NOZORDER | SWP_NOACTIVATE;

HFONT fontOf(HWND window) {
    return reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
}

LONG fontHeightOf(HWND window) {
    LOGFONTW font{};
    // With a wrong height the same layout is only made once more.
    // Equally right without it or with nullptr for &font or with nullptr for window: see above.
    ::GetObjectW(fontOf(window), sizeof(font), &font);
    return font.lfHeight;
}

POINT cornerOf(HWND window) {
    const RECT place = placeOf(window);
    return {place.left, place.top};
}

bool isAt(HWND window, POINT corner) {
    const POINT now = cornerOf(window);
    return now.x == corner.x && now.y == corner.y;
}

bool isPossible(int dpi) {
    return dpi >= kLeastDpi && dpi <= kMostDpi;
}

// Before a dialog has all of its controls, its layout cannot be recorded.
bool isLaidOut(HWND dialog) {
    const WindowResources* resources = WindowResources::find(dialog);
    return resources != nullptr && resources->hasScale();
}

// A window that the user drags to another screen is the user's to place.
bool userMovesAWindow() {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    return ::GetGUIThreadInfo(::GetCurrentThreadId(), &info) && (info.flags & GUI_INMOVESIZE) != 0;
}

}  // namespace

DialogScale& DialogScale::of(HWND dialog) {
    return WindowResources::of(dialog).scale(dialog);
}

DialogScale::DialogScale(HWND dialog)
    : _dialog(dialog), _dpi(kDesignDpi), _fontHeight(fontHeightOf(dialog)) {
    leaveScaleToTheDialog(dialog);
    const DesignUnits design(dialog);
    _client = design(clientSizeOf(dialog));
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        _controls.push_back({child, design(placeIn(dialog, child))});
    }
}

void DialogScale::begin() {
    const int dpi = screenDpi(_dialog);
    if (dpi == _dpi && _fontHeight == dialogFontHeight(dpi)) return;
    const RECT made = placeOf(_dialog);
    POINT corner{made.left, made.top};
    if ((::GetWindowLongPtrW(_dialog, GWL_STYLE) & DS_CENTER) != 0) {
        const SIZE size = framed(clientAt(dpi), _dialog, dpi);
        // Equally right after the next: one is across, the other down.
        corner.x -= (size.cx - (made.right - made.left)) / 2;
        corner.y -= (size.cy - (made.bottom - made.top)) / 2;
    }
    changeTo(dpi, corner);
}

bool DialogScale::answer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kScaleChanged && message != kSizeAtScale) return false;
    const int dpi = LOWORD(wParam);
    if (!isPossible(dpi) || !isLaidOut(dialog)) return false;
    if (message == kScaleChanged) {
        of(dialog).onScaleChanged(dpi, reinterpret_cast<const RECT*>(lParam));
        ::SetWindowLongPtrW(dialog, DWLP_MSGRESULT, 0);
    } else {
        // Else the system would expect a window that has grown evenly, frame and all.
        *reinterpret_cast<SIZE*>(lParam) = framed(of(dialog).clientAt(dpi), dialog, dpi);
        ::SetWindowLongPtrW(dialog, DWLP_MSGRESULT, TRUE);
    }
    return true;
}

// The system suggests a place; without one the dialog stays where it is.
void DialogScale::onScaleChanged(int dpi, const RECT* suggested) {
    const POINT corner =
        suggested != nullptr ? POINT{suggested->left, suggested->top} : cornerOf(_dialog);
    changeTo(dpi, corner);
    if (!userMovesAWindow()) stayOnScreen(_dialog);
}

void DialogScale::standAt(POINT place) {
    _opened = place;  // Equally right after the next: that asks only where it stands.
    standOnScreen(_dialog, {scaled(place.x, _dpi), scaled(place.y, _dpi)});
    _corner = cornerOf(_dialog);
}

void DialogScale::putAt(HWND control, HWND where) {
    Control* moved = find(control);
    const Control* target = find(where);
    if (moved == nullptr || target == nullptr) return;
    ::OffsetRect(&moved->design, target->design.left - moved->design.left,
                 target->design.top - moved->design.top);
    place(*moved);
}

void DialogScale::raise(HWND control, int pixels) {
    Control* raised = find(control);
    if (raised == nullptr) return;
    ::OffsetRect(&raised->design, 0, -pixels);
    place(*raised);
}

void DialogScale::shrink(int pixels) {
    _client.cy -= pixels;
    const POINT corner = cornerOf(_dialog);
    setSize(corner);
    // The lower window may have room where the higher one had to move in.
    if (isAt(_dialog, _corner)) standAt(_opened);
}

SIZE DialogScale::clientAt(int dpi) const {
    return {scaled(_client.cx, dpi), scaled(_client.cy, dpi)};
}

DialogScale::Control* DialogScale::find(HWND control) {
    const auto found = std::find_if(_controls.begin(), _controls.end(),
                                    [control](const auto& each) { return each.window == control; });
    return found != _controls.end() ? &*found : nullptr;
}

void DialogScale::place(const Control& control) const {
    const RECT& design = control.design;
    ::MoveWindow(control.window, scaled(design.left, _dpi), scaled(design.top, _dpi),
                 scaled(design.right - design.left, _dpi), scaled(design.bottom - design.top, _dpi),
                 TRUE);
}

void DialogScale::changeTo(int dpi, POINT corner) {
    setFonts(dialogFontHeight(dpi));  // first, because this may fail
    _dpi = dpi;
    // Before the controls: in a mirrored dialog their places are reckoned from its right side.
    setSize(corner);
    for (const Control& control : _controls)
        place(control);
    ::RedrawWindow(_dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// Every control keeps the kind of its font.
void DialogScale::setFonts(LONG height) {
    if (height == _fontHeight) return;
    FontSet fonts(height);
    for (const Control& control : _controls)
        fonts.like(fontOf(control.window));
    for (const Control& control : _controls) {
        const HFONT font = fonts.like(fontOf(control.window));
        if (font == nullptr) continue;  // a picture has none
        ::SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
    WindowResources::of(_dialog).replaceFonts(fonts.take());
    _fontHeight = height;
}

// The frame may turn out different from what was reckoned, where the system cannot draw it at
// another scale than its own.
void DialogScale::setSize(POINT corner) const {
    const int dpi = _dpi;
    const SIZE client = clientAt(dpi);
    const SIZE size = framed(client, _dialog, dpi);
    ::SetWindowPos(_dialog, nullptr, corner.x, corner.y, size.cx, size.cy, kKeepOrder);
    if (_dpi != dpi) return;  // it has come to another screen, for which it has its size by now
    const SIZE now = clientSizeOf(_dialog);
    if (now.cx == client.cx && now.cy == client.cy) return;
    ::SetWindowPos(_dialog, nullptr, 0, 0, size.cx + client.cx - now.cx,
                   size.cy + client.cy - now.cy, kKeepOrder | SWP_NOMOVE);
}
