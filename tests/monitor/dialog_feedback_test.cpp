#include "tests/monitor/alerts_fixture.h"

#include "ui/alert_keys.h"
#include "ui/alert_window.h"

namespace {

constexpr std::uint32_t kSerial = 4711;
constexpr wchar_t kPrinter[] = L"K7400";

class DialogFeedbackTest : public AlertsFixture {};

TEST_F(DialogFeedbackTest, OkClosesTheAlert) {
    status(41150);

    ASSERT_TRUE(headless::press(windowOf(0), IDC_ALERT_OK));

    EXPECT_TRUE(headless::windows().empty());
}

TEST_F(DialogFeedbackTest, EscapeAndTheCloseBoxCloseTheAlertToo) {
    status(41150);
    headless::pressEscape(windowOf(0));
    EXPECT_TRUE(headless::windows().empty());

    status(41150);
    headless::closeBox(windowOf(0));
    EXPECT_TRUE(headless::windows().empty());
}

TEST_F(DialogFeedbackTest, AClosingActionClosesTheAlertThatSentItAlone) {
    status(41150);
    status(50012);

    feedback(alert_action::kClosed, headless::find(windowOf(0))->dialog);

    EXPECT_EQ(openTypes(), std::vector<int>{10});
}

TEST_F(DialogFeedbackTest, ADialogThatIsNoAlertOfOursChangesNothing) {
    status(41150);

    feedback(alert_action::kClosed, this);

    EXPECT_EQ(openTypes(), std::vector<int>{0});
}

TEST_F(DialogFeedbackTest, TheChannelStaysUpWhileTheDocumentPrints) {
    status(41150);
    headless::press(windowOf(0), IDC_ALERT_OK);

    EXPECT_FALSE(channelIsStopped());
}

TEST_F(DialogFeedbackTest, TheLastAlertAfterTheDocumentEndsTheChannel) {
    status(40600);
    status(40625);
    job(tern::kDocumentEnd);
    EXPECT_TRUE(wasTraced("TERNA - VELO_MSG_ENDDOC 2 dlgs left"));

    headless::closeBox(windowOf(5));
    EXPECT_FALSE(wasTraced("TERNA - No more dlgs, killing threads..."));
    headless::closeBox(windowOf(32));

    EXPECT_TRUE(wasTraced("TERNA - No more dlgs, killing threads..."));
    EXPECT_TRUE(channelIsStopped());
}

TEST_F(DialogFeedbackTest, ADocumentWithoutAlertsEndsTheChannelAtOnce) {
    job(tern::kDocumentEnd);

    EXPECT_TRUE(channelIsStopped());
    EXPECT_FALSE(wasTraced("TERNA - No more dlgs, killing threads..."));
}

TEST_F(DialogFeedbackTest, FeedbackOfAStrangerAfterTheDocumentEndsAnEmptyChannelOnly) {
    status(40600);
    job(tern::kDocumentEnd);

    feedback(alert_action::kClosed, this);
    EXPECT_FALSE(wasTraced("TERNA - No more dlgs, killing threads..."));
    feedback(alert_action::kClosed);

    EXPECT_FALSE(channelIsStopped());
}

TEST_F(DialogFeedbackTest, ClosingManualDuplexPressesGo) {
    world().device.install();
    printerIs(kPrinter);
    status(40120);

    headless::closeBox(windowOf(3));

    EXPECT_EQ(pressed(), std::vector<std::wstring>{L"go"});
    EXPECT_EQ(world().device.presses().front().port, kPrinter);
}

TEST_F(DialogFeedbackTest, GoIsPressedBeforeTheAlertIsDestroyed) {
    world().device.install();
    printerIs(kPrinter);
    status(40120);
    std::vector<std::wstring> pressedBefore;
    headless::setWhenAWindowGoes([&pressedBefore] { pressedBefore = pressed(); });

    headless::closeBox(windowOf(3));

    EXPECT_EQ(pressedBefore, std::vector<std::wstring>{L"go"});
}

TEST_F(DialogFeedbackTest, ClosingTonerLowWithoutAChoiceEndsItsSnooze) {
    cartridgeIs(kSerial);
    status(10209);

    headless::closeBox(windowOf(4));

    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::Low), kNow);
    world().time = kNow + 1;
    status(10209);
    EXPECT_EQ(openTypes(), std::vector<int>{4});
}

TEST_F(DialogFeedbackTest, ClosingTonerVeryLowEndsTheOtherSlot) {
    cartridgeIs(kSerial);
    status(10219);

    headless::closeBox(windowOf(30));

    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::VeryLow), kNow);
}

