#include "printer/media_types.h"
#include "tests/monitor/alerts_fixture.h"

#include <cstdint>
#include <ostream>
#include <tuple>

namespace {

constexpr std::uint32_t kSerial = 4711;
constexpr platform::UnixSeconds kTwoWeeks = 336 * 3600;
constexpr platform::UnixSeconds kTwentyYears = 175200LL * 3600;

class AlertHandlersTest : public AlertsFixture {};

TEST_F(AlertHandlersTest, TonerLowShowsItselfAndSleepsForTwoWeeks) {
    cartridgeIs(kSerial);

    status(10209);

    EXPECT_EQ(openTypes(), std::vector<int>{4});
    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::Low), kNow + kTwoWeeks);
    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::VeryLow), 0);
}

TEST_F(AlertHandlersTest, ASecondTonerLowIsSilentWhileTheFirstIsOpen) {
    cartridgeIs(kSerial);
    status(10209);

    status(10209);

    EXPECT_EQ(openTypes(), std::vector<int>{4});
    EXPECT_TRUE(wasTraced("TERNA IsSnoozing?  YES"));
}

TEST_F(AlertHandlersTest, ASecondTonerLowIsSilentAfterAReminderTimeWasChosen) {
    cartridgeIs(kSerial);
    status(10209);
    const WindowHandle window = windowOf(4);
    ASSERT_TRUE(headless::choose(window, 2));
    ASSERT_TRUE(headless::press(window, IDC_ALERT_OK));
    ASSERT_TRUE(openTypes().empty());

    status(10209);

    EXPECT_TRUE(openTypes().empty());
    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::Low), kNow + 4 * kHour);
}

TEST_F(AlertHandlersTest, TonerVeryLowHasASnoozeOfItsOwn) {
    cartridgeIs(kSerial);
    status(10209);

    status(10219);

    EXPECT_EQ(openTypes(), (std::vector<int>{4, 30}));
    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::VeryLow), kNow + kTwoWeeks);
}

TEST_F(AlertHandlersTest, TonerOutSleepsForTwentyYears) {
    cartridgeIs(kSerial);

    status(10300);

    EXPECT_EQ(openTypes(), std::vector<int>{31});
    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::Out), kNow + kTwentyYears);
}

TEST_F(AlertHandlersTest, WithoutACartridgeTheAlertsAboutItStayAway) {
    for (const std::int32_t code : {10209, 10219, 10300, 1, 10512, 10403, 40017, 40010})
        status(code);

    EXPECT_TRUE(openTypes().empty());
}

TEST_F(AlertHandlersTest, ACartridgeThatWasNeverRecordedOpensOneAlert) {
    world().registry.setDword(platform::Hive::CurrentUser, L"Software\\Corvane\\QVBL7400 SM",
                              L"CurrCart", kSerial);

    status(10512);
    EXPECT_EQ(openTypes(), std::vector<int>{6});
    EXPECT_TRUE(wasTraced("TERNA IllegalCartOccured SN=4711"));

    headless::closeBox(windowOf(6));
    status(10512);
    EXPECT_TRUE(openTypes().empty());
}

TEST_F(AlertHandlersTest, ANewCartridgeIsGreetedOnce) {
    cartridgeIs(kSerial);

    status(1);
    EXPECT_EQ(openTypes(), std::vector<int>{25});
    headless::closeBox(windowOf(25));
    status(1);

    EXPECT_TRUE(openTypes().empty());
}

TEST_F(AlertHandlersTest, ACartridgeWithAnyWarningIsNotGreeted) {
    cartridgeIs(kSerial);
    status(10403);
    headless::closeBox(windowOf(7));

    status(1);

    EXPECT_TRUE(openTypes().empty());
}

struct OnceRow {
    std::int32_t code;
    int dialogType;
};

class OncePerCartridgeTest : public AlertHandlersTest,
                             public testing::WithParamInterface<OnceRow> {};

TEST_P(OncePerCartridgeTest, IsShownForTheFirstTimeOnly) {
    const OnceRow row = GetParam();
    cartridgeIs(kSerial);

    status(row.code);
    EXPECT_EQ(openTypes(), std::vector<int>{row.dialogType});
    headless::closeBox(windowOf(row.dialogType));
    status(row.code);
    EXPECT_TRUE(openTypes().empty());

    cartridgeIs(kSerial + 1);
    status(row.code);
    EXPECT_EQ(openTypes(), std::vector<int>{row.dialogType});
}

