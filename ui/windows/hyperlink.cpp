#include "ui/windows/hyperlink.h"

#include "platform/trace.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/gdi_handles.h"
#include "ui/windows/subclass.h"
#include "ui/windows/window_properties.h"
#include "ui/windows/window_resources.h"

#include <algorithm>

namespace {

constexpr wchar_t kOriginalProcedure[] = L"_Original_Proc_";
constexpr wchar_t kBlueText[] = L"_Blue_Text_";
constexpr COLORREF kLinkColour = RGB(0, 0, 255);
constexpr int kLongestText = 1024;  // units of a link's text, as texts are loaded

unsigned shown(const void* handle) {
    return static_cast<unsigned>(reinterpret_cast<UINT_PTR>(handle));
}

void setHandCursor() {
    HCURSOR cursor = ::LoadCursorW(nullptr, IDC_HAND);
    if (cursor == nullptr) cursor = ::LoadCursorW(nullptr, IDC_ARROW);
    ::SetCursor(cursor);
}

bool opensLink(WPARAM key) {
    return key == VK_RETURN || key == VK_SPACE;
}

// What a click sends. A key that is held down is pressed once.
void click(HWND link, LPARAM keyFlags) {
    if ((HIWORD(keyFlags) & KF_REPEAT) != 0) return;
    ::SendMessageW(::GetParent(link), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(link), STN_CLICKED),
                   reinterpret_cast<LPARAM>(link));
}

// The dialog asks whom a key belongs to. Without this answer Enter would press the default button.
LRESULT dialogCode(LPARAM lParam) {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    const bool isEnter =
        message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
    return isEnter ? DLGC_WANTMESSAGE : 0;
}

// Around the text, because the control itself may be as wide as its dialog.
void paintFocus(HWND link) {
    if (::GetFocus() != link) return;
    if ((::SendMessageW(link, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) != 0) return;
    const WindowDc dc(link);
    const SelectedObject font(dc.get(),
                              reinterpret_cast<HFONT>(::SendMessageW(link, WM_GETFONT, 0, 0)));
    wchar_t text[kLongestText] = {};
    const int units = ::GetWindowTextW(link, text, kLongestText);
    RECT area{};
    ::GetClientRect(link, &area);
    const RECT control = area;
    ::DrawTextW(dc.get(), text, units, &area, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    area.right = std::min(area.right, control.right);
    area.bottom = std::min(area.bottom, control.bottom);
    ::SetTextColor(dc.get(), ::GetSysColor(COLOR_WINDOWTEXT));
    ::SetBkColor(dc.get(), ::GetSysColor(COLOR_WINDOW));
    ::DrawFocusRect(dc.get(), &area);
}

LRESULT CALLBACK linkProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_SETCURSOR:
            setHandCursor();
            return TRUE;  // and do not ask the dialog, which would set the arrow
        case WM_GETDLGCODE:
            return dialogCode(lParam);
        case WM_KEYDOWN:
            if (!opensLink(wParam)) break;
            click(window, lParam);
            return 0;
        case WM_LBUTTONDOWN:
            ::SetFocus(window);
            break;  // Equally right without it: the link is painted once more.
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            ::InvalidateRect(window, nullptr, TRUE);
            break;
        case WM_PAINT: {
            const LRESULT result =
                callOriginal(window, kOriginalProcedure, message, wParam, lParam);
            paintFocus(window);
            return result;
        }
        case WM_DESTROY:
            ::RemovePropW(window, kBlueText);
            break;
        default:
            break;
    }
    return callOriginal(window, kOriginalProcedure, message, wParam, lParam);
}

// The trace says blue under a high-contrast scheme too: people search for its words.
void paintBlue(HDC dc, HWND control) {
    const COLORREF colour = isHighContrast() ? ::GetSysColor(COLOR_HOTLIGHT) : kLinkColour;
    if (::SetTextColor(dc, colour) == CLR_INVALID) {
        platform::trace("TERNA - failed SetTextColor");
    } else {
        platform::trace("TERNA - SetTextColor to blue hwnd=%#x,hdc=%#x", shown(control), shown(dc));
    }
}

LRESULT CALLBACK parentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    // The dialog answers first: its brush is the answer, and the black that it sets for its texts
    // would replace our blue.
    const LRESULT result = callOriginal(window, kOriginalProcedure, message, wParam, lParam);
    if (message == WM_CTLCOLORSTATIC) {
        auto* control = reinterpret_cast<HWND>(lParam);
        if (isHyperLink(control)) {
            paintBlue(reinterpret_cast<HDC>(wParam), control);
        }
    }
    return result;
}

}  // namespace

bool isHyperLink(HWND control) {
    return ::GetPropW(control, kBlueText) != nullptr;
}

void SetHyperLink(HWND control) {
    platform::trace("TERNA - SetHyperLink hwndCtl=%#x", shown(control));
    if (isHyperLink(control)) return;  // already
    // Without SS_NOTIFY the mouse passes through a static control to the dialog.
    const LONG_PTR style = ::GetWindowLongPtrW(control, GWL_STYLE);
    ::SetWindowLongPtrW(control, GWL_STYLE, style | SS_NOTIFY | WS_TABSTOP);
    subclass(control, kOriginalProcedure, linkProcedure);
    setWindowProperty(control, kBlueText, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(1)));

    const HWND parent = ::GetParent(control);
    if (parent == nullptr || isSubclassed(parent, kOriginalProcedure)) return;
    // A dialog that was taken over twice would have our procedure as its original one, and that
    // would call itself without end.
    if (::GetWindowLongPtrW(parent, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(parentProcedure)) {
        return;
    }
    subclass(parent, kOriginalProcedure, parentProcedure);
}

bool focusPastLinks(HWND dialog) {
    const HWND first = ::GetNextDlgTabItem(dialog, nullptr, FALSE);
    HWND control = first;
    while (control != nullptr && isHyperLink(control)) {
        control = ::GetNextDlgTabItem(dialog, control, FALSE);
        if (control == first) return false;
    }
    if (control == nullptr || control == first) return false;
    ::SetFocus(control);
    return true;
}

void setLinkFont(HWND control, bool underline) {
    auto* current = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
    LOGFONTW description{};
    if (::GetObjectW(current, sizeof(description), &description) == 0) return;
    if (underline) description.lfUnderline = TRUE;
    const HFONT font =
        WindowResources::of(::GetParent(control)).keep(Font(::CreateFontIndirectW(&description)));
    if (font == nullptr) return;
    ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    // Equally right with nullptr for control: then every window is painted again.
    ::InvalidateRect(control, nullptr, TRUE);
}
