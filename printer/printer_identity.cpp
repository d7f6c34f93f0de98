#include "printer/printer_identity.h"

#include "platform/native_handle.h"
#include "platform/registry.h"
#include "platform/spooler.h"
#include "platform/trace.h"
#include "platform/utf16.h"
#include "printer/registry_keys.h"
#include "printer/registry_text.h"

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

// The names of the registry value and of the printer data values are kept: see decision 0012.
constexpr wchar_t kPrinterValue[] = L"CurrPrinter";
constexpr std::size_t kPrinterUnits = 255;

constexpr wchar_t kStatusData[] = L"Status";
// Equally right with 2: any number except 0 has this meaning.
constexpr std::uint32_t kStatusUnlessTold = 1;  // an empty value does not silence the printer
constexpr std::uint32_t kSilent = 0;

constexpr wchar_t kMaskData[] = L"AlertMask";
constexpr std::uint32_t kErrorsBit = 1, kInformationBit = 2, kWarningsBit = 4;
constexpr std::uint32_t kAllClasses = kErrorsBit | kInformationBit | kWarningsBit;

constexpr wchar_t kRootOfData[] = L"\\";
constexpr wchar_t kDriverData[] = L"Printer Driver";
constexpr std::size_t kDriverUnits = 256;
constexpr std::u16string_view kModelMarker = u"K740";  // case counts

void rememberPrinter(const std::wstring& name) {
    const std::u16string units = platform::toUtf16(name);
    RegistryKey key;
    if (key.createForWriting(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess)
        return;
    // Written without its terminator (kept: see decision 0012). A failure leaves the old name,
    // which is only used when the next start names no printer.
    static_cast<void>(key.write(kPrinterValue, ValueType::String, units.data(),
                                static_cast<std::uint32_t>(units.size() * sizeof(char16_t))));
}

void recallPrinter(std::wstring& name) {
    RegistryKey key;
    if (key.openForReading(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess) return;
    // A failure leaves the name empty, and the spooler is not asked for a printer without a name.
    static_cast<void>(readRegistryText(key, kPrinterValue, kPrinterUnits, name));
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
    // "File not found" means that nobody ever set the mask: then everything is shown. Any other
    // failure shows nothing, because the user may have switched alerts off.
    if (error != platform::kSuccess) mask = error == platform::kFileNotFound ? kAllClasses : 0;
    return AlertClasses{(mask & kErrorsBit) != 0, (mask & kInformationBit) != 0,
                        (mask & kWarningsBit) != 0};
}

bool isSupportedPrinter(std::wstring& name) {
    // Remembering and recalling a name takes memory, and the alert that asks is worth more than its
    // picture: without memory it shows the one for any printer.
    try {
        if (name.empty()) {
            recallPrinter(name);
        } else {
            rememberPrinter(name);
        }
    } catch (const std::bad_alloc&) {
        return false;
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
}
