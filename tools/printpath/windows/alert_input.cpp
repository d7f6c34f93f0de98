#include "tools/printpath/windows/alert_input.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"

#include <string>
#include <vector>

namespace printpath {

namespace {

constexpr UINT kAnswerMs = 5000;
constexpr DWORD kRaiseMs = 150;  // time in which a window comes to the front
constexpr int kRaiseTries = 20;  // a closing message box may keep a dialog disabled for some time
constexpr LONG kScreenUnits = 65536;  // absolute mouse input divides each side of the screen so
constexpr int kClassUnits = 64;
constexpr LPARAM kOnePress = 1;  // repeat count of a key message
constexpr LPARAM kKeyReleased = 0xC0000001;

struct KeyRow {
    NamedKey key;
    WORD code;
};

constexpr KeyRow kKeys[] = {
    {NamedKey::Enter, VK_RETURN}, {NamedKey::Escape, VK_ESCAPE}, {NamedKey::Tab, VK_TAB},
    {NamedKey::Space, VK_SPACE},  {NamedKey::Up, VK_UP},         {NamedKey::Down, VK_DOWN},
    {NamedKey::Left, VK_LEFT},    {NamedKey::Right, VK_RIGHT},   {NamedKey::Home, VK_HOME},
    {NamedKey::End, VK_END},      {NamedKey::F4, VK_F4},
};

std::string named(int id) {
    return "control " + std::to_string(id);
}

void requireDialog(HWND dialog) {
    if (dialog == nullptr) throw Failure("no dialog was waited for yet");
    if (!::IsWindow(dialog) || !::IsWindowVisible(dialog))
        throw Failure("the dialog is not open any more");
}

bool isStatic(HWND control) {
    wchar_t name[kClassUnits] = {};
    ::GetClassNameW(control, name, kClassUnits);
    return ::lstrcmpiW(name, L"Static") == 0;
}

LRESULT ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (!::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerMs,
                               &result))
        throw Failure("the monitor's window does not answer", Outcome::Hung);
    return static_cast<LRESULT>(result);
}

WORD virtualKey(const KeyPress& key) {
    for (const KeyRow& row : kKeys)
        if (row.key == key.named) return row.code;
    // The key code of a letter or digit is the code of the upper-case character.
    const char c = key.character;
    return static_cast<WORD>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
}

INPUT keyInput(WORD code, bool down) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    return input;
}

void send(std::vector<INPUT>& inputs) {
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void raise(HWND dialog) {
    for (int tries = 0; tries < kRaiseTries; ++tries) {
        ::SetForegroundWindow(dialog);
        ::Sleep(kRaiseMs);
        if (::IsWindowEnabled(dialog) && ::GetForegroundWindow() == dialog) return;
    }
}

// The input contains its own position: between moving the pointer and the click, something else
// could move the pointer away.
INPUT mouseInput(POINT place, DWORD button) {
    const LONG width = ::GetSystemMetrics(SM_CXSCREEN);
    const LONG height = ::GetSystemMetrics(SM_CYSCREEN);
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = (place.x * kScreenUnits + width / 2) / width;
    input.mi.dy = (place.y * kScreenUnits + height / 2) / height;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | button;
    return input;
}

}  // namespace

HWND existingControl(HWND dialog, int id) {
    requireDialog(dialog);
    const HWND control = ::GetDlgItem(dialog, id);
    if (control == nullptr) throw Failure("the dialog has no " + named(id));
    return control;
}

bool isUsable(HWND dialog, int id) {
    const HWND control = ::GetDlgItem(dialog, id);
    return control != nullptr && ::IsWindowVisible(control) && ::IsWindowEnabled(control);
}

HWND usableControl(HWND dialog, int id) {
    const HWND control = existingControl(dialog, id);
    if (!::IsWindowVisible(control)) throw Failure(named(id) + " is hidden");
    if (!::IsWindowEnabled(control)) throw Failure(named(id) + " is disabled");
    return control;
}

void pressControl(HWND dialog, int id) {
    const HWND control = usableControl(dialog, id);
    if (isStatic(control))
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, STN_CLICKED),
                       reinterpret_cast<LPARAM>(control));
    else
        // Post the message: if the button opens a message box, sending would wait for its end.
        ::PostMessageW(control, BM_CLICK, 0, 0);
}

void clickControl(HWND dialog, int id) {
    const HWND control = usableControl(dialog, id);
    raise(dialog);
    RECT place{};
    ::GetWindowRect(control, &place);
    const POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    ::SetCursorPos(middle.x, middle.y);
    std::vector<INPUT> inputs{mouseInput(middle, MOUSEEVENTF_LEFTDOWN),
                              mouseInput(middle, MOUSEEVENTF_LEFTUP)};
    send(inputs);
}

void chooseEntry(HWND dialog, int id, int entry) {
    const HWND list = usableControl(dialog, id);
    if (ask(list, CB_SETCURSEL, static_cast<WPARAM>(entry), 0) != entry)
        throw Failure(named(id) + " has no entry " + std::to_string(entry));
    ask(dialog, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

HWND focusOf(HWND dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    const DWORD thread = ::GetWindowThreadProcessId(dialog, nullptr);
    const bool inside = ::GetGUIThreadInfo(thread, &info) && info.hwndFocus != nullptr &&
                        ::IsChild(dialog, info.hwndFocus);
    return inside ? info.hwndFocus : dialog;
}

void postKey(HWND dialog, const KeyPress& key) {
    requireDialog(dialog);
    if (key.named != NamedKey::None) {
        const HWND focus = focusOf(dialog);
        ::PostMessageW(focus, WM_KEYDOWN, virtualKey(key), kOnePress);
        ::PostMessageW(focus, WM_KEYUP, virtualKey(key), kKeyReleased);
    } else if (key.alt) {
        // In a window with a system menu the system turns Alt and a letter into WM_MENUCHAR.
        const WPARAM letter = static_cast<unsigned char>(key.character);
        ::PostMessageW(dialog, WM_MENUCHAR, letter | (MF_SYSMENU << 16), 0);
    } else {
        ::PostMessageW(dialog, WM_CHAR, static_cast<unsigned char>(key.character), kOnePress);
    }
}

void typeKey(HWND dialog, const KeyPress& key) {
    requireDialog(dialog);
    raise(dialog);
    const bool upper = key.character >= 'A' && key.character <= 'Z';
    std::vector<WORD> held;
    if (key.shift || upper) held.push_back(VK_SHIFT);
    if (key.control) held.push_back(VK_CONTROL);
    if (key.alt) held.push_back(VK_MENU);
    std::vector<INPUT> inputs;
    inputs.reserve(2 * (held.size() + 1));
    for (const WORD code : held)
        inputs.push_back(keyInput(code, true));
    inputs.push_back(keyInput(virtualKey(key), true));
    inputs.push_back(keyInput(virtualKey(key), false));
    for (auto code = held.rbegin(); code != held.rend(); ++code)
        inputs.push_back(keyInput(*code, false));
    send(inputs);
}

}  // namespace printpath
