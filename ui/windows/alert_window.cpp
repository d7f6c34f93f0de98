#include "ui/alert_window.h"

#include "ui/dialog_controls.h"
#include "ui/resource_ids.h"
#include "ui/windows/alert_binding.h"
#include "ui/windows/dialog_scale.h"

namespace {

constexpr int kOkRise = 330;        // pixels by which the OK button of a compact alert is higher
constexpr int kWindowShrink = 300;  // pixels by which its window is lower

}  // namespace

void dismissAlertWindow(WindowHandle window) {
    if (!AlertBinding::isAlert(window)) return;
    AlertBinding::cutOff(window);
    // Equally right with 2 or without it or with nullptr for window or after the next: nobody
    // waits for the end of a dialog without a loop.
    ::EndDialog(window, 1);
    ::DestroyWindow(window);
}

// The window is cut off first in both: what it sends while it goes must not reach an object that
// its owner is about to destroy.
void destroyAlertWindow(WindowHandle window) {
    if (!AlertBinding::isAlert(window)) return;
    AlertBinding::cutOff(window);
    ::DestroyWindow(window);
}

void compactAlertWindow(WindowHandle window, bool detailIsLink) {
    if (!AlertBinding::isAlert(window)) return;
    ::ShowWindow(window, SW_HIDE);
    if (detailIsLink) {
        dialog_controls::setFont(window, IDC_ALERT_DETAIL, dialog_controls::Emphasis::Link);
        dialog_controls::makeLink(window, IDC_ALERT_DETAIL);
    }
    dialog_controls::show(window, IDC_ALERT_SHOP, false);
    dialog_controls::show(window, IDC_ALERT_RECYCLE, false);
    DialogScale& scale = DialogScale::of(window);
    scale.raise(::GetDlgItem(window, IDC_ALERT_OK), kOkRise);
    scale.shrink(kWindowShrink);
    // Equally right with FALSE or without it or after the next: a hidden window is painted anew.
    ::InvalidateRect(window, nullptr, TRUE);
    ::ShowWindow(window, SW_SHOW);
}