INSTANTIATE_TEST_SUITE_P(EveryCode, OncePerCartridgeTest,
                         testing::Values(OnceRow{10512, 6}, OnceRow{10403, 7}, OnceRow{10407, 7},
                                         OnceRow{40017, 8}, OnceRow{40010, 29},
                                         OnceRow{30017, 29}));

TEST_F(AlertHandlersTest, TheTwoMemoryAlertsShareOneFlag) {
    cartridgeIs(kSerial);

    status(40010);
    status(40017);

    EXPECT_EQ(openTypes(), std::vector<int>{29});
}

TEST_F(AlertHandlersTest, ARegistryThatDoesNotWriteStillLetsTheAlertShow) {
    cartridgeIs(kSerial);
    world().faults.add({platform::simulated::Call::RegistryWrite, 1, true});

    status(10209);
    status(10512);

    EXPECT_EQ(openTypes(), (std::vector<int>{4, 6}));
}

// The end of the snooze in the cartridge record, compared with the current time.
enum class Entry { Missing, NotSnoozed, Expired, ExactlyNow, Future };
struct SlotRow {
    std::int32_t code;
    SnoozeSlot slot;
    int dialogType;
};

class SnoozeRuleTest : public AlertHandlersTest,
                       public testing::WithParamInterface<std::tuple<SlotRow, Entry>> {};

TEST_P(SnoozeRuleTest, ShowsTheAlertUnlessItIsSnoozedToThisVerySecond) {
    const auto& [row, entry] = GetParam();
    cartridgeIs(kSerial);
    switch (entry) {
        case Entry::Missing:
            world().registry.setDword(platform::Hive::CurrentUser,
                                      L"Software\\Corvane\\QVBL7400 SM", L"CurrCart", 99);
            break;
        case Entry::NotSnoozed:
            break;
        case Entry::Expired:
            snoozeUntil(kSerial, row.slot, kNow - 1);
            break;
        case Entry::ExactlyNow:
            snoozeUntil(kSerial, row.slot, kNow);
            break;
        case Entry::Future:
            snoozeUntil(kSerial, row.slot, kNow + 1);
            break;
    }

    status(row.code);

    const bool shown = entry != Entry::ExactlyNow && entry != Entry::Future;
    EXPECT_EQ(openTypes(), shown ? std::vector<int>{row.dialogType} : std::vector<int>{});
}

INSTANTIATE_TEST_SUITE_P(EverySlot, SnoozeRuleTest,
                         testing::Combine(testing::Values(SlotRow{10209, SnoozeSlot::Low, 4},
                                                          SlotRow{10219, SnoozeSlot::VeryLow, 30},
                                                          SlotRow{10300, SnoozeSlot::Out, 31}),
                                          testing::Values(Entry::Missing, Entry::NotSnoozed,
                                                          Entry::Expired, Entry::ExactlyNow,
                                                          Entry::Future)));

// One row for each handler: the type of alert that it opens, and whether this alert closes when
// the document ends.
struct AlertRow {
    std::int32_t code;
    int dialogType;
    bool closesWithDocument;

    // GoogleTest would print the bytes of the row, and its padding is not initialized.
    friend std::ostream& operator<<(std::ostream& out, const AlertRow& row) {
        return out << "status " << row.code;
    }
};

class EveryAlertTest : public AlertHandlersTest, public testing::WithParamInterface<AlertRow> {};

TEST_P(EveryAlertTest, OpensItsTypeAndClosesWithTheDocumentOnlyWhereItBelongsToTheJob) {
    const AlertRow row = GetParam();
    cartridgeIs(kSerial);

    status(row.code);
    EXPECT_EQ(openTypes(), std::vector<int>{row.dialogType});
    job(tern::kDocumentEnd);

    EXPECT_EQ(openTypes().empty(), row.closesWithDocument);
    EXPECT_EQ(headless::dismissedWindows(), row.closesWithDocument ? 1 : 0);
    EXPECT_EQ(channelIsStopped(), row.closesWithDocument);
}

