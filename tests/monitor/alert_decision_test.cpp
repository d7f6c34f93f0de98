#include "arbor/property_text.h"
#include "monitor/default_lms_listener.h"
#include "printer/media_types.h"
#include "tests/monitor/listener_fixture.h"
#include "tests/support/test_properties.h"

#include <new>
#include <tuple>

namespace {

using Calls = std::vector<std::string>;

constexpr wchar_t kPrinter[] = L"K7400 upstairs";
constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";
constexpr std::uint32_t kAccessDenied = 5;

// A property that exists but has no value.
class PropertyOfNothing : public test::AnyProperty {
public:
    PropertyOfNothing() noexcept : AnyProperty(arbor::PT_INT, std::uint64_t{4711}) {}
    [[nodiscard]] bool isNull() const override { return true; }
};

class AlertDecisionTest : public ListenerFixture<RecordingListener> {
protected:
    AlertDecisionTest() { world().printers.add(kPrinter); }

    void maskIs(std::uint32_t mask) {
        world().printers.setDword(kPrinter, L"AlertMask", mask);
        printerIs(kPrinter);
    }

    void statusDataIs(std::uint32_t value) {
        world().printers.setDword(kPrinter, L"Status", value);
        printerIs(kPrinter);
    }

    static std::optional<std::uint32_t> currentCartridge() {
        return world().registry.dword(platform::Hive::CurrentUser, kKey, L"CurrCart");
    }
};

// Has no memory to open its first alert.
class ListenerWithoutMemory : public DefaultLMSListener {
public:
    using DefaultLMSListener::DefaultLMSListener;
    void showDialogType0() override { throw std::bad_alloc(); }
};
using WithoutMemoryTest = ListenerFixture<ListenerWithoutMemory>;

TEST_F(WithoutMemoryTest, AMessageIsLostWithATraceAndTheMonitorGoesOn) {
    EXPECT_FALSE(status(41150));

    EXPECT_TRUE(wasTraced("TERNA - error: std::bad_alloc"));
}

TEST_F(AlertDecisionTest, EveryMessageIsTraced) {
    status(41150);

    EXPECT_TRUE(wasTraced("in notify"));
}

TEST_F(AlertDecisionTest, MessagesOfAStrangerAreIgnored) {
    arbor::Message message(&tern::kTimerEventGeneratorId, 2, 0);
    message.getProperties()->setInt(L"status", 41150);

    EXPECT_FALSE(listener->notify(&message));

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, AStatusWithoutStatusAndSubcodeShowsNothing) {
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);

    EXPECT_FALSE(listener->notify(&message));

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, AMissingStatusReadsAsZeroAlsoAfterAnother) {
    status(41150);
    static_cast<void>(listener->takeCalls());
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
    message.getProperties()->setInt(L"subcode", tern::kDeviceStatus);

    listener->notify(&message);

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, AMissingSubcodeReadsAsZeroAlsoAfterAnother) {
    status(0, 1);
    EXPECT_EQ(listener->takeCalls(), Calls{"cart data"});
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);

    listener->notify(&message);

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, StatusOfAJobRecordShowsNothing) {
    arbor::Message message(&tern::kVeloEventGeneratorId, 0, 0);
    message.getProperties()->setInt(L"subcode", tern::kJobStatus);
    message.getProperties()->setInt(L"status", 41150);

    EXPECT_FALSE(listener->notify(&message));

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, ASilentPrinterDropsEveryStatus) {
    statusDataIs(0);

    EXPECT_TRUE(status(41150));

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, ASilentPrinterDropsEvenTheCartridgeReport) {
    statusDataIs(0);

    EXPECT_TRUE(cartridgeReport(4711));

    EXPECT_EQ(currentCartridge(), std::nullopt);
}

TEST_F(AlertDecisionTest, ASilentPrinterIsAskedBeforeTheCancelButtonIsPressed) {
    world().device.install();
    statusDataIs(0);

    EXPECT_TRUE(status(41150, 19));

    EXPECT_TRUE(pressed().empty());
}

TEST_F(AlertDecisionTest, AnyOtherStatusValueLetsAlertsThrough) {
    statusDataIs(7);

    EXPECT_FALSE(status(41150));

    EXPECT_EQ(listener->takeCalls(), Calls{"0"});
}

TEST_F(AlertDecisionTest, APrinterThatDoesNotOpenDoesNotBlockAlerts) {
    printerIs(L"no such printer");

    EXPECT_FALSE(status(41150));

    EXPECT_EQ(listener->takeCalls(), Calls{"0"});
}

TEST_F(AlertDecisionTest, ACartridgeReportMakesTheCartridgeCurrentWhateverItsStatus) {
    EXPECT_TRUE(cartridgeReport(4711, 41150));

    EXPECT_EQ(currentCartridge(), 4711U);
    EXPECT_EQ(listener->takeCalls(), Calls{});
    EXPECT_TRUE(wasTraced("TERNA - cartridgeSN = 4711"));
}

