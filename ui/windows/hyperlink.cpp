#include "ui/windows/hyperlink.h"

#include "platform/trace.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/window_properties.h"
#include "ui/windows/window_resources.h"

namespace {

constexpr wchar_t kOriginalProcedure[] = L"_Original_Proc_";
constexpr wchar_t kBlueText[] = L"_Blue_Text_";
constexpr COLORREF kLinkColour = RGB(0, 0, 255);

unsigned shown(const void* handle) {
    return static_cast<unsigned>(reinterpret_cast<UINT_PTR>(handle));
}

WNDPROC originalProcedure(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetPropW(window, kOriginalProcedure));
}

LRESULT callOriginal(WNDPROC original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return original != nullptr ? ::CallWindowProcW(original, window, message, wParam, lParam)
                               : ::DefWindowProcW(window, message, wParam, lParam);
}

// At WM_DESTROY, because the system asks that a window has no properties left when it is gone. What
// comes after that message goes to the original procedure.
void restoreProcedure(HWND window, WNDPROC original) {
    if (original == nullptr) return;
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
    ::RemovePropW(window, kOriginalProcedure);
    ::RemovePropW(window, kBlueText);
}

// The original procedure is kept before ours is installed, because the next message needs it.
void subclass(HWND window, WNDPROC procedure) {
    const LONG_PTR before = ::GetWindowLongPtrW(window, GWLP_WNDPROC);
    setWindowProperty(window, kOriginalProcedure, reinterpret_cast<HANDLE>(before));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

void setHandCursor() {
    HCURSOR cursor = ::LoadCursorW(nullptr, IDC_HAND);
    if (cursor == nullptr) cursor = ::LoadCursorW(nullptr, IDC_ARROW);
    ::SetCursor(cursor);
}

LRESULT CALLBACK linkProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const WNDPROC original = originalProcedure(window);
    if (message == WM_SETCURSOR) {
        setHandCursor();
        return TRUE;  // and do not ask the dialog, which would set the arrow
    }
    if (message == WM_DESTROY) restoreProcedure(window, original);
    return callOriginal(original, window, message, wParam, lParam);
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
    const WNDPROC original = originalProcedure(window);
    if (message == WM_DESTROY) restoreProcedure(window, original);
    // The dialog answers first: its brush is the answer, and the black that it sets for its texts
    // would replace our blue.
    const LRESULT result = callOriginal(original, window, message, wParam, lParam);
    if (message == WM_CTLCOLORSTATIC) {
        auto* control = reinterpret_cast<HWND>(lParam);
        if (::GetPropW(control, kBlueText) != nullptr) {
            paintBlue(reinterpret_cast<HDC>(wParam), control);
        }
    }
    return result;
}

}  // namespace

void SetHyperLink(HWND control) {
    platform::trace("TERNA - SetHyperLink hwndCtl=%#x", shown(control));
    if (::GetPropW(control, kBlueText) != nullptr) return;  // a link already
    // Without SS_NOTIFY the mouse passes through a static control to the dialog.
    const LONG_PTR style = ::GetWindowLongPtrW(control, GWL_STYLE);
    ::SetWindowLongPtrW(control, GWL_STYLE, style | SS_NOTIFY);
    subclass(control, linkProcedure);
    setWindowProperty(control, kBlueText, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(1)));

    const HWND parent = ::GetParent(control);
    if (parent == nullptr || originalProcedure(parent) != nullptr) return;
    // A dialog that was taken over twice would have our procedure as its original one, and that
    // would call itself without end.
    if (::GetWindowLongPtrW(parent, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(parentProcedure)) {
        return;
    }
    subclass(parent, parentProcedure);
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
    ::InvalidateRect(control, nullptr, TRUE);
}
