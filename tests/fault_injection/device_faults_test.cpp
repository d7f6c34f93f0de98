#include "device/cartridge_validation.h"
#include "device/ews_intf.h"
#include "device/shop_page.h"
#include "device/web_links.h"
#include "platform/simulated/process_ended.h"
#include "platform/simulated/world.h"
#include "platform/trace.h"
#include "tests/fault_injection/platform_faults_fixture.h"
#include "tests/support/clean_platform.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

// Every allocation of the code in device/ fails in turn, alone and together with platform faults.
namespace {

using fault_injection::Mode;
using platform::simulated::Call;
using platform::simulated::world;

constexpr char kTemplate[] = "<html>\nform = document.stockline.XML_string.value;\n</html>\n";
constexpr char kFilled[] = "<html>form = '<supplies>black</supplies>';</html>";
constexpr char kInstalled[] = "C:\\Program Files\\QV\\QV Beamline K7400 MFP Series\\";
constexpr char kCopied[] = "C:\\ProgramData\\QV\\QV Beamline K7400 MFP Series\\P7400OS.HTM";

using DeviceFaultsTest = fault_injection::PlatformFaultsTest;

// Watches the trace for one line. It needs no memory, since allocations fail while it watches. Only
// one may exist at a time.
class TraceWatch {
public:
    explicit TraceWatch(const char* line) {
        awaited = line;
        forget();
        platform::setTraceSink(&listen);
    }
    ~TraceWatch() { platform::setTraceSink(nullptr); }
    TraceWatch(const TraceWatch&) = delete;
    TraceWatch& operator=(const TraceWatch&) = delete;

    [[nodiscard]] bool seen() const { return wasSeen; }
    void forget() { wasSeen = false; }

private:
    static void listen(const char* line) {
        if (std::strcmp(line, awaited) == 0) wasSeen = true;
    }

