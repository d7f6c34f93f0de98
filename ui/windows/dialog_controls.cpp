#include "ui/dialog_controls.h"

#include "ui/windows/hyperlink.h"
#include "ui/windows/picture_painting.h"
#include "ui/windows/window_resources.h"

namespace dialog_controls {

namespace {

constexpr LONG kHeadlineWeight = 600;

HWND controlOf(HWND window, int control) {
    return ::GetDlgItem(window, control);
}

HINSTANCE asModule(void* module) {
    return static_cast<HINSTANCE>(module);
}

Icon loadIcon(HINSTANCE module, int icon, int widthMetric, int heightMetric) {
    return Icon(static_cast<HICON>(
        ::LoadImageW(module, MAKEINTRESOURCEW(icon), IMAGE_ICON, ::GetSystemMetrics(widthMetric),
                     ::GetSystemMetrics(heightMetric), LR_DEFAULTCOLOR)));
}

void setHeadlineFont(HWND headline) {
    auto* current = reinterpret_cast<HFONT>(::SendMessageW(headline, WM_GETFONT, 0, 0));
    LOGFONTW description{};
    if (::GetObjectW(current, sizeof(description), &description) == 0) return;
    description.lfWeight = kHeadlineWeight;
    // The dialog keeps the font, because a control does not own the font that it is given.
    const HFONT font =
        WindowResources::of(::GetParent(headline)).keep(Font(::CreateFontIndirectW(&description)));
    if (font != nullptr) {
        ::SendMessageW(headline, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    }
}

}  // namespace

bool exists(HWND window, int control) {
    return controlOf(window, control) != nullptr;
}

bool usable(HWND window, int control) {
    const HWND found = controlOf(window, control);
    return found != nullptr && ::IsWindowEnabled(found) && ::IsWindowVisible(found);
}

std::wstring text(HWND window, int control) {
    const HWND found = controlOf(window, control);
    if (found == nullptr) return {};
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(found)) + 1, L'\0');
    const int units = ::GetWindowTextW(found, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(units));
    return text;
}

void setText(HWND window, int control, const std::wstring& text) {
    ::SetDlgItemTextW(window, control, text.c_str());
}

void setTitle(HWND window, const std::wstring& title) {
    ::SetWindowTextW(window, title.c_str());
}

// A picture static answers WM_SETTEXT with a picture of that name or with nothing, so the name is
// set past its procedure.
void setName(HWND window, int control, const std::wstring& name) {
    const HWND found = controlOf(window, control);
    if (found == nullptr) return;
    ::DefWindowProcW(found, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void show(HWND window, int control, bool visible) {
    const HWND found = controlOf(window, control);
    if (found != nullptr) ::ShowWindow(found, visible ? SW_SHOW : SW_HIDE);
}

void hideWindow(HWND window) {
    ::ShowWindow(window, SW_HIDE);
}

void moveWindow(HWND window, int x, int y) {
    ::SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void placeAt(HWND window, int control, int where) {
    const HWND moved = controlOf(window, control);
    const HWND target = controlOf(window, where);
    if (moved == nullptr || target == nullptr) return;
    RECT place{};
    RECT size{};
    ::GetWindowRect(target, &place);
    ::GetClientRect(moved, &size);
    // Both corners in one call: in a mirrored window the system then exchanges left and right.
    ::MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    ::MoveWindow(moved, place.left, place.top, size.right, size.bottom, TRUE);
}

void setIcons(HWND window, void* module, int icon) {
    WindowResources& resources = WindowResources::of(window);
    const auto set = [&](WPARAM which, int widthMetric, int heightMetric) {
        const HICON loaded =
            resources.keep(loadIcon(asModule(module), icon, widthMetric, heightMetric));
        ::SendMessageW(window, WM_SETICON, which, reinterpret_cast<LPARAM>(loaded));
    };
    set(ICON_BIG, SM_CXICON, SM_CYICON);
    set(ICON_SMALL, SM_CXSMICON, SM_CYSMICON);
}

void setPicture(HWND window, int control, void* module, int bitmap) {
    const HWND found = controlOf(window, control);
    if (found == nullptr) return;
    WindowResources::of(window).showPicture(
        found, makeBitmap(window, asModule(module), bitmap, USER_DEFAULT_SCREEN_DPI));
}

void setFont(HWND window, int control, Emphasis emphasis) {
    const HWND found = controlOf(window, control);
    if (found == nullptr) return;
    if (emphasis == Emphasis::Link) {
        setLinkFont(found, true);
    } else {
        setHeadlineFont(found);
    }
}

void makeLink(HWND window, int control) {
    const HWND found = controlOf(window, control);
    if (found != nullptr) SetHyperLink(found);
}

void setDefaultButton(HWND window, int control) {
    ::SendMessageW(window, DM_SETDEFID, static_cast<WPARAM>(control), 0);
}

void addChoice(HWND window, int list, const std::wstring& text) {
    ::SendDlgItemMessageW(window, list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void choose(HWND window, int list, int index) {
    ::SendDlgItemMessageW(window, list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

int choice(HWND window, int list) {
    return static_cast<int>(::SendDlgItemMessageW(window, list, CB_GETCURSEL, 0, 0));
}

void showMessage(HWND window, const std::wstring& text, const std::wstring& caption,
                 bool rightToLeft) {
    constexpr UINT kRightToLeft = MB_RTLREADING | MB_RIGHT;
    ::MessageBoxW(window, text.c_str(), caption.c_str(), rightToLeft ? kRightToLeft : 0U);
}

}  // namespace dialog_controls
