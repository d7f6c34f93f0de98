#include "ui/dialog_controls.h"

#include "ui/windows/accessible_control.h"
#include "ui/windows/dialog_scale.h"
#include "ui/windows/hyperlink.h"
#include "ui/windows/icon_loading.h"
#include "ui/windows/picture_painting.h"
#include "ui/windows/window_resources.h"
#include "ui/windows/window_scale.h"

namespace dialog_controls {

namespace {

constexpr LONG kHeadlineWeight = 600;

HWND controlOf(HWND window, int control) {
    return ::GetDlgItem(window, control);
}

HINSTANCE asModule(void* module) {
    return static_cast<HINSTANCE>(module);
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

void describe(HWND window, const std::wstring& linkAction) {
    describeControls(window, linkAction);
}

void show(HWND window, int control, bool visible) {
    const HWND found = controlOf(window, control);
    if (found != nullptr) ::ShowWindow(found, visible ? SW_SHOW : SW_HIDE);
}

void hideWindow(HWND window) {
    ::ShowWindow(window, SW_HIDE);
}

void moveWindow(HWND window, int x, int y) {
    DialogScale::of(window).standAt({x, y});
}

void placeAt(HWND window, int control, int where) {
    const HWND moved = controlOf(window, control);
    const HWND target = controlOf(window, where);
    DialogScale::of(window).putAt(moved, target);
}

void setIcons(HWND window, void* module, int icon) {
    WindowResources& resources = WindowResources::of(window);
    const auto set = [&](WPARAM kind, int sizeMetric) {
        const int size = metricAt(sizeMetric, DialogScale::of(window).dpi());
        resources.showIcon(window, kind, loadIcon(asModule(module), icon, size));
    };
    set(ICON_BIG, SM_CXICON);
    set(ICON_SMALL, SM_CXSMICON);
}

void setPicture(HWND window, int control, void* module, int bitmap) {
    const HWND found = controlOf(window, control);
    if (found == nullptr) return;
    WindowResources::of(window).showPicture(
        found, makeBitmap(window, asModule(module), bitmap, DialogScale::of(window).dpi()));
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
