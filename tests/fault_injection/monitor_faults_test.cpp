// Every allocation and every call of the platform fails in turn while the monitor handles messages,
// opens alerts and closes them.
#include "tests/fault_injection/monitor_under_faults.h"

#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "tests/fault_injection/faults_fixture.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "ui/alert_actions.h"
#include "ui/resource_ids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using fault_injection::Mode;
using fault_injection::Monitor;
using platform::simulated::Call;
using platform::simulated::Fault;
using platform::simulated::world;
using Types = std::vector<int>;
using Calls = std::vector<Call>;

// One thing that the monitor does. Faults are injected while `play` runs; `check` tests what must
// hold afterwards. A call that is not among the `decisive` ones may fail without any effect that
// `check` sees.
struct Moment {
    const char* name;
    void (*arrange)(Monitor&);
    void (*play)(Monitor&);
    void (*check)(Monitor&, bool undisturbed);
    Calls decisive;
};

const Calls kNone{};
const Calls kCartridgeMemory{Call::RegistryOpen, Call::RegistryRead};
const Calls kCartridgeChange{Call::RegistryOpen, Call::RegistryRead, Call::RegistryCreate,
                             Call::RegistryWrite};
const Calls kDevice{Call::LibraryLoad, Call::FunctionLookup, Call::DeviceOpen, Call::DeviceButton};
const Calls kShop{Call::FolderLookup, Call::LibraryLoad, Call::FunctionLookup,
                  Call::DeviceOpen,   Call::DevicePage,  Call::FileCopy,
                  Call::FileRead,     Call::FileWrite,   Call::DocumentOpen};

void hear(Monitor& monitor) {
    monitor.hearAll();
}

template <std::int32_t Code>
void statusComes(Monitor& monitor) {
    monitor.status(Code);
}

template <std::int32_t Code>
void isShown(Monitor& monitor) {
    monitor.status(Code);
    monitor.hasHeardAll();
}

void closed(Monitor& monitor) {
    monitor.closeFirstAlert();
}

// The moment's alert is open; after a fault it may be missing, but then nothing is open. No window
// was opened and closed again, because the user would have seen it.
template <int Type>
void itsAlertIsOpen(Monitor&, bool undisturbed) {
    const Types open = Monitor::openTypes();
    EXPECT_TRUE(open == Types{Type} || (!undisturbed && open.empty()));
    EXPECT_EQ(headless::openedWindows(), static_cast<int>(open.size()));
}

void oneOrNot(std::size_t done, bool undisturbed) {
    EXPECT_TRUE(done == 1 || (!undisturbed && done == 0)) << done;
}

void currentIs(std::uint32_t serial, bool undisturbed) {
    const std::uint32_t current = GetCurrCart();
    EXPECT_TRUE(current == serial || (!undisturbed && current == fault_injection::kSerial))
        << current;
}

