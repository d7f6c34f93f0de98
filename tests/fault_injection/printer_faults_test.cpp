#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "printer/companion.h"
#include "printer/consumables.h"
#include "printer/printer_identity.h"
#include "tests/fault_injection/platform_faults_fixture.h"
#include "tests/support/clean_platform.h"
#include "tests/support/supply_pages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

// Every allocation of the code in printer/ fails in turn, alone and combined with a failure of
// every call of the platform.
namespace {

using fault_injection::Mode;
using platform::Hive;
using platform::simulated::Call;
using platform::simulated::Fault;
using platform::simulated::world;

constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";
constexpr wchar_t kPrinter[] = L"Beamline K7400";
constexpr std::uint32_t kSerial = 4711;

using PrinterFaultsTest = fault_injection::PlatformFaultsTest;

// Whatever happened, the registry holds a whole record or none, and nothing stayed open. This comes
// last in each check, because what it leaves in the simulated registry counts as live memory.
void checkRegistryAndLeave() {
    world().faults.clear();
    const auto record = world().registry.value(Hive::CurrentUser, kKey, L"CartData");
    EXPECT_TRUE(!record || record->bytes.size() == 280U);
    const auto version = world().registry.dword(Hive::CurrentUser, kKey, L"CartDataVer");
    EXPECT_TRUE(!version || *version == 4U || *version == 0U);
    EXPECT_EQ(world().registry.openKeys(), 0);
    EXPECT_EQ(world().printers.openPrinters(), 0);
    EXPECT_EQ(world().device.openDevices(), 0);
    EXPECT_EQ(world().device.loadedLibraries(), 0);
}

void serveDevice() {
    world().device.install();
    world().device.setPage(supply_pages::kConfigurationPath,
                           supply_pages::configuration("4711", "QV-7400A of the long name"));
    world().device.setPage(supply_pages::kUsagePath, supply_pages::usage("1200"));
}

TEST_P(PrinterFaultsTest, TheCartridgeMemoryStaysWhole) {
    const auto scene = [] {
        cleanPlatform();
        CartridgeRecord earlier;
        for (std::uint32_t serial = 1; serial <= 5; ++serial)
            AddCartIfNew(earlier, serial);
        return [] {
            CartridgeRecord record;
            AddCartIfNew(record, kSerial);
            static_cast<void>(SetSnooze(record, kSerial, 336, SnoozeSlot::Low));
            static_cast<void>(IsSnoozing(kSerial, SnoozeSlot::Low));
            static_cast<void>(IllegalCartOccured(record, kSerial));
            static_cast<void>(NonQvCartOccuredBefore(record, 1));
            static_cast<void>(takeWelcome());
        };
    };
    const auto check = [](long) {
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachAllocation(scene, check, 6);
}

TEST_P(PrinterFaultsTest, ASnoozeIsStoredExactlyWhenItReportsSuccess) {
    bool saved = false;
    const auto scene = [&saved] {
        cleanPlatform();
        CartridgeRecord earlier;
        AddCartIfNew(earlier, kSerial);
        saved = false;
        return [&saved] {
            CartridgeRecord buffer;
            saved = SetSnooze(buffer, kSerial, 1, SnoozeSlot::Out);
        };
    };
    const auto check = [&saved](long) {
        EXPECT_EQ(IsSnoozing(kSerial, SnoozeSlot::Out), saved);
        cleanPlatform();
    };

    failEachAllocation(scene, check);
}

struct Asked {
    std::wstring product = std::wstring(kConsumableTextUnits, L'#');
    std::wstring pages = std::wstring(kConsumableTextUnits, L'#');
};

TEST_P(PrinterFaultsTest, AConsumableIsReadOrNotKnown) {
    Asked asked;
    const auto scene = [&asked] {
        cleanPlatform();
        serveDevice();
        return [&asked] { getConsumableInfo(kPrinter, asked.product.data(), asked.pages.data()); };
    };
    const auto check = [&asked](long failed) {
        const std::wstring product = asked.product.c_str();
        const std::wstring pages = asked.pages.c_str();
        EXPECT_TRUE(product == L"QV-7400A of the long name" || product == L"Not Known") << failed;
        EXPECT_TRUE(pages == L"1200" || pages == L"Not Known") << failed;
        if (failed == 0) {
            EXPECT_NE(pages, L"Not Known");
        }
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachAllocation(scene, check, 4);
}

TEST_P(PrinterFaultsTest, ACartridgeIsRememberedOrNot) {
    const auto scene = [] {
        cleanPlatform();
        serveDevice();
        return [] { queryCartridgeSerial(kPrinter); };
    };
    const auto check = [](long failed) {
        const std::uint32_t current = GetCurrCart();
        EXPECT_TRUE(current == kSerial || (failed != 0 && current == kNoCartridge));
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachAllocation(scene, check, 4);
}

// The memory is needed before the printer is opened, so without it the answer is "not supported".
TEST_P(PrinterFaultsTest, ThePrinterIsSupportedOnlyWhenItWasAsked) {
    bool supported = false;
    const auto scene = [&supported] {
        cleanPlatform();
        world().printers.setTextOf(kPrinter, L"\\", L"Printer Driver", L"K7400");
        return [&supported, name = std::wstring(kPrinter)]() mutable {
            supported = true;
            supported = isSupportedPrinter(name);
        };
    };
    const auto check = [&supported](long failed) {
        const bool wasAsked = world().faults.calls(Call::PrinterOpen) > 0;
        EXPECT_EQ(supported, wasAsked);
        EXPECT_TRUE(wasAsked || failed != 0);
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachAllocation(scene, check, 2);
}

TEST_P(PrinterFaultsTest, TheCompanionIsStartedOrItsFailureIsTraced) {
    bool started = false;
    const auto scene = [&started] {
        cleanPlatform();
        world().diagnostics.keepTrace();
        world().registry.setText(Hive::LocalMachine, L"SOFTWARE\\Corvane\\Orrery\\",
                                 L"ApplicationPath", L"C:\\Program Files\\Orrery\\orrery.exe");
        return [&started] {
            started = true;
            started = startCompanion();
        };
    };
    const auto check = [&started](long failed) {
        EXPECT_TRUE(started || failed != 0);
        EXPECT_EQ(world().desktop.programs().size(), started ? 1U : 0U);
        // When no allocation works any more, the trace line itself cannot be kept.
        if (GetParam() == Mode::Once) {
            EXPECT_NE(world().diagnostics.hasTraced("Failed to launch OrreryMX."), started);
        }
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachAllocation(scene, check, 1);
}

// The calls of the platform that fail, one at a time, counted from where the scene begins.
constexpr Call kCalls[] = {Call::RegistryOpen,  Call::RegistryCreate, Call::RegistryRead,
                           Call::RegistryWrite, Call::LibraryLoad,    Call::FunctionLookup,
                           Call::DeviceOpen,    Call::DevicePage,     Call::XmlQuery};

TEST_P(PrinterFaultsTest, APlatformFaultWithMissingMemoryLeavesAWholeRecord) {
    const auto prepare = [] {
        cleanPlatform();
        serveDevice();
    };
    const auto scene = [] {
        return [] {
            queryCartridgeSerial(kPrinter);
            CartridgeRecord record;
            static_cast<void>(SetSnooze(record, kSerial, 1, SnoozeSlot::Low));
            static_cast<void>(takeWelcome());
        };
    };
    const auto check = [](long) {
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachCallAndAllocation(kCalls, prepare, scene, check);
}

constexpr Call kPrinterCalls[] = {Call::PrinterOpen,    Call::PrinterDataRead, Call::ProgramStart,
                                  Call::RegistryOpen,   Call::RegistryRead,    Call::RegistryWrite,
                                  Call::RegistryCreate, Call::DeviceOpen,      Call::DevicePage,
                                  Call::XmlQuery};

TEST_P(PrinterFaultsTest, APlatformFaultWithMissingMemoryLeavesNoPrinterOpen) {
    bool started = false;
    Asked asked;
    const auto prepare = [] {
        cleanPlatform();
        serveDevice();
        world().printers.setTextOf(kPrinter, L"\\", L"Printer Driver", L"K7400");
        world().registry.setText(Hive::LocalMachine, L"SOFTWARE\\Corvane\\Orrery\\",
                                 L"ApplicationPath", L"C:\\Orrery\\orrery.exe");
    };
    const auto scene = [&] {
        started = false;
        return [&, name = std::wstring(kPrinter)]() mutable {
            static_cast<void>(readAlertClasses(name));
            static_cast<void>(printerWantsStatus(name));
            started = startCompanion();
            getConsumableInfo(name, asked.product.data(), asked.pages.data());
            static_cast<void>(isSupportedPrinter(name));
        };
    };
    const auto check = [&](long) {
        EXPECT_EQ(world().desktop.programs().size(), started ? 1U : 0U);
        checkRegistryAndLeave();
        cleanPlatform();
    };

    failEachCallAndAllocation(kPrinterCalls, prepare, scene, check);
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, PrinterFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

}  // namespace
