#include "ui/button_faces.h"
#include "ui/default_status_dialog.h"
#include "ui/dialog_controls.h"
#include "ui/menu_character.h"
#include "ui/resource_ids.h"
#include "ui/windows/dialog_scale.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/face_colours.h"
#include "ui/windows/icon_loading.h"
#include "ui/windows/picture_painting.h"
#include "ui/windows/window_resources.h"
#include "ui/windows/window_scale.h"

// The window of the alert: the procedure that routes its messages, and what it paints itself.

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
// Pixels of the design
constexpr int kFocusMargin = 4;                // inside the button's edge
constexpr int kNameLeft = 120, kNameTop = 10;  // of the printer's name on the banner
constexpr int kNameHeight = 35, kNameWidth = 13, kNameWeight = 600;
constexpr int kStepIconSize = 32;
constexpr struct {
    int control;
    int icon;
} kStepIcons[] = {{IDC_DUPLEX_ICON_1, IDI_STEP_1},
                  {IDC_DUPLEX_ICON_2, IDI_STEP_2},
                  {IDC_DUPLEX_ICON_3, IDI_STEP_3}};
constexpr wchar_t kNameFont[] = L"Times New Roman";
constexpr UINT kNameFormat = DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX;

void paintSystemFace(const DRAWITEMSTRUCT& item, bool pressed) {
    RECT area = item.rcItem;
    ::DrawFrameControl(item.hDC, &area, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0U));
}

void paintFocus(const DRAWITEMSTRUCT& item, int dpi) {
    constexpr UINT kNotShown = ODS_NOFOCUSRECT;
    if ((item.itemState & ODS_FOCUS) == 0 || (item.itemState & kNotShown) != 0) return;
    RECT area = item.rcItem;
    const int margin = scaled(kFocusMargin, dpi);
    ::InflateRect(&area, -margin, -margin);
    if (isHighContrast()) {
        // The dots of the usual rectangle are too faint on some faces.
        ::FrameRect(item.hDC, &area, ::GetSysColorBrush(COLOR_BTNTEXT));
        return;
    }
    const SavedDc saved(item.hDC);
    ::SetTextColor(item.hDC, kBlack);
    ::SetBkColor(item.hDC, kWhite);
    ::DrawFocusRect(item.hDC, &area);
}

void showStepIcons(HWND window, HINSTANCE module) {
    WindowResources& resources = WindowResources::of(window);
    const int size = scaled(kStepIconSize, resources.scale(window).dpi());
    for (const auto& step : kStepIcons) {
        const HWND control = ::GetDlgItem(window, step.control);
        if (control != nullptr) resources.showIcon(control, loadIcon(module, step.icon, size));
    }
}

void paintBanner(HDC dc, HWND dialog, HWND banner, HINSTANCE module,
                 const std::wstring& printerName) {
    const int dpi = DialogScale::of(dialog).dpi();
    RECT area{};
    ::GetClientRect(banner, &area);
    COLORREF colour = kWhite;
    if (isHighContrast()) {
        ::FillRect(dc, &area, ::GetSysColorBrush(COLOR_WINDOW));
        colour = ::GetSysColor(COLOR_WINDOWTEXT);
    } else {
        paintBitmap(dc, dialog, module, IDB_BANNER, dpi);
    }
    const Font font(::CreateFontW(scaled(kNameHeight, dpi), scaled(kNameWidth, dpi), 0, 0,
                                  kNameWeight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                  OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                                  DEFAULT_PITCH | FF_ROMAN, kNameFont));
    const SavedDc saved(dc);
    // The picture has its free space at the left, on a mirrored desktop too.
    ::SetLayout(dc, 0);
    const SelectedObject selected(dc, font.get());
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, colour);
    area.left += scaled(kNameLeft, dpi);
    area.top += scaled(kNameTop, dpi);
    ::DrawTextW(dc, printerName.c_str(), static_cast<int>(printerName.size()), &area, kNameFormat);
}

}  // namespace

