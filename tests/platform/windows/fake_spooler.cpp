// A spooler with one printer, put beside a program as winspool.drv: the only way to give a printer
// data below a key of its own where no printer is installed.
#include <windows.h>
#include <cstring>

namespace {

constexpr wchar_t kDriver[] = L"Fake K7400 driver";
int fakePrinter;

}  // namespace

extern "C" {

__declspec(dllexport) BOOL WINAPI OpenPrinterW(wchar_t* name, HANDLE* printer, void*) {
    if (::lstrcmpW(name, L"Fake printer") != 0) return FALSE;
    *printer = &fakePrinter;
    return TRUE;
}

__declspec(dllexport) DWORD WINAPI GetPrinterDataW(HANDLE, wchar_t*, DWORD*, BYTE*, DWORD, DWORD*) {
    return ERROR_FILE_NOT_FOUND;
}

__declspec(dllexport) DWORD WINAPI
    GetPrinterDataExW(HANDLE printer, const wchar_t* key, const wchar_t* value, DWORD* type,
                      BYTE* data, DWORD capacity, DWORD* needed) {
    if (printer != &fakePrinter || ::lstrcmpW(key, L"\\") != 0) return ERROR_INVALID_HANDLE;
    if (::lstrcmpW(value, L"Printer Driver") != 0) return ERROR_FILE_NOT_FOUND;
    *needed = sizeof kDriver;
    *type = REG_SZ;
    if (capacity < sizeof kDriver) return ERROR_MORE_DATA;
    std::memcpy(data, kDriver, sizeof kDriver);
    return ERROR_SUCCESS;
}

__declspec(dllexport) BOOL WINAPI ClosePrinter(HANDLE printer) {
    return printer == &fakePrinter ? TRUE : FALSE;
}
}
