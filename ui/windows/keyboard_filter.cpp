#include "ui/windows/keyboard_filter.h"

#include "ui/windows/window_properties.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr wchar_t kProperty[] = L"_Alert_Keys_";  // marks the dialogs that are served
constexpr WPARAM kNavigationKeys[] = {VK_TAB,  VK_LEFT,   VK_RIGHT, VK_UP,
                                      VK_DOWN, VK_RETURN, VK_ESCAPE};

// A hook belongs to one thread, and so do the dialogs that it serves.
thread_local HHOOK installed = nullptr;
thread_local int users = 0;

HWND servedDialog(HWND window) {
    const HWND root = ::GetAncestor(window, GA_ROOT);
    return root != nullptr && ::GetPropW(root, kProperty) != nullptr ? root : nullptr;
}

// The snooze list, for one, chooses by the first letter of a line.
bool wantsLetters(HWND child) {
    constexpr LRESULT kLetters = DLGC_WANTCHARS | DLGC_WANTALLKEYS;
    return (::SendMessageW(child, WM_GETDLGCODE, 0, 0) & kLetters) != 0;
}

void serve(MSG& message) {
    const HWND dialog = servedDialog(message.hwnd);
    if (dialog == nullptr) return;
    if (message.message == WM_KEYDOWN) {
        const bool navigates = std::find(std::begin(kNavigationKeys), std::end(kNavigationKeys),
                                         message.wParam) != std::end(kNavigationKeys);
        MSG handled = message;  // the dialog may be gone when its rules return
        if (navigates && ::IsDialogMessageW(dialog, &handled)) {
            // A hook cannot take a message away. The loop will dispatch one that does nothing.
            message.message = WM_NULL;
            message.wParam = 0;
            message.lParam = 0;
        }
    } else if (message.message == WM_CHAR && message.hwnd != dialog &&
               !wantsLetters(message.hwnd)) {
        message.hwnd = dialog;
    }
}

LRESULT CALLBACK onMessage(int code, WPARAM removal, LPARAM lParam) noexcept {
    // The program's loop looks at each message before it takes it. Only the second time counts, or
    // each key would act twice.
    if (code == HC_ACTION && removal == PM_REMOVE) serve(*reinterpret_cast<MSG*>(lParam));
    return ::CallNextHookEx(nullptr, code, removal, lParam);
}

}  // namespace

KeyboardFilter::KeyboardFilter(HWND dialog) : _dialog(dialog) {
    setWindowProperty(_dialog, kProperty, _dialog);
    if (users++ == 0) {
        installed = ::SetWindowsHookExW(WH_GETMESSAGE, onMessage, nullptr, ::GetCurrentThreadId());
    }
}

KeyboardFilter::~KeyboardFilter() {
    ::RemovePropW(_dialog, kProperty);
    if (--users == 0 && installed != nullptr) {
        ::UnhookWindowsHookEx(installed);
        installed = nullptr;
    }
}