DialogResult DefaultStatusDialog::dlgProc(WindowHandle window, WindowMessage message,
                                          MessageWord wParam, MessageLong lParam) {
    if (isColourChange(message, wParam)) renewPictures(window);
    switch (message) {
        case WM_INITDIALOG:
            showStepIcons(window, static_cast<HINSTANCE>(_module));
            return onInitDialog(window, wParam, lParam);
        case kScaleChanged:
            StatusDialog::dlgProc(window, message, wParam, lParam);
            renewPictures(window);
            return TRUE;
        case WM_COMMAND:
            return onCommand(window, wParam, lParam);
        case WM_DRAWITEM:
            return onDrawItem(window, wParam, lParam);
        case WM_CTLCOLORSTATIC:
            return onCtlColorStatic(window, wParam, lParam);
        case WM_CHAR:
            return onChar(window, wParam, lParam);
        case WM_MENUCHAR:  // Alt and a letter
            // Closes the menu without a beep; set first, as the window may be gone afterwards.
            ::SetWindowLongPtrW(window, DWLP_MSGRESULT, MAKELRESULT(0, MNC_CLOSE));
            return onChar(window, menuCharacter(wParam), lParam);
        default:
            return StatusDialog::dlgProc(window, message, wParam, lParam);
    }
}

void DefaultStatusDialog::renewPictures(WindowHandle window) const {
    dialog_controls::setIcons(window, _module, IDI_PROGRAM);
    if (_suppliesShown) {
        dialog_controls::setPicture(window, IDC_SUPPLIES_PICTURE, _module, _suppliesPicture);
        dialog_controls::setPicture(window, IDC_SUPPLIES_CONDITION, _module, _conditionPicture);
    }
    showStepIcons(window, static_cast<HINSTANCE>(_module));
}

// Every button gets the size of its picture first. The template says sizes in dialog units, and how
// many pixels these are depends on the font.
DialogResult DefaultStatusDialog::onDrawItem(WindowHandle window, MessageWord, MessageLong lParam) {
    auto* module = static_cast<HINSTANCE>(_module);
    const int dpi = DialogScale::of(window).dpi();
    for (const ButtonFace& face : buttonFaces()) {
        sizeButtonToBitmap(window, ::GetDlgItem(window, face.control), module, face.sizedBy, dpi);
    }
    DRAWITEMSTRUCT item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    const ButtonFace* face = buttonFace(static_cast<int>(item.CtlID));
    if (face == nullptr) return TRUE;
    ::GetClientRect(item.hwndItem, &item.rcItem);  // what was sent is older than the new size
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    COLORREF colour = face->whiteCaption ? kWhite : kBlack;
    if (isHighContrast()) {
        paintSystemFace(item, pressed);
        colour = ::GetSysColor(COLOR_BTNTEXT);
    } else {
        paintBitmap(item.hDC, window, module, pressed ? face->pressed : face->normal, dpi);
    }
    drawLabel(item.hDC, item.hwndItem, buttonCaption(*face), colour,
              (item.itemState & ODS_NOACCEL) != 0);
    paintFocus(item, dpi);
    return TRUE;
}

DialogResult DefaultStatusDialog::onCtlColorStatic(WindowHandle window, MessageWord wParam,
                                                   MessageLong lParam) {
    auto* dc = reinterpret_cast<HDC>(wParam);
    auto* control = reinterpret_cast<HWND>(lParam);
    auto* module = static_cast<HINSTANCE>(_module);
    const auto nothingElse = reinterpret_cast<DialogResult>(::GetStockObject(NULL_BRUSH));
    const int id = ::GetDlgCtrlID(control);
    if (id == IDC_ALERT_BANNER) {
        paintBanner(dc, window, control, module, _printerName);
        return nothingElse;
    }
    for (std::size_t step = 0; step < kDuplexSteps; ++step) {
        if (id != kDuplexPictureControls[step]) continue;
        paintBitmap(dc, window, module, _duplexPictures[step], DialogScale::of(window).dpi());
        return nothingElse;
    }
    return StatusDialog::dlgProc(window, WM_CTLCOLORSTATIC, wParam, lParam);
}