    static inline const char* awaited = nullptr;
    static inline bool wasSeen = false;
};

void setScene() {
    cleanPlatform();
    world().device.install();
    world().device.setPage("/DevMgmt/ShopForSupplies.xml", "<?xml?><supplies>black</supplies>");
    world().device.setPage("/dev/qvLoyalty.xml",
                           "<a><cartridge><cartLife>5</cartLife></cartridge>"
                           "<printerModel>K 7400 with a long name</printerModel></a>");
    for (const char* const file : {"P7400DEF.css", "P7400SIG.GIF", "P7400OS.HTM"}) {
        world().files.put(std::string(kInstalled) + file, kTemplate);
    }
}

// Call this last in each check: it also empties the world, whose content counts as live memory.
void checkDeviceAndLeave() {
    EXPECT_EQ(world().device.openDevices(), 0);
    EXPECT_EQ(world().device.loadedLibraries(), 0);
    EXPECT_EQ(world().registry.openKeys(), 0);
    cleanPlatform();
}

// If the shop's page was opened, then once and with its template filled completely.
void checkShop(bool undisturbed) {
    const auto opened = world().desktop.documents();
    EXPECT_LE(opened.size(), 1U);
    if (undisturbed) {
        EXPECT_EQ(opened.size(), 1U);
    }
    const auto page = world().files.content(kCopied);
    if (!opened.empty()) {
        EXPECT_EQ(page, kFilled);
    }
    EXPECT_TRUE(!page || *page == kTemplate || *page == kFilled);
}

TEST_P(DeviceFaultsTest, APageArrivesWholeOrNotAtAll) {
    std::string page;
    bool arrived = false;
    const auto scene = [&page, &arrived] {
        setScene();
        page = std::string();
        return [&page, &arrived] {
            arrived = EWSIntf().get_page(L"USB001", "/DevMgmt/ShopForSupplies.xml", page);
        };
    };
    const auto check = [&page, &arrived](long failed) {
        EXPECT_EQ(page, arrived ? "<?xml?><supplies>black</supplies>" : "");
        if (failed == 0) {
            EXPECT_TRUE(arrived);
        }
        page = std::string();
        page.shrink_to_fit();
        checkDeviceAndLeave();
    };

    failEachAllocation(scene, check, 1);
}

TEST_P(DeviceFaultsTest, TheShopPageIsOpenedFilledOrNotAtAll) {
    const auto scene = [] {
        setScene();
        return [port = std::wstring(L"USB001")] { openShopPage(port); };
    };
    const auto check = [](long failed) {
        checkShop(failed == 0);
        checkDeviceAndLeave();
    };

    failEachAllocation(scene, check, 11);
}

TEST_P(DeviceFaultsTest, TheValidationEndsTheProcessWithCode0WhateverFails) {
    std::uint32_t exitCode = 99;
    const auto scene = [&exitCode] {
        setScene();
        exitCode = 99;
        return [&exitCode, port = std::wstring(L"USB001")] {
            try {
                validateCartridge(port);
            } catch (const platform::ProcessEnded& end) {
                exitCode = end.code;
            }
        };
    };
    const auto check = [&exitCode](long failed) {
        EXPECT_EQ(exitCode, 0U);
        EXPECT_LE(world().desktop.addresses().size(), 1U);
        if (failed == 0) {
            EXPECT_EQ(world().desktop.addresses().size(), 1U);
        }
        checkDeviceAndLeave();
    };

    failEachAllocation(scene, check, 11);
}

// An operation that stops because memory has run out says so in the trace and has opened nothing.
TEST_P(DeviceFaultsTest, MissingMemoryIsTraced) {
    struct Row {
        const char* line;
        void (*part)();
    };
    const Row rows[] = {
        {"TERNA - error: std::bad_alloc",
         [] {
             try {
                 validateCartridge(L"USB001");
             } catch (const platform::ProcessEnded&) {  // validateCartridge() ends the process
             }
         }},
        {"TERNA - no memory to open a link", [] { openRecyclePage(); }},
        {"not get memory for shop page", [] { openShopPage(L""); }},
    };
    for (const Row& row : rows) {
        TraceWatch watch(row.line);
        long told = 0;
        const auto scene = [&] {
            setScene();
            watch.forget();
            return row.part;
        };
        const auto check = [&](long failed) {
            if (watch.seen()) {
                ++told;
                EXPECT_NE(failed, 0);
                EXPECT_TRUE(world().desktop.addresses().empty());
                EXPECT_TRUE(world().desktop.documents().empty());
            }
            checkDeviceAndLeave();
        };

        fault_injection::everyAllocation(GetParam(), scene, check);

        EXPECT_GT(told, 0) << row.line;
    }
}

TEST_P(DeviceFaultsTest, ALinkIsOpenedWholeOrNotAtAll) {
    const auto scene = [] {
        setScene();
        return [] { openRecyclePage(); };
    };
    const auto check = [](long failed) {
        for (const std::wstring& address : world().desktop.addresses()) {
            EXPECT_EQ(address, L"https://www.corvane.example/go/recycle");
        }
        if (failed == 0) {
            EXPECT_EQ(world().desktop.addresses().size(), 1U);
        }
        checkDeviceAndLeave();
    };

    failEachAllocation(scene, check);
}

constexpr Call kCalls[] = {Call::FolderLookup, Call::LibraryLoad, Call::FunctionLookup,
                           Call::DeviceOpen,   Call::DevicePage,  Call::FileCopy,
                           Call::FileRead,     Call::FileWrite,   Call::DocumentOpen};

TEST_P(DeviceFaultsTest, AFaultOfThePlatformOnTopOpensNoHalfPage) {
    const auto scene = [] { return [port = std::wstring(L"USB001")] { openShopPage(port); }; };
    const auto check = [](long) {
        checkShop(false);
        checkDeviceAndLeave();
    };

    failEachCallAndAllocation(kCalls, &setScene, scene, check);
}

constexpr Call kLinkCalls[] = {Call::LibraryLoad,  Call::FunctionLookup, Call::DeviceOpen,
                               Call::DevicePage,   Call::XmlQuery,       Call::RegistryOpen,
                               Call::RegistryRead, Call::AddressOpen,    Call::DeviceButton};

TEST_P(DeviceFaultsTest, AFaultOfThePlatformOnTopEndsTheValidationWithCode0Too) {
    bool ended = false;
    const auto scene = [&ended] {
        ended = false;
        return [&ended, port = std::wstring(L"USB001")] {
            openPrivacyPage();
            static_cast<void>(EWSIntf().push_button(port.c_str(), L"go"));
            try {
                validateCartridge(port);
            } catch (const platform::ProcessEnded& end) {
                ended = end.code == 0;
            }
        };
    };
    const auto check = [&ended](long) {
        EXPECT_TRUE(ended);
        EXPECT_LE(world().desktop.addresses().size(), 2U);
        EXPECT_LE(world().device.presses().size(), 1U);
        checkDeviceAndLeave();
    };

    failEachCallAndAllocation(kLinkCalls, &setScene, scene, check);
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, DeviceFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

}  // namespace
