// A library that an attacker could leave where a program looks for libraries. The test has copies
// of it under the names of system libraries. A copy that is loaded says so.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) ::SetEnvironmentVariableW(L"PLANTED_LIBRARY_RAN", L"1");
    return TRUE;
}