INSTANTIATE_TEST_SUITE_P(
    EveryHandler, EveryAlertTest,
    testing::Values(AlertRow{41150, 0, true}, AlertRow{41012, 1, true}, AlertRow{41250, 1, true},
                    AlertRow{41350, 1, true}, AlertRow{41900, 2, true}, AlertRow{40120, 3, true},
                    AlertRow{10209, 4, false}, AlertRow{40600, 5, false}, AlertRow{10512, 6, false},
                    AlertRow{10403, 7, false}, AlertRow{40017, 8, false}, AlertRow{50021, 9, true},
                    AlertRow{50012, 10, true}, AlertRow{30201, 11, true}, AlertRow{50020, 12, true},
                    AlertRow{50003, 14, true}, AlertRow{50007, 15, true}, AlertRow{50008, 16, true},
                    AlertRow{50025, 17, true}, AlertRow{50005, 18, true}, AlertRow{40020, 19, true},
                    AlertRow{40021, 20, true}, AlertRow{42002, 21, true}, AlertRow{42000, 22, true},
                    AlertRow{42001, 23, true}, AlertRow{40608, 24, true}, AlertRow{1, 25, false},
                    AlertRow{100000, 26, true}, AlertRow{100001, 27, true},
                    AlertRow{50006, 28, true}, AlertRow{40010, 29, false},
                    AlertRow{10219, 30, false}, AlertRow{10300, 31, false},
                    AlertRow{40625, 32, false}),
    [](const testing::TestParamInfo<AlertRow>& row) {
        return "Status" + std::to_string(row.param.code);
    });

struct MediaRow {
    std::int32_t code;
    unsigned text;  // string id of the media
};

class MediaAlertTest : public AlertHandlersTest, public testing::WithParamInterface<MediaRow> {};

TEST_P(MediaAlertTest, NamesTheMediaByTheLastTwoDigitsOfItsStatus) {
    const platform::NativeHandle texts = world().texts.addModule(L"QVK7400SMs.dll");
    world().texts.add(texts, platform::simulated::kEnglish, 154, L"%s, not %s");
    world().texts.add(texts, platform::simulated::kEnglish, GetParam().text, L"this one");
    auto made = std::make_unique<DefaultLMSListener>(manager.get(), tern::kVeloEventGeneratorId,
                                                     tern::kVeloListenerId, nullptr, texts);
    listener = made.get();
    ASSERT_TRUE(manager->addComponent(listener));
    static_cast<void>(made.release());
    setCurrentMediaType(399);  // a medium that has no text

    status(GetParam().code);

    EXPECT_EQ(headless::control(windowOf(1), IDC_ALERT_DETAIL).text, L", not this one");
    setCurrentMediaType(301);
}

INSTANTIATE_TEST_SUITE_P(EveryGroup, MediaAlertTest,
                         testing::Values(MediaRow{41001, 301}, MediaRow{41012, 312},
                                         MediaRow{41021, 321}, MediaRow{41220, 320},
                                         MediaRow{41302, 302}));

TEST_F(AlertHandlersTest, TheListenerHasAClassOfItsOwn) {
    const arbor::Guid expected{
        0x2C8F6E51, 0x7D0A, 0x4B6E, {0x9A, 0x35, 0x51, 0xC4, 0x0E, 0x8B, 0x27, 0xD3}};

    EXPECT_TRUE(*listener->getClassId() == expected);
}

TEST_F(AlertHandlersTest, ADescriptionHasTheValuesThatEveryAlertNeeds) {
    printerIs(L"Zweite \x00C4tage \x4E2D", L"USB002");
    status(41150);
    arbor::PropertyHolder description;

    ASSERT_TRUE(fillDialogDescription(*listener, description));

    EXPECT_EQ(description.getInt(L"status", -1), 41150);
    EXPECT_EQ(description.getInt(L"subcode", -1), static_cast<int>(tern::kDeviceStatus));
    EXPECT_EQ(description.getPointer(L"eventBroker", nullptr), manager->getEventBroker());
    EXPECT_TRUE(description.hasProperty(L"hinstance"));
    EXPECT_TRUE(description.hasProperty(L"hSinstance"));
    const auto* printer =
        static_cast<const wchar_t*>(description.getProperty(L"idsPrinter")->getData());
    EXPECT_EQ(std::wstring(printer), L"Zweite \x00C4tage \x4E2D");
    const auto* port = static_cast<const wchar_t*>(description.getProperty(L"idsPort")->getData());
    EXPECT_EQ(std::wstring(port), L"USB002");
}

}  // namespace