const std::vector<Moment>& moments() {
    static const std::vector<Moment> all{
        {"the printer is told", [](Monitor& m) { m.printerIs(fault_injection::kPrinter); }, hear,
         [](Monitor&, bool) { EXPECT_EQ(Monitor::openTypes(), Types{}); }, kNone},
        {"a cartridge is reported",
         [](Monitor& m) { m.cartridgeReport(fault_injection::kNewSerial); }, hear,
         [](Monitor&, bool undisturbed) { currentIs(fault_injection::kNewSerial, undisturbed); },
         kCartridgeChange},
        {"media is asked for", statusComes<41003>, hear, itsAlertIsOpen<1>, kNone},
        {"toner is low", statusComes<10209>, hear, itsAlertIsOpen<4>, kCartridgeMemory},
        {"a new cartridge", statusComes<1>, hear, itsAlertIsOpen<25>, kCartridgeMemory},
        {"the user cancels at the device", [](Monitor& m) { m.status(99999, 19); }, hear,
         [](Monitor&, bool undisturbed) {
             const std::wstring buttons = Monitor::pressedButtons();
             EXPECT_TRUE(buttons == L"cancel" || (!undisturbed && buttons.empty()));
         },
         kDevice},
        {"manual duplex is closed", isShown<40120>, closed,
         [](Monitor&, bool undisturbed) {
             if (!undisturbed) return;
             EXPECT_EQ(Monitor::openTypes(), Types{});
             EXPECT_EQ(Monitor::pressedButtons(), L"go");
         },
         kDevice},
        {"toner low is closed", isShown<10209>, closed,
         [](Monitor&, bool undisturbed) {
             if (!undisturbed) return;
             EXPECT_EQ(Monitor::openTypes(), Types{});
             world().time = world().time + 1;
             EXPECT_FALSE(IsSnoozing(fault_injection::kSerial, SnoozeSlot::Low));
         },
         kCartridgeChange},
        {"paper out is accepted", isShown<41150>,
         [](Monitor& m) { m.pressInFirstAlert(IDC_ALERT_OK); },
         [](Monitor&, bool undisturbed) {
             const Types open = Monitor::openTypes();
             EXPECT_TRUE(open.empty() || (!undisturbed && open == Types{0}));
         },
         kNone},
        {"the shop is asked for", isShown<41150>,
         [](Monitor& m) { m.pressInFirstAlert(IDC_ALERT_SHOP); },
         [](Monitor&, bool undisturbed) {
             EXPECT_EQ(Monitor::openTypes(), Types{0});
             oneOrNot(world().desktop.documents().size(), undisturbed);
         },
         kShop},
        {"recycling is asked for",
         [](Monitor& m) { m.feedback(alert_action::kRecycle); },
         hear,
         [](Monitor&, bool undisturbed) {
             oneOrNot(world().desktop.addresses().size(), undisturbed);
         },
         {Call::AddressOpen}},
        {"a fax is opened",
         [](Monitor& m) { m.feedback(alert_action::kOpenFax); },
         hear,
         [](Monitor&, bool undisturbed) {
             oneOrNot(world().desktop.programs().size(), undisturbed);
         },
         {Call::RegistryOpen, Call::RegistryRead, Call::ProgramStart}},
        {"the document ends",
         [](Monitor& m) { isShown<41150>(m), isShown<10300>(m), m.documentEnd(); }, hear,
         [](Monitor&, bool) { EXPECT_EQ(Monitor::openTypes(), Types{31}); }, kNone},
    };
    return all;
}

// Alerts that are opened by other code than the alerts above.
const std::vector<Moment>& furtherAlerts() {
    static const std::vector<Moment> all{
        {"paper is out", statusComes<41150>, hear, itsAlertIsOpen<0>, kNone},
        {"manual duplex", statusComes<40120>, hear, itsAlertIsOpen<3>, kNone},
        {"toner is very low", statusComes<10219>, hear, itsAlertIsOpen<30>, kCartridgeMemory},
        {"toner is out", statusComes<10300>, hear, itsAlertIsOpen<31>, kCartridgeMemory},
        {"an illegal cartridge", statusComes<10512>, hear, itsAlertIsOpen<6>, kCartridgeMemory},
        {"cartridge memory", statusComes<40017>, hear, itsAlertIsOpen<8>, kCartridgeMemory},
        {"a printed fax", statusComes<100000>, hear, itsAlertIsOpen<26>, kNone},
        {"a fax in the companion", statusComes<100001>, hear, itsAlertIsOpen<27>, kNone},
        {"a status of the generic table", statusComes<10500>, hear, itsAlertIsOpen<28>, kNone},
        {"a second alert", [](Monitor& m) { isShown<41150>(m), m.status(40600); }, hear,
         [](Monitor&, bool undisturbed) {
             const Types open = Monitor::openTypes();
             EXPECT_TRUE(open == (Types{0, 5}) || (!undisturbed && open == Types{0}));
         },
         kNone},
    };
    return all;
}

class MonitorFaultsTest : public fault_injection::FaultsTest {
protected:
    void SetUp() override {
        world().reset();
        fault_injection::provideTexts();
    }
    void TearDown() override { world().reset(); }

    void arrange(const Moment& moment, const std::optional<Fault>& fault) {
        monitor = std::make_unique<Monitor>();
        moment.arrange(*monitor);
        if (fault) {
            EXPECT_TRUE(world().faults.add(*fault));
        }
    }

    void checkAndLeave(const Moment& moment, bool undisturbed) {
        world().faults.clear();
        moment.check(*monitor, undisturbed);
        monitor->expectLivingAlerts();
        monitor->expectEndOnRequest();
        Monitor::expectCleanPlatform();
        monitor.reset();
    }

