#include "ui/windows/keyboard_filter.h"

#include "ui/windows/window_properties.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr wchar_t kProperty[] = L"_Alert_Keys_";  // of a dialog that is served: its letter rules
constexpr WPARAM kNavigationKeys[] = {VK_TAB,  VK_LEFT,   VK_RIGHT, VK_UP,
                                      VK_DOWN, VK_RETURN, VK_ESCAPE};

// A hook belongs to one thread, and so do the dialogs that it serves.
thread_local HHOOK installed = nullptr;
thread_local int users = 0;

struct Served {
    HWND dialog;  // null: the message is for another window
    LetterRules rules;
};

Served servedDialog(HWND window) {
    const HWND root = ::GetAncestor(window, GA_ROOT);
    const HANDLE rules = root != nullptr ? ::GetPropW(root, kProperty) : nullptr;
    if (rules == nullptr) return {nullptr, LetterRules::OfTheDialog};
    return {root, static_cast<LetterRules>(reinterpret_cast<INT_PTR>(rules))};
}

// The keys belong to an open menu, and to a window that is moved by keys. Esc would cancel the
// alert instead of closing its menu, and Enter would answer it instead of ending the move.
bool menuOrMoveTakesKeys() {
    constexpr DWORD kTakesKeys =
        GUI_INMENUMODE | GUI_SYSTEMMENUMODE | GUI_POPUPMENUMODE | GUI_INMOVESIZE;
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    return ::GetGUIThreadInfo(::GetCurrentThreadId(), &info) && (info.flags & kTakesKeys) != 0;
}

bool hasDialogCode(HWND child, LRESULT codes) {
    return (::SendMessageW(child, WM_GETDLGCODE, 0, 0) & codes) != 0;
}

// The snooze list, for one, chooses by the first letter of a line.
bool wantsLetters(HWND child) {
    return hasDialogCode(child, DLGC_WANTCHARS | DLGC_WANTALLKEYS);
}

bool isNavigation(const MSG& message) {
    return message.message == WM_KEYDOWN &&
           std::find(std::begin(kNavigationKeys), std::end(kNavigationKeys), message.wParam) !=
               std::end(kNavigationKeys);
}

// Alt and the space bar are left out: they open the window's menu in every dialog.
bool isLetter(const MSG& message) {
    return message.message == WM_CHAR || (message.message == WM_SYSCHAR && message.wParam != L' ');
}

// The system's dialog rules give Enter to the default button, because a drawn button cannot say
// that it is the default one while it has the focus.
bool isEnterOnAButton(const MSG& message) {
    return message.message == WM_KEYDOWN && message.wParam == VK_RETURN &&
           ::IsWindowEnabled(message.hwnd) && hasDialogCode(message.hwnd, DLGC_BUTTON);
}

void press(HWND button, LPARAM keyFlags) {
    if ((HIWORD(keyFlags) & KF_REPEAT) != 0) return;  // a key that is held down is pressed once
    ::SendMessageW(::GetParent(button), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(button), BN_CLICKED),
                   reinterpret_cast<LPARAM>(button));
}

// A hook cannot take a message away. The loop will dispatch one that does nothing.
void takeAway(MSG& message) {
    message.message = WM_NULL;
    message.wParam = 0;  // Equally right with 1: WM_NULL has no parameters.
    message.lParam = 0;  // Equally right with 1: WM_NULL has no parameters.
}

void serve(MSG& message) {
    // Equally right with && or with >=: this only spares the look for the dialog of other messages.
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return;
    const auto [dialog, rules] = servedDialog(message.hwnd);
    if (dialog == nullptr || menuOrMoveTakesKeys()) return;
    const MSG original = message;
    const bool hasCaptionLetter = rules == LetterRules::OfTheCaptions && isLetter(message);
    if (isEnterOnAButton(message)) {
        // Equally right after the next: what is taken away is the loop's own copy.
        takeAway(message);
        press(original.hwnd, original.lParam);
    } else if (isNavigation(message) || hasCaptionLetter) {
        MSG handled = original;  // the dialog may be gone when its rules return
        if (::IsDialogMessageW(dialog, &handled)) takeAway(message);
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

KeyboardFilter::KeyboardFilter(HWND dialog, LetterRules rules) : _dialog(dialog) {
    setWindowProperty(_dialog, kProperty, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(rules)));
    ++users;
    // Asked again where the system has refused it to an earlier dialog.
    if (installed == nullptr) {
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