TEST_F(AlertDecisionTest, ASerialNumberThatAProducerStoredAsATextIsReadAsANumber) {
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
    message.getProperties()->setInt(L"subcode", tern::kCartridgeReport);
    message.getProperties()->setString(L"blackSN", "4711");

    EXPECT_TRUE(listener->notify(&message));

    EXPECT_EQ(currentCartridge(), 4711U);
}

TEST_F(AlertDecisionTest, ACartridgeReportWithoutASerialNumberIsAStatusLikeAnyOther) {
    EXPECT_FALSE(status(41150, tern::kCartridgeReport));

    EXPECT_EQ(listener->takeCalls(), Calls{"0"});
}

TEST_F(AlertDecisionTest, ACartridgeReportWithANullSerialNumberIsAStatusLikeAnyOther) {
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
    message.getProperties()->setInt(L"status", 41150);
    message.getProperties()->setInt(L"subcode", tern::kCartridgeReport);
    auto serial = std::make_unique<PropertyOfNothing>();
    ASSERT_TRUE(message.getProperties()->adoptProperty(L"blackSN", serial.get()));
    static_cast<void>(serial.release());
    ASSERT_TRUE(message.getProperties()->hasProperty(L"blackSN"));

    EXPECT_FALSE(listener->notify(&message));

    EXPECT_EQ(listener->takeCalls(), Calls{"0"});
    EXPECT_EQ(currentCartridge(), std::nullopt);
}

TEST_F(AlertDecisionTest, TheCancelSubcodePressesCancelAndGoesOn) {
    world().device.install();
    printerIs(kPrinter);

    EXPECT_FALSE(status(41150, 19));

    EXPECT_EQ(pressed(), std::vector<std::wstring>{L"cancel"});
    EXPECT_EQ(world().device.presses().front().port, kPrinter);
    EXPECT_EQ(listener->takeCalls(), Calls{"0"});
}

TEST_F(AlertDecisionTest, AMaskOfZeroSilencesEverything) {
    maskIs(0);

    EXPECT_TRUE(status(10209));

    EXPECT_TRUE(wasTraced("TERNA user chose to disable all messages"));
    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, InformationAloneShowsTonerOutAndDropsErrors) {
    maskIs(2);

    EXPECT_FALSE(status(10300));
    EXPECT_TRUE(status(10403));

    EXPECT_EQ(listener->takeCalls(), Calls{"toner out"});
    EXPECT_TRUE(wasTraced("TERNA status >= 10403  PJL error starting point???"));
}

TEST_F(AlertDecisionTest, WarningsAloneShowTonerLowOnly) {
    maskIs(4);

    EXPECT_TRUE(status(10300));
    EXPECT_TRUE(status(10403));
    EXPECT_FALSE(status(10209));

    EXPECT_EQ(listener->takeCalls(), Calls{"toner low 0"});
    EXPECT_TRUE(wasTraced("TERNA ! _showInformation && status == TONER_OUT_BLACK"));
}

TEST_F(AlertDecisionTest, AMissingMaskShowsEverything) {
    printerIs(kPrinter);

    EXPECT_FALSE(status(10300));

    EXPECT_EQ(listener->takeCalls(), Calls{"toner out"});
}

TEST_F(AlertDecisionTest, AMaskThatCannotBeReadSilencesEverything) {
    world().printers.setDword(kPrinter, L"AlertMask", 7);
    world().faults.add({platform::simulated::Call::PrinterDataRead, 1, true, kAccessDenied});
    printerIs(kPrinter);
    world().faults.clear();

    EXPECT_TRUE(status(10300));

    EXPECT_TRUE(wasTraced("TERNA user chose to disable all messages"));
}

TEST_F(AlertDecisionTest, TheMaskIsReadAgainWithEveryPrinterRecord) {
    maskIs(0);
    maskIs(7);

    EXPECT_FALSE(status(10300));

    EXPECT_EQ(listener->takeCalls(), Calls{"toner out"});
}

TEST_F(AlertDecisionTest, APrinterThatDoesNotOpenKeepsTheMask) {
    maskIs(0);
    printerIs(L"gone");

    EXPECT_TRUE(status(10300));
}

TEST_F(AlertDecisionTest, ThePrinterRecordAsksTheDeviceForItsCartridge) {
    world().device.install();
    world().device.setPage("/DevMgmt/ConsumableConfigDyn.xml",
                           "<a><ccdyn:ConsumableInfo><dd:SerialNumber>815</dd:SerialNumber>"
                           "</ccdyn:ConsumableInfo></a>");

    printerIs(kPrinter);

    EXPECT_EQ(currentCartridge(), 815U);
    // The device is opened by the name in this record, so the name has to be read first.
    EXPECT_EQ(world().device.openedPorts(), std::vector<std::wstring>{kPrinter});
}

