#include "printer/printer_identity.h"

#include "platform/native_handle.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/spooler.h"
#include "platform/trace.h"
#include "platform/utf16.h"
#include "printer/registry_keys.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

using platform::Hive;
using platform::Printer;
using platform::RegistryKey;
using platform::ValueType;

namespace {

constexpr wchar_t kPrinterValue[] = L"CurrPrinter";
constexpr std::size_t kPrinterUnits = 255;

constexpr wchar_t kStatusData[] = L"Status";
constexpr std::uint32_t kStatusUnlessTold = 1;
constexpr std::uint32_t kSilent = 0;

constexpr wchar_t kMaskData[] = L"AlertMask";
constexpr std::uint32_t kErrorsBit = 1, kInformationBit = 2, kWarningsBit = 4;
constexpr std::uint32_t kAllClasses = kErrorsBit | kInformationBit | kWarningsBit;

constexpr wchar_t kRootOfData[] = L"\\";
constexpr wchar_t kDriverData[] = L"Printer Driver";
constexpr std::size_t kDriverUnits = 256;
constexpr std::u16string_view kModelMarker = u"K740";  // case counts

constexpr wchar_t kPathValue[] = L"ApplicationPath";
constexpr std::size_t kPathUnits = 512;
constexpr char kNotLaunched[] = "Failed to launch OrreryMX.\n";
constexpr std::uint32_t kInvalidData = 13;  // the system's number for a value that makes no sense

void rememberPrinter(const std::wstring& name) {
    const std::u16string units = platform::toUtf16(name);
    RegistryKey key;
    if (key.createForWriting(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess)
        return;
    // Without its terminator, as this value has always been written; a failure leaves the old name.
    static_cast<void>(key.write(kPrinterValue, ValueType::String, units.data(),
                                static_cast<std::uint32_t>(units.size() * sizeof(char16_t))));
}

// The text of a REG_SZ value of at most `Units` units, with or without its terminator.
template <std::size_t Units>
std::uint32_t readText(const RegistryKey& key, const wchar_t* name, std::wstring& text) {
    std::array<char16_t, Units> units{};
    auto bytes = static_cast<std::uint32_t>(sizeof units);
    ValueType type = ValueType::None;
    const std::uint32_t error = key.read(name, type, units.data(), bytes);
    if (error != platform::kSuccess) return error;
    if (type != ValueType::String) return kInvalidData;
    const std::u16string_view value(units.data(), bytes / sizeof(char16_t));
    text = platform::fromUtf16(value.substr(0, value.find(u'\0')));
    return platform::kSuccess;
}

void recallPrinter(std::wstring& name) {
    RegistryKey key;
    if (key.openForReading(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess) return;
    static_cast<void>(readText<kPrinterUnits>(key, kPrinterValue, name));  // else it stays empty
}

}  // namespace

bool printerWantsStatus(const std::wstring& printerName) {
    Printer printer;
    if (!printer.open(printerName.c_str())) return true;
    std::uint32_t status = kStatusUnlessTold;
    if (printer.readData(kStatusData, &status, sizeof status) != platform::kSuccess) return true;
    return status != kSilent;
}

std::optional<AlertClasses> readAlertClasses(const std::wstring& printerName) {
    Printer printer;
    if (!printer.open(printerName.c_str())) return std::nullopt;
    std::uint32_t mask = 0;
    const std::uint32_t error = printer.readData(kMaskData, &mask, sizeof mask);
    // A printer that was never configured shows everything; one that cannot be asked shows nothing.
    if (error != platform::kSuccess) mask = error == platform::kFileNotFound ? kAllClasses : 0;
    return AlertClasses{(mask & kErrorsBit) != 0, (mask & kInformationBit) != 0,
                        (mask & kWarningsBit) != 0};
}

bool isSupportedPrinter(std::wstring& name) try {
    if (name.empty()) {
        recallPrinter(name);
    } else {
        rememberPrinter(name);
    }
    Printer printer;
    if (!printer.open(name.c_str())) {
        platform::trace("Error happen, this printer can not be openned!!!");
        return false;
    }
    std::array<char16_t, kDriverUnits> driver{};
    if (printer.readDataOf(kRootOfData, kDriverData, driver.data(), sizeof driver) !=
        platform::kSuccess) {
        return false;
    }
    const std::u16string_view text(driver.data(), driver.size());
    return text.substr(0, text.find(u'\0')).find(kModelMarker) != std::u16string_view::npos;
} catch (const std::bad_alloc&) {  // remembering and recalling a name takes memory
    return false;
}

bool startCompanion() try {
    RegistryKey key;
    std::uint32_t error = key.openForReading(Hive::LocalMachine, registry_key::kCompanion);
    if (error != platform::kSuccess) {
        platform::trace("Query registry key error, %d", static_cast<int>(error));
        return false;
    }
    std::wstring path;
    error = readText<kPathUnits>(key, kPathValue, path);
    if (error != platform::kSuccess) {
        platform::trace("Query registry value error, %d", static_cast<int>(error));
        return false;
    }
    // The shell would open a folder for an empty name.
    if (path.empty() || !platform::startProgram(path.c_str(), error)) {
        platform::trace(kNotLaunched);
        return false;
    }
    return true;
} catch (const std::bad_alloc&) {
    platform::trace(kNotLaunched);
    return false;
}