    // Every allocation fails in turn while the fault of the platform is in place.
    void failEveryAllocation(const Moment& moment, const std::optional<Fault>& fault = {}) {
        const auto scene = [&] {
            arrange(moment, fault);
            return [&] { moment.play(*monitor); };
        };
        const auto check = [&](long failed) {
            checkAndLeave(moment, failed == 0 && world().faults.struck() == 0);
        };
        failEachAllocation(scene, check);
    }

    // Calls `withFault` once for each call of the platform, with that call failing.
    template <typename WithFault>
    void forEachCall(const Moment& moment, const WithFault& withFault) {
        arrange(moment, {});
        Calls kinds;
        std::vector<long> made;
        for (std::size_t kind = 0; kind < platform::simulated::kCalls; ++kind) {
            kinds.push_back(static_cast<Call>(kind));
            made.push_back(world().faults.calls(kinds.back()));
        }
        moment.play(*monitor);
        for (std::size_t kind = 0; kind < platform::simulated::kCalls; ++kind)
            made[kind] = world().faults.calls(kinds[kind]) - made[kind];
        monitor.reset();

        for (std::size_t kind = 0; kind < platform::simulated::kCalls; ++kind) {
            for (long nth = 1; nth <= made[kind]; ++nth) {
                SCOPED_TRACE("call " + std::to_string(kind) + " for the " + std::to_string(nth));
                withFault(Fault{kinds[kind], nth, GetParam() == Mode::FromThenOn}, made[kind]);
            }
        }
    }

    void failEveryCall(const Moment& moment) {
        forEachCall(moment, [&](const Fault& fault, long) {
            arrange(moment, fault);
            moment.play(*monitor);
            const Calls& decisive = moment.decisive;
            const bool isDecisive =
                std::find(decisive.begin(), decisive.end(), fault.call) != decisive.end();
            checkAndLeave(moment, !isDecisive);
        });
    }

    std::unique_ptr<Monitor> monitor;
};

TEST_P(MonitorFaultsTest, WithoutMemoryTheMonitorShowsLessAndStaysWhole) {
    for (const auto* const set : {&moments(), &furtherAlerts()}) {
        for (const Moment& moment : *set) {
            SCOPED_TRACE(moment.name);
            failEveryAllocation(moment);
        }
    }
}

TEST_P(MonitorFaultsTest, ACallThatFailsKeepsAnAlertBackOnlyWhereItDecidesAboutIt) {
    for (const auto* const set : {&moments(), &furtherAlerts()}) {
        for (const Moment& moment : *set) {
            SCOPED_TRACE(moment.name);
            failEveryCall(moment);
        }
    }
}

// Only the first and the last call of each kind: each call alone is tested above, and all of them
// combined with every allocation would take a minute.
TEST_P(MonitorFaultsTest, WithoutMemoryAndPlatformTheMonitorStaysWholeToo) {
    for (const Moment& moment : moments()) {
        SCOPED_TRACE(moment.name);
        forEachCall(moment, [&](const Fault& fault, long made) {
            if (fault.nth == 1 || fault.nth == made) failEveryAllocation(moment, fault);
        });
    }
}

// Creating a listener and adding it to the broker either works or leaves nothing behind. The broker
// works also where the system has no mutex left.
TEST_P(MonitorFaultsTest, TheMonitorIsMadeWholeOrNotAtAll) {
    for (const long nth : {0L, 1L, 2L}) {
        const auto scene = [&] {
            if (nth != 0) {
                world().faults.reset();
                EXPECT_TRUE(
                    world().faults.add({Call::MutexCreation, nth, GetParam() == Mode::FromThenOn}));
            }
            return [&] { monitor = std::make_unique<Monitor>(Monitor::Platform::AsItIs); };
        };
        const auto check = [&](long failed) {
            world().faults.clear();
            if (failed == 0) {
                ASSERT_NE(monitor, nullptr);
            }
            if (monitor != nullptr) {
                monitor->expectEndOnRequest();
            }
            monitor.reset();
        };

        failEachAllocation(scene, check, 11);
    }
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, MonitorFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

}  // namespace