TEST_F(AlertDecisionTest, ARecordWithoutNamesKeepsTheOldOnes) {
    world().device.install();
    printerIs(kPrinter);

    job(tern::kPrinterNarrow);
    status(41150, 19);

    EXPECT_EQ(world().device.presses().back().port, kPrinter);
}

TEST_F(AlertDecisionTest, ARecordWithoutAPortKeepsTheOldOne) {
    printerIs(kPrinter, L"USB002");

    job(tern::kPrinterNarrow);

    arbor::PropertyHolder description;
    ASSERT_TRUE(fillDialogDescription(*listener, description));
    EXPECT_EQ(arbor::wideText(description, L"idsPort"), L"USB002");
}

TEST_F(AlertDecisionTest, BothPrinterRecordsAreReadByAnOperationThatMayBeReplaced) {
    listener->replaceConfiguration();

    job(tern::kPrinterNarrow);
    job(tern::kPrinterWide);

    EXPECT_EQ(listener->takeCalls(), (Calls{"configure", "configure"}));
}

TEST_F(AlertDecisionTest, TheEndOfADocumentIsHandledByItsOwnOperation) {
    EXPECT_FALSE(job(tern::kDocumentEnd));

    EXPECT_EQ(listener->takeCalls(), Calls{"end of document"});
}

TEST_F(AlertDecisionTest, OtherJobRecordsDoNothing) {
    for (const std::int32_t subcode : {2, 3, 5, 6, 99})
        EXPECT_FALSE(job(subcode));

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, TheMediaTypeOfTheChannelBecomesTheCurrentOne) {
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
    message.getProperties()->setInt(L"subcode", tern::kMediaReport);
    message.getProperties()->setString(L"mediaType", "Cardstock");

    listener->notify(&message);

    EXPECT_EQ(currentMediaType(), 309);
}

TEST_F(AlertDecisionTest, TheMediaTypeIsTakenFromASilentPrinterToo) {
    statusDataIs(0);
    arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
    message.getProperties()->setInt(L"subcode", tern::kMediaReport);
    message.getProperties()->setString(L"mediaType", "Vellum");

    EXPECT_TRUE(listener->notify(&message));

    EXPECT_EQ(currentMediaType(), 321);
}

TEST_F(AlertDecisionTest, TheFaxLinkStartsTheCompanionUnlessBothTextsAreInTheMessage) {
    feedback(1012);
    EXPECT_EQ(listener->takeCalls(), Calls{"companion"});

    arbor::Message message(&alert_action::kMessageType, 1012, 0);
    message.getProperties()->setString(L"idsFaxReceived", "a fax");
    listener->notify(&message);
    EXPECT_EQ(listener->takeCalls(), Calls{"companion"});

    message.getProperties()->setString(L"idsFaxReceivedTB", "a fax in Orrery");
    listener->notify(&message);
    EXPECT_EQ(listener->takeCalls(), Calls{});
}

TEST_F(AlertDecisionTest, AFaxTextThatIsNotExistCountsAsMissing) {
    arbor::Message message(&alert_action::kMessageType, 1012, 0);
    message.getProperties()->setString(L"idsFaxReceived", "a fax");
    message.getProperties()->setString(L"idsFaxReceivedTB", "not exist");

    listener->notify(&message);

    EXPECT_EQ(listener->takeCalls(), Calls{"companion"});
}

TEST_F(AlertDecisionTest, AFaxTextThatIsEmptyIsThere) {
    arbor::Message message(&alert_action::kMessageType, 1012, 0);
    message.getProperties()->setString(L"idsFaxReceived", "");
    message.getProperties()->setString(L"idsFaxReceivedTB", "");

    listener->notify(&message);

    EXPECT_EQ(listener->takeCalls(), Calls{});
}

// Combines every value of the mask with statuses of every class.
class AlertMaskTest : public AlertDecisionTest,
                      public testing::WithParamInterface<std::tuple<std::uint32_t, std::int32_t>> {
};

bool passes(std::uint32_t mask, std::int32_t code) {
    const bool errors = (mask & 1) != 0;
    const bool information = (mask & 2) != 0;
    if (mask == 0) return false;
    if (code == 10300) return information;
    return code < 10403 || errors;
}

TEST_P(AlertMaskTest, LetsThroughWhatItsBitsSay) {
    const auto [mask, code] = GetParam();
    maskIs(mask);

    const bool filtered = status(code);

    EXPECT_EQ(filtered, !passes(mask, code));
    EXPECT_EQ(listener->takeCalls().size(), filtered ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(EveryMask, AlertMaskTest,
                         testing::Combine(testing::Range(0U, 8U),
                                          testing::Values(10209, 10219, 10300, 10403, 41000, 42000,
                                                          50003, 100000)));

}  // namespace
