// A spooler in which every printer has the driver that the environment names, because under Wine
// the driver's name of a printer cannot be chosen. It is copied as winspool.drv into the system
// folder of a Wine prefix, the only folder from which the monitor loads libraries of the system.
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

// Printers of this spooler have no settings.
__declspec(dllexport) DWORD WINAPI GetPrinterDataW(HANDLE, wchar_t*, DWORD*, BYTE*, DWORD, DWORD*) {
    return ERROR_FILE_NOT_FOUND;
}

__declspec(dllexport) DWORD WINAPI
    GetPrinterDataExW(HANDLE, const wchar_t* key, const wchar_t* value, DWORD* type, BYTE* data,
                      DWORD capacity, DWORD* needed) {
    if (::lstrcmpW(key, kDriverKey) != 0 || ::lstrcmpW(value, kDriverValue) != 0)
        return ERROR_FILE_NOT_FOUND;
    const auto capacityUnits = static_cast<DWORD>(capacity / sizeof(wchar_t));
    const DWORD units =
        ::GetEnvironmentVariableW(kDriverVariable, reinterpret_cast<wchar_t*>(data), capacityUnits);
    if (units == 0) return ERROR_FILE_NOT_FOUND;
    *type = REG_SZ;
    // The length does not count the terminator when the name fits, and counts it when it does not.
    const bool fits = units < capacityUnits;
    *needed = static_cast<DWORD>((fits ? units + 1 : units) * sizeof(wchar_t));
    return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

__declspec(dllexport) BOOL WINAPI ClosePrinter(HANDLE) {
    return TRUE;
}
}
