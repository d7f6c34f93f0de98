#include "platform/simulated/world.h"
#include "strings/string_ids.h"
#include "tern/event_broker.h"
#include "tests/fault_injection/faults_fixture.h"
#include "tests/support/clean_platform.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "tests/support/strings_table.h"
#include "ui/alert_actions.h"
#include "ui/alert_factory.h"
#include "ui/alert_window.h"

#include "arbor/i_message.h"
#include "arbor/property_holder.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

// Every allocation that creates or closes an alert fails in turn, alone and together with a failure
// of the platform.
namespace {

using fault_injection::Mode;
using platform::simulated::Call;
using platform::simulated::world;

using UiFaultsTest = fault_injection::FaultsTest;

void* speakEnglish() {
    constexpr unsigned short kEnglish = 1033;
    void* strings = world().texts.addModule(L"QVK7400SMs.dll");
    for (unsigned i = 0; i < kStringRowCount; ++i) {
        const StringRow& row = kStringRows[i];
        if (row.language == kEnglish) world().texts.add(strings, row.language, row.id, row.text);
    }
    return strings;
}

void describe(arbor::PropertyHolder& description, void* strings, int type, int status) {
    description.setPointer(L"hSinstance", strings);
    description.setWString(L"idsPrinter", L"Laser printer of the whole first floor");
    description.setInt(L"status", status);
    description.setInt(L"dialog type", type);
}

// The texts of all controls of an alert.
std::map<int, std::wstring> textsOf(WindowHandle window) {
    std::map<int, std::wstring> texts;
    for (const auto& [id, control] : headless::find(window)->controls)
        texts[id] = control.text;
    return texts;
}

// The factory returns null or an alert that opens and shows all its texts.
TEST_P(UiFaultsTest, AnAlertIsMadeWholeOrNotAtAll) {
    for (const std::pair<int, int>& alertKind : {std::pair{1, 41003}, {4, 10209}, {3, 40120}}) {
        cleanPlatform();
        headless::reset();
        void* const strings = speakEnglish();
        std::unique_ptr<arbor::PropertyHolder> description;
        std::unique_ptr<DefaultStatusDialog> alert;
        std::map<int, std::wstring> whole;
        const auto scene = [&] {
            description = std::make_unique<arbor::PropertyHolder>();
            describe(*description, strings, alertKind.first, alertKind.second);
            return [&] { alert = createAlertDialog(*description); };
        };
        const auto check = [&](long failed) {
            if (failed == 0) {
                ASSERT_NE(alert, nullptr);
            }
            if (alert != nullptr) {
                EXPECT_TRUE(alert->create());
                ASSERT_EQ(headless::windows().size(), 1U);
                if (failed == 0) whole = textsOf(alert->window());
                EXPECT_EQ(textsOf(alert->window()), whole) << failed;
            }
            alert.reset();
            EXPECT_TRUE(headless::windows().empty());
        };

        const fault_injection::Outcome outcome =
            fault_injection::everyAllocation(GetParam(), scene, check);

        EXPECT_GT(outcome.points, 10);
    }
    cleanPlatform();
}

// An alert with only some of its texts must not open, because it would count as shown.
TEST_P(UiFaultsTest, AnAlertThatCannotBeFilledIsNotOpened) {
    for (const auto& [type, status] : {std::pair{1, 41003}, {4, 10209}, {3, 40120}}) {
        cleanPlatform();
        headless::reset();
        arbor::PropertyHolder description;
        describe(description, speakEnglish(), type, status);
        const std::unique_ptr<DefaultStatusDialog> alert = createAlertDialog(description);
        ASSERT_NE(alert, nullptr);
        bool opened = false;
        const auto scene = [&] { return [&] { opened = alert->create(); }; };
        const auto check = [&](long failed) {
            EXPECT_EQ(opened, failed == 0);
            EXPECT_EQ(alert->window() != nullptr, opened);
            EXPECT_EQ(headless::windows().size(), opened ? 1U : 0U);
            if (opened) destroyAlertWindow(alert->window());
        };

        const fault_injection::Outcome outcome =
            fault_injection::everyAllocation(GetParam(), scene, check);

        EXPECT_GT(outcome.points, 3);
    }
    cleanPlatform();
}

// Counts the messages that say that `alert` is closed. No other message may arrive.
class ClosedAlerts : public tern::EventBroker {
public:
    ClosedAlerts() : EventBroker(nullptr) {}
    void publish(arbor::IMessage* message) override {
        const bool isTold =
            message->getCode() == alert_action::kClosed &&
            message->getProperties()->getPointer(alert_action_key::kDialog, nullptr) == alert;
        EXPECT_TRUE(isTold);
        if (isTold) ++told;
    }
    const StatusDialog* alert = nullptr;
    int told = 0;
};

// If the window went away without the message that it is closed, the monitor would keep an alert
// that nobody can close any more.
TEST_P(UiFaultsTest, AnAlertThatCannotReportItsClosingStaysOpen) {
    cleanPlatform();
    headless::reset();
    arbor::PropertyHolder description;
    describe(description, nullptr, 10, 50012);
    ClosedAlerts broker;
    description.setPointer(L"eventBroker", static_cast<tern::EventBroker*>(&broker));
    std::unique_ptr<DefaultStatusDialog> alert;
    const auto scene = [&] {
        alert = createAlertDialog(description);
        EXPECT_TRUE(alert->create());
        broker.alert = alert.get();
        broker.told = 0;
        return [window = alert->window()] { headless::closeBox(window); };
    };
    const auto check = [&](long failed) {
        EXPECT_EQ(broker.told, failed == 0 ? 1 : 0);
        EXPECT_EQ(headless::find(alert->window())->visible, broker.told == 0);
        if (broker.told == 0) headless::closeBox(alert->window());
        EXPECT_EQ(broker.told, 1);
        alert.reset();
        cleanPlatform();
    };

    failEachAllocation(scene, check, 1);
}

// The alert presses the device's button without asking the user, so it must not do so when it
// cannot read its own caption.
TEST_P(UiFaultsTest, AnAlertThatCannotReadItsButtonDoesNotAskThePrinterToGoOn) {
    cleanPlatform();
    headless::reset();
    arbor::PropertyHolder description;
    describe(description, speakEnglish(), 10, 50012);
    description.setInt(L"buttonMessage", IDS_CONTINUE);
    const std::unique_ptr<DefaultStatusDialog> alert = createAlertDialog(description);
    ASSERT_NE(alert, nullptr);
    bool asksToGoOn = false;
    const auto scene = [&] { return [&] { asksToGoOn = alert->canResume(); }; };
    const auto check = [&](long failed) { EXPECT_EQ(asksToGoOn, failed == 0); };

    const fault_injection::Outcome outcome =
        fault_injection::everyAllocation(GetParam(), scene, check);

    EXPECT_GE(outcome.points, 1);
    cleanPlatform();
}

// Every kind of platform call that the creation of an alert with a supplies block makes.
constexpr Call kCalls[] = {
    Call::TextLookup,     Call::TextProbe,          Call::PreferredLanguages, Call::RegistryCreate,
    Call::RegistryWrite,  Call::PrinterOpen,        Call::PrinterDataRead,    Call::LibraryLoad,
    Call::FunctionLookup, Call::DeviceOpen,         Call::DevicePage,         Call::XmlQuery,
    Call::SystemVersion,  Call::ResourceLibraryOpen};

TEST_P(UiFaultsTest, WithAPlatformFaultAsWellAnAlertIsMadeWholeOrNotAtAll) {
    cleanPlatform();
    headless::reset();
    void* const strings = speakEnglish();
    arbor::PropertyHolder description;
    describe(description, strings, 4, 10209);
    for (const Call call : kCalls) {
        for (long nth = 1, struck = 1; struck > 0; ++nth) {
            struck = 0;
            std::unique_ptr<DefaultStatusDialog> alert;
            const auto scene = [&] {
                world().faults.reset();
                world().device.install();
                EXPECT_TRUE(world().faults.add({call, nth, GetParam() == Mode::FromThenOn}));
                return [&] { alert = createAlertDialog(description); };
            };
            const auto check = [&](long failed) {
                struck += world().faults.struck();
                world().faults.clear();
                EXPECT_TRUE(alert != nullptr || failed != 0);
                if (alert != nullptr) {
                    EXPECT_TRUE(alert->create());
                }
                alert.reset();
                EXPECT_TRUE(headless::windows().empty());
                EXPECT_EQ(world().printers.openPrinters(), 0);
                EXPECT_EQ(world().registry.openKeys(), 0);
                EXPECT_EQ(world().device.openDevices(), 0);
                EXPECT_EQ(world().device.loadedLibraries(), 0);
            };

            fault_injection::everyAllocation(GetParam(), scene, check);

            if (nth == 2) break;  // later calls of this kind are made by the same code
        }
    }
    cleanPlatform();
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, UiFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

}  // namespace
