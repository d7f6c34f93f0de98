// A spooler whose every printer has the driver that the environment names, put beside the monitor
// as winspool.drv: under Wine no printer can be given a driver's name of its own.
#include <windows.h>

namespace {

constexpr wchar_t kDriverVariable[] = L"QVSM_PRINTER_DRIVER";
constexpr wchar_t kDriverKey[] = L"\\";
constexpr wchar_t kDriverValue[] = L"Printer Driver";

int thePrinter;

}  // namespace

extern "C" {

__declspec(dllexport) BOOL WINAPI OpenPrinterW(const wchar_t* name, HANDLE* printer, void*) {
    if (name == nullptr || *name == L'\0') return FALSE;
    *printer = &thePrinter;
    return TRUE;
}

// No printer has settings of its own.
__declspec(dllexport) DWORD WINAPI GetPrinterDataW(HANDLE, wchar_t*, DWORD*, BYTE*, DWORD, DWORD*) {
    return ERROR_FILE_NOT_FOUND;
}

__declspec(dllexport) DWORD WINAPI
    GetPrinterDataExW(HANDLE, const wchar_t* key, const wchar_t* value, DWORD* type, BYTE* data,
                      DWORD capacity, DWORD* needed) {
    if (::lstrcmpW(key, kDriverKey) != 0 || ::lstrcmpW(value, kDriverValue) != 0)
        return ERROR_FILE_NOT_FOUND;
    const DWORD units = ::GetEnvironmentVariableW(kDriverVariable, reinterpret_cast<wchar_t*>(data),
                                                  capacity / sizeof(wchar_t));
    if (units == 0) return ERROR_FILE_NOT_FOUND;
    *type = REG_SZ;
    // The length leaves out the terminator when the name fits and has it when it does not.
    const bool fits = units < capacity / sizeof(wchar_t);
    *needed = (fits ? units + 1 : units) * sizeof(wchar_t);
    return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

__declspec(dllexport) BOOL WINAPI ClosePrinter(HANDLE) {
    return TRUE;
}
}
