#include "ui/alert_actions.h"
#include "ui/alert_window.h"
#include "ui/resource_ids.h"
#include "ui/status_dialog.h"
#include "ui/windows/alert_binding.h"
#include "ui/windows/dialog_scale.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/picture_painting.h"

#include <new>

// The window of the plain alert: making it, ending it, and the procedure that routes its messages.

StatusDialog::~StatusDialog() {
    if (AlertBinding::belongsTo(_window, *this)) destroyAlertWindow(_window);
}

bool StatusDialog::create() {
    HWND window = nullptr;
    try {
        window = AlertBinding::make(static_cast<HINSTANCE>(_module), _templateId, *this);
    } catch (const std::bad_alloc&) {
        return false;
    }
    if (window == nullptr) return false;
    ::ShowWindow(window, SW_SHOW);
    bringToFront(window);
    return true;
}

void StatusDialog::close(WindowHandle window) {
    // The message is made before the window ends. Where there is no memory for it, the window stays
    // and can be closed later. Ended without its message, the alert would stay in the monitor's
    // list, and the monitor would wait for ever for its end.
    const auto closed = actionMessage(alert_action::kClosed, 0, 0, nullptr);
    AlertBinding::cutOff(window);
    ::EndDialog(window, 1);  // Equally right with 2: no loop waits for the result.
    publish(closed);
}

DialogResult StatusDialog::dlgProc(WindowHandle window, WindowMessage message, MessageWord wParam,
                                   MessageLong lParam) {
    switch (message) {
        case WM_INITDIALOG:
            initialize(window);
            return TRUE;
        case WM_COMMAND:
            command(window, wParam, lParam);
            return TRUE;
        case WM_CLOSE:
            close(window);
            return TRUE;
        case WM_SETCURSOR:
            ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
            return FALSE;
        case WM_CTLCOLORSTATIC:
            break;
        default:
            return DialogScale::answer(window, message, wParam, lParam) ? TRUE : FALSE;
    }
    auto* dc = reinterpret_cast<HDC>(wParam);
    const int control = ::GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
    if (control != IDC_ALERT_PICTURE && control != IDC_ALERT_ICON) return FALSE;
    paintBitmap(dc, window, static_cast<HINSTANCE>(_module),
                control == IDC_ALERT_PICTURE ? _pictureId : _iconId, DialogScale::of(window).dpi());
    // The control fills itself with the brush of this answer. With any other brush it would wipe
    // the picture away.
    return reinterpret_cast<DialogResult>(::GetStockObject(NULL_BRUSH));
}
