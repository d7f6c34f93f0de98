#include "app/monitor_process.h"
#include "platform/library_search.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int) {
    platform::dropCurrentDirectoryFromLibrarySearch();
    return static_cast<int>(runMonitor(instance, commandLine));
}
