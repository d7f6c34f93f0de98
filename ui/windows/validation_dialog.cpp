#include "ui/validation_dialog.h"

#include "device/cartridge_validation.h"
#include "device/web_links.h"
#include "platform/trace.h"
#include "strings/string_ids.h"
#include "ui/dialog_controls.h"
#include "ui/localized_text.h"
#include "ui/resource_ids.h"
#include "ui/validation_texts.h"
#include "ui/windows/dialog_scale.h"
#include "ui/windows/dialog_template.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/face_colours.h"
#include "ui/windows/hyperlink.h"
#include "ui/windows/window_place.h"
#include "ui/windows/window_resources.h"
#include "ui/windows/window_scale.h"

#include <algorithm>
#include <exception>

namespace {

constexpr COLORREF kBannerColour = RGB(0, 0, 200);
constexpr COLORREF kBannerText = RGB(255, 255, 255);
// Pixels of the design
constexpr int kBannerHeight = 46, kBannerLeft = 18, kBannerFontHeight = 24;
constexpr int kLinkGap = 4;  // between the halves of the learn-more line
constexpr wchar_t kBannerFont[] = L"MS Shell Dlg 2";

// The check that is open, and what showValidationDialog() was called with for it. There is one at a
// time: two of them would ask the same question, and submitting either ends the process.
struct CheckState {
    HINSTANCE module = nullptr;
    void* strings = nullptr;
    std::wstring printerName;
    HWND window = nullptr;
    bool isFilled = false;  // its WM_INITDIALOG ended well
};
CheckState& state() {
    static CheckState instance;
    return instance;
}

std::wstring text(std::uint32_t id) {
    return localizedText(state().strings, id);
}

void showTexts(HWND dialog, std::span<const ControlText> rows) {
    for (const ControlText& row : rows) {
        dialog_controls::setTextIfAny(dialog, row.control, text(row.text));
        if (row.style == TextStyle::Heading) {
            dialog_controls::setFont(dialog, row.control, dialog_controls::Emphasis::Headline);
        }
        if (row.style != TextStyle::Link) continue;
        dialog_controls::setFont(dialog, row.control, dialog_controls::Emphasis::Link);
        dialog_controls::makeLink(dialog, row.control);
    }
}

void prepare(HWND dialog, std::uint32_t title, std::span<const ControlText> rows) {
    DialogScale::of(dialog).begin();
    stayOnScreen(dialog);
    const std::wstring shown = text(title);
    if (!shown.empty()) dialog_controls::setTitle(dialog, shown);
    dialog_controls::setIcons(dialog, state().module, IDI_PROGRAM);
    showTexts(dialog, rows);
    dialog_controls::describe(dialog, text(IDS_NAME_LINK_ACTION));
}

int textWidth(HWND control) {
    const WindowDc dc(control);
    const SelectedObject font(dc.get(),
                              reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)));
    const std::wstring shown = dialog_controls::text(::GetParent(control), ::GetDlgCtrlID(control));
    SIZE size{};
    ::GetTextExtentPoint32W(dc.get(), shown.c_str(), static_cast<int>(shown.size()), &size);
    return size.cx;
}

// The two halves of the learn-more line make one sentence, wherever the first one ends.
void joinLearnMore(HWND dialog) {
    const HWND link = ::GetDlgItem(dialog, IDC_CHECK_LEARN_MORE);
    const HWND rest = ::GetDlgItem(dialog, IDC_CHECK_LEARN_MORE_REST);
    if (link == nullptr || rest == nullptr) return;
    const RECT line = placeIn(dialog, link);
    const int height = line.bottom - line.top;
    const int width = std::min<int>(textWidth(link), line.right - line.left);
    // A language may put the whole sentence into the link; its rest is then a blank.
    const bool hasRest = dialog_controls::text(dialog, IDC_CHECK_LEARN_MORE_REST) != L" ";
    dialog_controls::show(dialog, IDC_CHECK_LEARN_MORE_REST, hasRest);
    const int restLeft = line.left + width + scaled(kLinkGap, DialogScale::of(dialog).dpi());
    ::MoveWindow(link, line.left, line.top, width, height, TRUE);
    ::MoveWindow(rest, restLeft, line.top, std::max<int>(line.right - restLeft, 0), height, TRUE);
}

