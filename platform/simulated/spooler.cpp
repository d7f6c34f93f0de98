#include "platform/spooler.h"

#include "platform/simulated/printers.h"
#include "platform/simulated/world.h"

#include <string_view>

namespace platform {
namespace {

using simulated::Call;
using simulated::Printers;
using simulated::world;

std::uint32_t read(NativeHandle printer, std::wstring_view key, const wchar_t* value, void* to,
                   std::uint32_t capacity) noexcept {
    if (printer == nullptr) return kInvalidHandleError;
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::PrinterDataRead, error)) return error;
    return world().printers.read(printer, key, value, to, capacity);
}

}  // namespace

void prepareSpooler() noexcept {
    world().printers.prepare();
}

Printer::~Printer() {
    if (_printer != nullptr) world().printers.close();
}

bool Printer::open(const wchar_t* name) noexcept {
    if (_printer != nullptr) world().printers.close();
    _printer = nullptr;
    if (name == nullptr || *name == L'\0') return false;
    if (world().faults.strikes(Call::PrinterOpen)) return false;
    _printer = world().printers.open(name);
    return _printer != nullptr;
}

std::uint32_t Printer::readData(const wchar_t* value, void* to, std::uint32_t capacity) noexcept {
    return read(_printer, Printers::kDriverData, value, to, capacity);
}

std::uint32_t Printer::readDataOf(const wchar_t* key, const wchar_t* value, void* to,
                                  std::uint32_t capacity) noexcept {
    return read(_printer, key, value, to, capacity);
}

}  // namespace platform
