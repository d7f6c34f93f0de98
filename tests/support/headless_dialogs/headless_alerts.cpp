#include "tests/support/headless_dialogs/headless_messages.h"
#include "ui/alert_actions.h"
#include "ui/alert_window.h"
#include "ui/default_status_dialog.h"
#include "ui/menu_character.h"
#include "ui/validation_dialog.h"

#include <new>

// Does on the recorded windows what ui/windows does on real ones.

namespace {

constexpr DialogResult kHandled = 1, kNotHandled = 0;

// Records a picture that a real window would paint when the system asks for it.
void recordPainted(WindowHandle window, int control, int bitmap) {
    if (dialog_controls::exists(window, control)) {
        headless::control(window, control).picture = bitmap;
    }
}

void cutOff(WindowHandle window) {
    headless::find(window)->receiver = nullptr;
}

}  // namespace

StatusDialog::~StatusDialog() {
    const headless::Window* window = headless::find(_window);
    if (window != nullptr && window->dialog == this) destroyAlertWindow(_window);
}

bool StatusDialog::create() {
    WindowHandle handle = nullptr;
    try {
        handle = headless::openWindow(_templateId);
        if (handle == nullptr) return false;
        headless::Window* window = headless::find(handle);
        window->dialog = this;
        window->receiver = this;
        _window = handle;
        recordPainted(handle, IDC_ALERT_PICTURE, _pictureId);
        recordPainted(handle, IDC_ALERT_ICON, _iconId);
        dlgProc(handle, headless::kInitDialog, 0, 0);
        window->visible = true;
        headless::countOpened();
        return true;
    } catch (const std::bad_alloc&) {
        destroyAlertWindow(handle);
        return false;
    }
}

void StatusDialog::close(WindowHandle window) {
    const auto closed = actionMessage(alert_action::kClosed, 0, 0, nullptr);
    cutOff(window);
    headless::find(window)->visible = false;
    publish(closed);
}

DialogResult StatusDialog::dlgProc(WindowHandle window, WindowMessage message, MessageWord wParam,
                                   MessageLong lParam) {
    switch (message) {
        case headless::kInitDialog:
            initialize(window);
            return kHandled;
        case headless::kCommand:
            command(window, wParam, lParam);
            return kHandled;
        case headless::kClose:
            close(window);
            return kHandled;
        default:
            return kNotHandled;
    }
}

DialogResult DefaultStatusDialog::dlgProc(WindowHandle window, WindowMessage message,
                                          MessageWord wParam, MessageLong lParam) {
    switch (message) {
        case headless::kInitDialog:
            for (std::size_t step = 0; step < kDuplexSteps; ++step) {
                recordPainted(window, kDuplexPictureControls[step], _duplexPictures[step]);
            }
            return onInitDialog(window, wParam, lParam);
        case headless::kCommand:
            return onCommand(window, wParam, lParam);
        case headless::kChar:
            return onChar(window, wParam, lParam);
        case headless::kMenuChar:
            return onChar(window, menuCharacter(wParam), lParam);
        default:
            return StatusDialog::dlgProc(window, message, wParam, lParam);
    }
}

DialogResult DefaultStatusDialog::onDrawItem(WindowHandle, MessageWord, MessageLong) {
    return kNotHandled;
}

DialogResult DefaultStatusDialog::onCtlColorStatic(WindowHandle, MessageWord, MessageLong) {
    return kNotHandled;
}

void dismissAlertWindow(WindowHandle window) {
    headless::countDismissed(window);
    destroyAlertWindow(window);
}

void destroyAlertWindow(WindowHandle window) {
    const headless::Window* found = headless::find(window);
    if (found == nullptr) return;
    if (found->dialog != nullptr) found->dialog->setWindow(nullptr);
    headless::eraseWindow(window);
}

void compactAlertWindow(WindowHandle window, bool detailIsLink) {
    headless::Window* found = headless::find(window);
    if (found == nullptr) return;
    if (detailIsLink) {
        dialog_controls::setFont(window, IDC_ALERT_DETAIL, dialog_controls::Emphasis::Link);
        dialog_controls::makeLink(window, IDC_ALERT_DETAIL);
    }
    dialog_controls::show(window, IDC_ALERT_SHOP, false);
    dialog_controls::show(window, IDC_ALERT_RECYCLE, false);
    found->compact = true;
    found->detailMadeLink = detailIsLink;
    found->visible = true;
}

void showValidationDialog(void* hinstance, void* hSinstance, const std::wstring& printerName) {
    headless::addCheck({hinstance, hSinstance, printerName});
}