void paintBanner(HDC dc, HWND dialog) {
    const int dpi = DialogScale::of(dialog).dpi();
    const int textLeft = scaled(kBannerLeft, dpi);
    RECT area{0, 0, clientSizeOf(dialog).cx, scaled(kBannerHeight, dpi)};
    const bool contrast = isHighContrast();
    const Brush brush(::CreateSolidBrush(contrast ? ::GetSysColor(COLOR_WINDOW) : kBannerColour));
    ::FillRect(dc, &area, brush.get());
    const Font font(::CreateFontW(scaled(kBannerFontHeight, dpi), 0, 0, 0, FW_SEMIBOLD, FALSE,
                                  FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                  CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                                  DEFAULT_PITCH | FF_DONTCARE, kBannerFont));
    const SavedDc saved(dc);
    const SelectedObject selected(dc, font.get());
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, contrast ? ::GetSysColor(COLOR_WINDOWTEXT) : kBannerText);
    UINT format = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;
    if ((::GetWindowLongPtrW(dialog, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0) {
        // The format asks for words from right to left, because a mirrored device context alone
        // does not order them so on every system.
        ::SetLayout(dc, 0);
        area.right -= textLeft;
        format |= DT_RIGHT | DT_RTLREADING;
    } else {
        area.left = textLeft;
    }
    const std::wstring shown = text(IDS_CHECK_BANNER);
    ::DrawTextW(dc, shown.c_str(), static_cast<int>(shown.size()), &area, format);
}

INT_PTR paint(HWND dialog) {
    PAINTSTRUCT painting{};
    const HDC dc = ::BeginPaint(dialog, &painting);
    paintBanner(dc, dialog);
    ::EndPaint(dialog, &painting);
    return TRUE;  // Equally right with FALSE: nothing is left to be painted.
}

// What both windows do with every message but their own commands.
INT_PTR commonAnswer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (isColourRequest(message)) return paintFace(dialog, message, wParam);
    // Equally right with nullptr for dialog: then every window is painted again.
    if (isColourChange(message, wParam)) followColourChange(dialog, message);
    if (message == WM_NCDESTROY) {
        WindowResources::release(dialog);
        if (dialog == state().window) state().window = nullptr;
        return FALSE;
    }
    if (!DialogScale::answer(dialog, message, wParam, lParam)) return FALSE;
    if (message == kScaleChanged) {
        // Equally right after the next: the icon stands in the title bar.
        dialog_controls::setIcons(dialog, state().module, IDI_PROGRAM);
        joinLearnMore(dialog);
    }
    return TRUE;
}

// A link sends STN_CLICKED for the first click of a double click and STN_DBLCLK for the second.
bool isSecondClick(WPARAM wParam) {
    return HIWORD(wParam) == STN_DBLCLK;
}

INT_PTR answerDetails(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            prepare(dialog, IDS_DETAILS_TITLE, cartridgeCheckDetailTexts());
            return focusPastLinks(dialog) ? FALSE : TRUE;
        case WM_COMMAND:
            if (isSecondClick(wParam)) return TRUE;
            if (checkAction(cartridgeCheckDetailTexts(), LOWORD(wParam)) ==
                CheckAction::OpenPrivacyPage) {
                openPrivacyPage();
            } else {
                ::EndDialog(dialog, LOWORD(wParam));
            }
            return TRUE;
        default:
            return commonAnswer(dialog, message, wParam, lParam);
    }
}

// No exception may leave this function: the system that calls it does not know exceptions.
template <INT_PTR (*answer)(HWND, UINT, WPARAM, LPARAM)>
INT_PTR CALLBACK guarded(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        return answer(dialog, message, wParam, lParam);
    } catch (const std::exception& error) {
        platform::trace("TERNA - error: %s", error.what());
        // A page that lacks some of its texts must not ask. A modal page that is ended here is
        // never shown.
        if (message == WM_INITDIALOG) ::EndDialog(dialog, 0);
        return FALSE;
    }
}

INT_PTR answerCheckCommand(HWND dialog, int control) {
    switch (checkAction(cartridgeCheckTexts(), control)) {
        case CheckAction::Submit:
            validateCartridge(state().printerName);  // ends the process and does not return
        case CheckAction::ShowDetails:
            runDialog(state().module, IDD_CARTRIDGE_CHECK_DETAILS, dialog, guarded<answerDetails>);
            // Equally right with nullptr for dialog: then every window is painted again.
            ::InvalidateRect(dialog, nullptr, TRUE);
            return TRUE;
        case CheckAction::Close:
            // Equally right without it or after the next or with nullptr for dialog: it goes.
            ::EndDialog(dialog, control);
            ::DestroyWindow(dialog);  // without an owner's loop it would only be hidden
            return TRUE;
        default:
            return TRUE;
    }
}

INT_PTR answerCheck(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            WindowResources::of(dialog).filterKeys(dialog, LetterRules::OfTheCaptions);
            prepare(dialog, IDS_CHECK_TITLE, cartridgeCheckTexts());
            joinLearnMore(dialog);
            dialog_controls::setDefaultButton(dialog, IDC_CHECK_SUBMIT);
            state().isFilled = true;
            return focusPastLinks(dialog) ? FALSE : TRUE;
        case WM_COMMAND:
            if (isSecondClick(wParam)) return TRUE;
            return answerCheckCommand(dialog, LOWORD(wParam));
        case WM_PAINT:
            return paint(dialog);
        default:
            return commonAnswer(dialog, message, wParam, lParam);
    }
}

}  // namespace

void showValidationDialog(void* hinstance, void* hSinstance, const std::wstring& printerName) {
    if (state().window != nullptr) {
        // While its details are open they are in front, and the check takes no input.
        bringToFront(::GetLastActivePopup(state().window));
        return;
    }
    state() = {static_cast<HINSTANCE>(hinstance), hSinstance, printerName, nullptr, false};
    const HWND dialog = createDialog(state().module, IDD_CARTRIDGE_CHECK, guarded<answerCheck>, 0);
    if (dialog == nullptr) return;
    if (!state().isFilled) {
        ::DestroyWindow(dialog);
        return;
    }
    state().window = dialog;
    ::ShowWindow(dialog, SW_SHOW);
    bringToFront(dialog);
}
