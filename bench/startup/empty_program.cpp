#include <windows.h>

#include <winspool.h>
#include <cstring>

// The least that a program with one dialog needs; the monitor is compared with it. With the
// argument "printer" the program first opens a printer at the spooler, which the monitor must do as
// well: this cost is the system's and not the monitor's.

namespace {

constexpr WORD kDialog = 1;

INT_PTR CALLBACK dialogProcedure(HWND, UINT message, WPARAM, LPARAM) {
    if (message == WM_COMMAND || message == WM_CLOSE) ::PostQuitMessage(0);
    return message == WM_INITDIALOG;
}

template <typename Function>
Function find(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

void askForPrinter() {
    const HMODULE spooler =
        ::LoadLibraryExW(L"winspool.drv", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (spooler == nullptr) return;
    const auto open = find<decltype(&::OpenPrinterW)>(spooler, "OpenPrinterW");
    const auto close = find<decltype(&::ClosePrinter)>(spooler, "ClosePrinter");
    wchar_t name[] = L"Beamline K7400";
    HANDLE printer = nullptr;
    if (open != nullptr && close != nullptr && open(name, &printer, nullptr) != 0) close(printer);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int) {
    if (std::strcmp(commandLine, "printer") == 0) askForPrinter();
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
