#include "ui/windows/alert_procedure.h"

#include "platform/trace.h"
#include "ui/status_dialog.h"
#include "ui/windows/dialog_template.h"
#include "ui/windows/face_colours.h"
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

}  // namespace

HWND AlertWindow::make(HINSTANCE module, int templateId, StatusDialog& dialog) {
    return createDialog(module, templateId, procedure, reinterpret_cast<LPARAM>(&dialog));
}

bool AlertWindow::isAlert(HWND window) noexcept {
    return window != nullptr && objectOf(window) != nullptr;
}

bool AlertWindow::belongsTo(HWND window, const StatusDialog& dialog) noexcept {
    return window != nullptr && objectOf(window) == &dialog;
}

void AlertWindow::cutOff(HWND window) noexcept {
    ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
}

void AlertWindow::attach(HWND window, StatusDialog& dialog) {
    ::SetPropW(window, kObjectProperty, &dialog);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&dialog));
    dialog.setWindow(window);
    WindowResources::of(window).filterKeys(window);
    keepPicturesUnmirrored(window);
}

void AlertWindow::forget(HWND window) noexcept {
    if (StatusDialog* dialog = objectOf(window)) dialog->setWindow(nullptr);
    ::RemovePropW(window, kObjectProperty);
    WindowResources::release(window);
}

// Nothing may be thrown into the system's frames. After dlgProc object and window may be gone.
INT_PTR AlertWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    INT_PTR result = FALSE;
    try {
        if (message == WM_INITDIALOG) attach(window, *reinterpret_cast<StatusDialog*>(lParam));
        if (message == WM_DESTROY) WindowResources::detachPictures(window);
        if (StatusDialog* dialog = receiverOf(window)) {
            result = dialog->dlgProc(window, message, wParam, lParam);
        }
        if (result == FALSE && isColourRequest(message))
            result = paintFace(window, message, wParam);
    } catch (const std::exception& error) {
        platform::trace("TERNA - error: %s", error.what());
    }
    if (message == WM_NCDESTROY) forget(window);
    return result;
}
