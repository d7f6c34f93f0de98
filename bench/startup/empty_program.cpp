#include <windows.h>

// The least that a program with one dialog needs: the measure beside which the monitor is put.

namespace {

constexpr WORD kDialog = 1;

INT_PTR CALLBACK dialogProcedure(HWND, UINT message, WPARAM, LPARAM) {
    if (message == WM_COMMAND || message == WM_CLOSE) ::PostQuitMessage(0);
    return message == WM_INITDIALOG;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    const HWND dialog =
        ::CreateDialogParamW(instance, MAKEINTRESOURCEW(kDialog), nullptr, &dialogProcedure, 0);
    if (dialog == nullptr) return 1;
    ::ShowWindow(dialog, SW_SHOWNORMAL);
    ::SetForegroundWindow(dialog);
    for (MSG message; ::GetMessageW(&message, nullptr, 0, 0) > 0;) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return 0;
}
