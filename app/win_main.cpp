#include "app/monitor_process.h"
#include "platform/library_search.h"
#include "ui/windows/input_methods.h"

#include <windows.h>

// Both calls come before anything else: the first decides where libraries are loaded from, and the
// second concerns only windows that are made afterwards.
int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE, LPSTR lpCmdLine, int) {
    platform::keepLibrarySearchToOwnAndSystemFolder();
    keepInputMethodsOut();
    return static_cast<int>(runMonitor(hInstance, lpCmdLine));
}
