// Stands for the browser and the companion application: appends its command line to the file that
// RECORDER_LOG names.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
    char path[MAX_PATH];
    if (::GetEnvironmentVariableA("RECORDER_LOG", path, MAX_PATH) == 0) return 1;
    const HANDLE file = ::CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    const char* const line = ::GetCommandLineA();
    DWORD written = 0;
    ::WriteFile(file, line, static_cast<DWORD>(::lstrlenA(line)), &written, nullptr);
    ::WriteFile(file, "\n", 1, &written, nullptr);
    ::CloseHandle(file);
    return 0;
}
