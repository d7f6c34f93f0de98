#include "platform/spooler.h"

#include "platform/windows/lazy_library.h"

#include <windows.h>

#include <winspool.h>

namespace platform {
namespace {

constexpr wchar_t kSpoolerLibrary[] = L"winspool.drv";

LazyFunction<decltype(&::OpenPrinterW)> openPrinter(kSpoolerLibrary, "OpenPrinterW");
LazyFunction<decltype(&::GetPrinterDataW)> getPrinterData(kSpoolerLibrary, "GetPrinterDataW");
LazyFunction<decltype(&::GetPrinterDataExW)> getPrinterDataOf(kSpoolerLibrary, "GetPrinterDataExW");
LazyFunction<decltype(&::ClosePrinter)> closePrinter(kSpoolerLibrary, "ClosePrinter");

void close(NativeHandle printer) noexcept {
    const auto closeIt = printer != nullptr ? closePrinter.get() : nullptr;
    if (closeIt != nullptr) closeIt(printer);
}

// The spooler's functions do not change their texts, but they are declared without const.
LPWSTR changeable(const wchar_t* text) noexcept {
    return const_cast<LPWSTR>(text);
}

}  // namespace

void prepareSpooler() noexcept {
    static_cast<void>(openPrinter.get());
}

Printer::~Printer() {
    close(_printer);
}

bool Printer::open(const wchar_t* name) noexcept {
    close(_printer);
    _printer = nullptr;
    // OpenPrinter without a name would open the print server instead of a printer.
    if (name == nullptr || *name == L'\0') return false;
    const auto openIt = openPrinter.get();
    HANDLE printer = nullptr;
    if (openIt == nullptr || openIt(changeable(name), &printer, nullptr) == 0) return false;
    _printer = printer;
    return _printer != nullptr;
}

std::uint32_t Printer::readData(const wchar_t* value, void* to, std::uint32_t capacity) noexcept {
    const auto read = getPrinterData.get();
    if (read == nullptr) return kProcedureNotFound;
    if (_printer == nullptr) return kInvalidHandleError;
    DWORD type = 0;
    DWORD needed = 0;
    return read(_printer, changeable(value), &type, static_cast<BYTE*>(to), capacity, &needed);
}

std::uint32_t Printer::readDataOf(const wchar_t* key, const wchar_t* value, void* to,
                                  std::uint32_t capacity) noexcept {
    const auto read = getPrinterDataOf.get();
    if (read == nullptr) return kProcedureNotFound;
    if (_printer == nullptr) return kInvalidHandleError;
    DWORD type = 0;
    DWORD needed = 0;
    return read(_printer, key, value, &type, static_cast<BYTE*>(to), capacity, &needed);
}

}  // namespace platform
