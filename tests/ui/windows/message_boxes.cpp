#include "tests/ui/windows/message_boxes.h"

namespace {

std::vector<MessageBoxes::Box> boxes;

// The system makes the box from what MessageBoxW was called with and hands it over at
// WM_INITDIALOG. Other dialogs get something else there, whose first word is not this size.
void look(const CWPSTRUCT& message) {
    if (message.message != WM_INITDIALOG || message.lParam == 0) return;
    const auto& asked = *reinterpret_cast<const MSGBOXPARAMSW*>(message.lParam);
    if (asked.cbSize != sizeof(asked)) return;
    boxes.push_back({asked.hwndOwner, asked.lpszText, asked.lpszCaption, asked.dwStyle});
    ::PostMessageW(message.hwnd, WM_COMMAND, IDOK, 0);
}

LRESULT CALLBACK onSentMessage(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION) look(*reinterpret_cast<const CWPSTRUCT*>(lParam));
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

MessageBoxes::MessageBoxes()
    : _hook(::SetWindowsHookExW(WH_CALLWNDPROC, onSentMessage, nullptr, ::GetCurrentThreadId())) {
    boxes.clear();
}

MessageBoxes::~MessageBoxes() {
    ::UnhookWindowsHookEx(_hook);
}

const std::vector<MessageBoxes::Box>& MessageBoxes::all() const noexcept {
    return boxes;
}
