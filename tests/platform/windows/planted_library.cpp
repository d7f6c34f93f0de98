// A library that an attacker could leave where a program looks for libraries. It says which of them
// was run: the test loads copies of it that bear the names of the system's libraries.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) ::SetEnvironmentVariableW(L"PLANTED_LIBRARY_RAN", L"1");
    return TRUE;
}
