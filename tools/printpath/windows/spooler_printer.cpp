#include "tools/printpath/windows/spooler_printer.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"

#include <windows.h>
#include <winspool.h>

#include <memory>

namespace printpath {

namespace {

struct ClosePrinterHandle {
    using pointer = HANDLE;
    void operator()(HANDLE printer) const noexcept { ::ClosePrinter(printer); }
};
using PrinterHandle = std::unique_ptr<HANDLE, ClosePrinterHandle>;

[[noreturn]] void fail(const std::string& what, DWORD error) {
    throw Failure(what + " (system error " + std::to_string(error) + ")", Outcome::Unusable);
}

// Opens the printer; empty when the spooler does not have it.
PrinterHandle find(std::wstring name) {
    PRINTER_DEFAULTSW defaults{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE printer = nullptr;
    if (!::OpenPrinterW(name.data(), &printer, &defaults)) return {};
    return PrinterHandle(printer);
}

PrinterHandle open(const std::wstring& name) {
    PrinterHandle printer = find(name);
    if (!printer) fail("the spooler does not open the printer " + shown(name), ::GetLastError());
    return printer;
}

}  // namespace

SpoolerPrinter::SpoolerPrinter(const std::wstring& name) : _name(name) {
    // Ask first, because Wine's AddPrinter replaces an existing printer without an error.
    if (find(name))
        throw Failure("the spooler has a printer " + shown(name) +
                          " already, which is not the scenario's to change; give it another name",
                      Outcome::Unusable);
    std::wstring port = L"LPT1:";
    std::wstring driver = L"Beamline test driver";
    std::wstring processor = L"winprint";
    std::wstring dataType = L"RAW";
    std::wstring file = L"driver.dll";
    DRIVER_INFO_3W driverInfo{};
    driverInfo.cVersion = 3;
    driverInfo.pName = driver.data();
    driverInfo.pDriverPath = file.data();
    driverInfo.pDataFile = file.data();
    driverInfo.pConfigFile = file.data();
    // A failure is ignored: the driver may be installed already.
    ::AddPrinterDriverW(nullptr, 3, reinterpret_cast<BYTE*>(&driverInfo));

    PRINTER_INFO_2W info{};
    info.pPrinterName = _name.data();
    info.pPortName = port.data();
    info.pDriverName = driver.data();
    info.pPrintProcessor = processor.data();
    info.pDatatype = dataType.data();
    const PrinterHandle printer(::AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info)));
    const DWORD error = ::GetLastError();
    if (!printer) fail("the spooler does not add the printer " + shown(name), error);
}

SpoolerPrinter::~SpoolerPrinter() {
    if (const PrinterHandle printer = find(_name)) ::DeletePrinter(printer.get());
}

void setPrinterValue(const std::wstring& printer, const std::wstring& value, std::uint32_t number) {
    std::wstring name = value;
    const DWORD error = ::SetPrinterDataW(open(printer).get(), name.data(), REG_DWORD,
                                          reinterpret_cast<BYTE*>(&number), sizeof number);
    if (error != ERROR_SUCCESS) fail("the printer value " + shown(value) + " is not stored", error);
}

}  // namespace printpath
