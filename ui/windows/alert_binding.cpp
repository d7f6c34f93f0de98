#include "ui/windows/alert_binding.h"

#include "platform/trace.h"
#include "ui/resource_ids.h"
#include "ui/status_dialog.h"
#include "ui/windows/dialog_scale.h"
#include "ui/windows/dialog_template.h"
#include "ui/windows/face_colours.h"
#include "ui/windows/window_properties.h"
#include "ui/windows/window_resources.h"

#include <exception>

namespace {

constexpr wchar_t kObjectProperty[] = L"_Alert_Object_";

StatusDialog* objectOf(HWND window) noexcept {
    return static_cast<StatusDialog*>(::GetPropW(window, kObjectProperty));
}

StatusDialog* receiverOf(HWND window) noexcept {
    return reinterpret_cast<StatusDialog*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
}

// An alert opens on what it waits for: its choice, or OK where there is none to make. By itself the
// system would choose the first tab stop, and Enter would open a web page.
bool focusTheAnswer(HWND window) {
    for (const int id : {IDC_SNOOZE_CHOICE, IDC_ALERT_OK}) {
        const HWND control = ::GetDlgItem(window, id);
        if (control == nullptr || (::GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) == 0) {
            continue;
        }
        ::SetFocus(control);
        return true;
    }
    return false;
}

}  // namespace

// What the procedure needs at WM_INITDIALOG, and how that ended. The system keeps the window
// whatever the procedure answers, so the result is handed back here.
struct AlertBinding::Opening {
    StatusDialog& dialog;
    bool isFilled = false;
};

HWND AlertBinding::make(HINSTANCE module, int templateId, StatusDialog& dialog) {
    Opening opening{dialog};
    const HWND window =
        createDialog(module, templateId, procedure, reinterpret_cast<LPARAM>(&opening));
    if (window == nullptr || opening.isFilled) return window;
    // An alert that lacks some of its texts would count as shown, and nobody would ever see them.
    cutOff(window);
    ::DestroyWindow(window);
    return nullptr;
}

bool AlertBinding::isAlert(HWND window) noexcept {
    return window != nullptr && objectOf(window) != nullptr;
}

bool AlertBinding::belongsTo(HWND window, const StatusDialog& dialog) noexcept {
    return window != nullptr && objectOf(window) == &dialog;
}

void AlertBinding::cutOff(HWND window) noexcept {
    ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
}

// The property comes first: without it the object would not hear of the window's end, and the
// window would keep a pointer to an object that is gone.
void AlertBinding::attach(HWND window, StatusDialog& dialog) {
    setWindowProperty(window, kObjectProperty, &dialog);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&dialog));
    dialog.setWindow(window);
    WindowResources::of(window).filterKeys(window, LetterRules::OfTheDialog);
    keepPicturesUnmirrored(window);
    DialogScale::of(window).begin();
}

INT_PTR AlertBinding::open(HWND window, WPARAM wParam, Opening& opening) {
    attach(window, opening.dialog);
    const INT_PTR result = opening.dialog.dlgProc(window, WM_INITDIALOG, wParam, 0);
    opening.isFilled = true;
    return focusTheAnswer(window) ? FALSE : result;
}

// At WM_NCDESTROY, the last message of a window: until then the object must hear of its end, and
// the controls use the fonts and pictures that are released here.
void AlertBinding::forget(HWND window) noexcept {
    if (StatusDialog* dialog = objectOf(window)) dialog->setWindow(nullptr);
    ::RemovePropW(window, kObjectProperty);
    WindowResources::release(window);
}

// No exception may leave this function: the system that calls it does not know exceptions. After
// dlgProc both object and window may be gone, because an action can end its alert.
INT_PTR AlertBinding::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    INT_PTR result = FALSE;
    try {
        if (message == WM_INITDIALOG) {
            return open(window, wParam, *reinterpret_cast<Opening*>(lParam));
        }
        // Before the alert renews its pictures, because memory may run out for these.
        if (isColourChange(message, wParam)) followColourChange(window, message);
        if (message == WM_DESTROY) WindowResources::detachPictures(window);
        if (StatusDialog* dialog = receiverOf(window)) {
            result = dialog->dlgProc(window, message, wParam, lParam);
        }
        // Also when the alert is cut off from its object: it is painted until it is gone.
        if (result == FALSE && isColourRequest(message))
            result = paintFace(window, message, wParam);
    } catch (const std::exception& error) {
        platform::trace("TERNA - error: %s", error.what());
    }
    if (message == WM_NCDESTROY) forget(window);
    return result;
}