TEST_F(DialogFeedbackTest, ClosingTonerOutLeavesItsSnooze) {
    cartridgeIs(kSerial);
    status(10300);

    headless::closeBox(windowOf(31));

    EXPECT_EQ(snoozedUntil(kSerial, SnoozeSlot::Out), kNow + 175200 * kHour);
}

TEST_F(DialogFeedbackTest, OkWithoutAReminderTimeAsksForOne) {
    cartridgeIs(kSerial);
    status(10209);

    headless::press(windowOf(4), IDC_ALERT_OK);

    EXPECT_EQ(openTypes(), std::vector<int>{4});
    EXPECT_EQ(headless::messages().size(), 1U);
}

TEST_F(DialogFeedbackTest, ClosingAFaxAlertEndsTheMonitorAsTheDocumentDoes) {
    status(100000);
    EXPECT_EQ(openTypes(), std::vector<int>{26});

    headless::closeBox(windowOf(26));

    EXPECT_TRUE(channelIsStopped());
}

TEST_F(DialogFeedbackTest, ClosingAFaxAlertClosesTheAlertsOfTheJob) {
    status(41150);
    status(100001);

    headless::closeBox(windowOf(27));

    EXPECT_TRUE(headless::windows().empty());
    EXPECT_TRUE(channelIsStopped());
}

TEST_F(DialogFeedbackTest, FaxAlertsAreCompactAndTheLinkIsOneOfThem) {
    const platform::NativeHandle texts = world().texts.addModule(L"QVK7400SMs.dll");
    world().texts.add(texts, platform::simulated::kEnglish, 348, L"A fax is in the output bin.");
    world().texts.add(texts, platform::simulated::kEnglish, 349, L"Open the fax in Orrery");
    auto made = std::make_unique<DefaultLMSListener>(manager.get(), tern::kVeloEventGeneratorId,
                                                     tern::kVeloListenerId, nullptr, texts);
    listener = made.get();
    ASSERT_TRUE(manager->addComponent(listener));
    static_cast<void>(made.release());

    status(100000);
    status(100001);

    EXPECT_TRUE(headless::find(windowOf(26))->compact);
    EXPECT_FALSE(headless::find(windowOf(26))->detailMadeLink);
    EXPECT_TRUE(headless::find(windowOf(27))->compact);
    EXPECT_TRUE(headless::find(windowOf(27))->detailMadeLink);
}

TEST_F(DialogFeedbackTest, CompactingNeedsTheDialogInItsMessage) {
    status(41150);
    arbor::Message message(&alert_action::kMessageType, alert_action::kCompact, 0);
    message.getProperties()->setPointer(L"statusdialoghwnd", windowOf(0));

    listener->notify(&message);

    EXPECT_FALSE(headless::find(windowOf(0))->compact);
}

TEST_F(DialogFeedbackTest, TheGenuineCartridgeLinkOpensTheCheckOfThisPrinter) {
    printerIs(kPrinter);

    feedback(alert_action::kCheckCartridge);

    ASSERT_EQ(headless::cartridgeChecks().size(), 1U);
    EXPECT_EQ(headless::cartridgeChecks().front().printerName, kPrinter);
}

TEST_F(DialogFeedbackTest, AlertsAndTheCartridgeCheckGetTheModulesOfTheListener) {
    int dialogs = 0;
    int texts = 0;
    DefaultLMSListener own(manager.get(), tern::kVeloEventGeneratorId, tern::kVeloListenerId,
                           &dialogs, &texts);
    arbor::PropertyHolder description;
    arbor::Message message(&alert_action::kMessageType, alert_action::kCheckCartridge, 0);

    EXPECT_TRUE(fillDialogDescription(own, description));
    own.notify(&message);

    EXPECT_EQ(description.getPointer(alert_key::kModule, nullptr), &dialogs);
    EXPECT_EQ(description.getPointer(alert_key::kStringModule, nullptr), &texts);
    ASSERT_EQ(headless::cartridgeChecks().size(), 1U);
    EXPECT_EQ(headless::cartridgeChecks().front().module, &dialogs);
    EXPECT_EQ(headless::cartridgeChecks().front().strings, &texts);
}

TEST_F(DialogFeedbackTest, TheShopButtonAsksTheDeviceForItsSupplies) {
    world().device.install();
    printerIs(kPrinter);
    status(41150);

    headless::press(windowOf(0), IDC_ALERT_SHOP);

    EXPECT_TRUE(wasTraced("not get shop for supply"));
    EXPECT_EQ(openTypes(), std::vector<int>{0});
}

}  // namespace
