#include "printer/printer_identity.h"

#include "platform/simulated/world.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::Hive;
using platform::ValueType;
using platform::simulated::Call;
using platform::simulated::Fault;
using platform::simulated::world;
using Lines = std::vector<std::string>;

constexpr wchar_t kUserKey[] = L"Software\\Corvane\\QVBL7400 SM";
constexpr wchar_t kPrinter[] = L"Beamline K7400";

class PrinterIdentityTest : public testing::Test {
protected:
    void SetUp() override { cleanPlatform(); }
    void TearDown() override {
        EXPECT_EQ(world().registry.openKeys(), 0);
        EXPECT_EQ(world().printers.openPrinters(), 0);
        cleanPlatform();
    }

    static void giveDriver(const std::wstring& driver) {
        world().printers.setTextOf(kPrinter, L"\\", L"Printer Driver", driver);
    }

    static std::string remembered() {
        const auto value = world().registry.value(Hive::CurrentUser, kUserKey, L"CurrPrinter");
        return value && value->type == ValueType::String ? value->bytes : "";
    }

    TraceLines trace;
};

TEST_F(PrinterIdentityTest, OnlyAStatusValueOfZeroSilencesThePrinter) {
    for (const std::uint32_t status : {1U, 2U, 0x100U, 0x80000000U}) {
        world().printers.setDword(kPrinter, L"Status", status);
        EXPECT_TRUE(printerWantsStatus(kPrinter)) << status;
    }

    world().printers.setDword(kPrinter, L"Status", 0);
    EXPECT_FALSE(printerWantsStatus(kPrinter));
}

TEST_F(PrinterIdentityTest, APrinterWithoutAStatusValueWantsStatus) {
    world().printers.add(kPrinter);

    EXPECT_TRUE(printerWantsStatus(kPrinter));
}

TEST_F(PrinterIdentityTest, APrinterThatDoesNotOpenWantsStatus) {
    EXPECT_TRUE(printerWantsStatus(kPrinter));
    EXPECT_TRUE(printerWantsStatus(L""));
}

TEST_F(PrinterIdentityTest, AStatusThatCannotBeReadWantsStatus) {
    world().printers.setDword(kPrinter, L"Status", 0);
    world().faults.add({Call::PrinterDataRead});

    EXPECT_TRUE(printerWantsStatus(kPrinter));
}

TEST_F(PrinterIdentityTest, AStatusValueOfAnotherSizeDoesNoHarm) {
    world().printers.set(kPrinter, L"Status", std::string(1, '\0'));
    EXPECT_FALSE(printerWantsStatus(kPrinter));

    world().printers.set(kPrinter, L"Status", "");
    EXPECT_TRUE(printerWantsStatus(kPrinter));

    world().printers.set(kPrinter, L"Status", std::string(5, '\0'));
    EXPECT_TRUE(printerWantsStatus(kPrinter));
}

TEST_F(PrinterIdentityTest, EachBitOfTheMaskIsOneClass) {
    for (std::uint32_t mask = 0; mask < 16; ++mask) {
        world().printers.setDword(kPrinter, L"AlertMask", mask);

        const AlertClasses classes = readAlertClasses(kPrinter).value();

        EXPECT_EQ(classes.errors, mask % 2 == 1) << mask;
        EXPECT_EQ(classes.information, mask / 2 % 2 == 1) << mask;
        EXPECT_EQ(classes.warnings, mask / 4 % 2 == 1) << mask;
    }
}

TEST_F(PrinterIdentityTest, APrinterWithoutAMaskShowsEverything) {
    world().printers.add(kPrinter);

    const AlertClasses classes = readAlertClasses(kPrinter).value();

    EXPECT_TRUE(classes.errors && classes.information && classes.warnings);
}

TEST_F(PrinterIdentityTest, AMaskThatCannotBeReadShowsNothing) {
    world().printers.setDword(kPrinter, L"AlertMask", 7);
    for (const std::uint32_t error : {5U, 87U, 234U, 1U, 3U}) {
        world().faults.reset();
        world().faults.add({Call::PrinterDataRead, 1, false, error});

        const AlertClasses classes = readAlertClasses(kPrinter).value();

        EXPECT_FALSE(classes.errors || classes.information || classes.warnings) << error;
    }
}

TEST_F(PrinterIdentityTest, AMaskWithoutABitShowsNothing) {
    world().printers.set(kPrinter, L"AlertMask", "");

    const AlertClasses classes = readAlertClasses(kPrinter).value();

    EXPECT_FALSE(classes.errors || classes.information || classes.warnings);
}

TEST_F(PrinterIdentityTest, APrinterThatDoesNotOpenHasNoAlertClasses) {
    EXPECT_FALSE(readAlertClasses(L"nobody").has_value());
}

TEST_F(PrinterIdentityTest, ADriverNameWithTheMarkerAnywhereIsSupported) {
    for (const wchar_t* const driver :
         {L"K740", L"QV Beamline K7400 MFP Series", L"xK740", L"K74K740", L"Family K7405 series"}) {
        giveDriver(driver);
        std::wstring name = kPrinter;

        EXPECT_TRUE(isSupportedPrinter(name));
        EXPECT_EQ(name, kPrinter);
    }
}

TEST_F(PrinterIdentityTest, AnyOtherDriverNameIsNot) {
    for (const wchar_t* const driver :
         {L"", L"K74", L"k7400", L"QV Beamline k740", L"K 740", L"K7 40", L"Beamline 7400"}) {
        giveDriver(driver);
        std::wstring name = kPrinter;

        EXPECT_FALSE(isSupportedPrinter(name));
    }
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(PrinterIdentityTest, AMarkerBehindTheEndOfTheDriverNameDoesNotCount) {
    giveDriver(std::wstring(L"Other\0K740", 10));
    std::wstring name = kPrinter;

    EXPECT_FALSE(isSupportedPrinter(name));
}

TEST_F(PrinterIdentityTest, ADriverNameThatFillsItsBufferWithoutTerminatorIsRead) {
    std::u16string units(252, u'x');
    units += u"K740";
    world().printers.setOf(kPrinter, L"\\", L"Printer Driver",
                           {reinterpret_cast<const char*>(units.data()), 512});
    std::wstring name = kPrinter;

    EXPECT_TRUE(isSupportedPrinter(name));
}

TEST_F(PrinterIdentityTest, ADriverNameThatIsTooLongIsNotSupported) {
    giveDriver(std::wstring(L"K740") + std::wstring(600, L'x'));
    std::wstring name = kPrinter;

    EXPECT_FALSE(isSupportedPrinter(name));
}

TEST_F(PrinterIdentityTest, ADriverNameOneLetterTooLongIsNotSupported) {
    std::u16string units = u"K740";
    units.resize(257, u'x');
    world().printers.setOf(kPrinter, L"\\", L"Printer Driver",
                           {reinterpret_cast<const char*>(units.data()), 514});
    std::wstring name = kPrinter;

    EXPECT_FALSE(isSupportedPrinter(name));
}

TEST_F(PrinterIdentityTest, APrinterWithoutADriverNameIsNotSupported) {
    world().printers.add(kPrinter);
    std::wstring name = kPrinter;

    EXPECT_FALSE(isSupportedPrinter(name));
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(PrinterIdentityTest, TheNameIsRememberedWithoutATerminator) {
    giveDriver(L"K7400");
    std::wstring name = L"Büro";

    isSupportedPrinter(name);

    EXPECT_EQ(remembered(), std::string("B\0\xFC\0r\0o\0", 8));
}

TEST_F(PrinterIdentityTest, AnEmptyNameIsReplacedByTheRememberedOne) {
    giveDriver(L"K7400");
    std::wstring name = kPrinter;
    isSupportedPrinter(name);

    std::wstring empty;
    EXPECT_TRUE(isSupportedPrinter(empty));

    EXPECT_EQ(empty, kPrinter);
}

TEST_F(PrinterIdentityTest, ARememberedNameMayHaveATerminator) {
    giveDriver(L"K7400");
    world().registry.setText(Hive::CurrentUser, kUserKey, L"CurrPrinter", kPrinter);

    std::wstring empty;
    EXPECT_TRUE(isSupportedPrinter(empty));

    EXPECT_EQ(empty, kPrinter);
}

TEST_F(PrinterIdentityTest, WithoutANameNoPrinterOpens) {
    std::wstring empty;

    EXPECT_FALSE(isSupportedPrinter(empty));

    EXPECT_EQ(empty, L"");
    EXPECT_EQ(trace.all(), Lines{"Error happen, this printer can not be openned!!!"});
}

TEST_F(PrinterIdentityTest, ARememberedNameThatMakesNoSenseIsNotTaken) {
    const auto remember = [](ValueType type, const std::string& bytes) {
        world().registry.set(Hive::CurrentUser, kUserKey, L"CurrPrinter", type, bytes);
        std::wstring name;
        isSupportedPrinter(name);
        return name;
    };

    EXPECT_EQ(remember(ValueType::Binary, std::string("A\0B\0", 4)), L"");
    EXPECT_EQ(remember(ValueType::String, std::string(512, 'A')), L"");
    EXPECT_EQ(remember(ValueType::String, ""), L"");
    EXPECT_EQ(remember(ValueType::String, std::string("A\0B", 3)), L"A");
    EXPECT_EQ(remember(ValueType::String, std::string(509, 'A')).size(), 254U);
    EXPECT_EQ(remember(ValueType::String, std::string(510, 'A')).size(), 255U);
}

TEST_F(PrinterIdentityTest, ARegistryThatFailsLeavesTheAnswerToTheSpooler) {
    giveDriver(L"K7400");
    for (const Call call : {Call::RegistryCreate, Call::RegistryWrite}) {
        world().faults.reset();
        world().faults.add({call, 1, true});
        std::wstring name = kPrinter;

        EXPECT_TRUE(isSupportedPrinter(name));
        EXPECT_EQ(remembered(), "");
    }
    for (const Call call : {Call::RegistryOpen, Call::RegistryRead}) {
        world().registry.setText(Hive::CurrentUser, kUserKey, L"CurrPrinter", kPrinter);
        world().faults.reset();
        world().faults.add({call, 1, true});
        std::wstring name;

        EXPECT_FALSE(isSupportedPrinter(name));
        EXPECT_EQ(name, L"");
    }
}

TEST_F(PrinterIdentityTest, ASpoolerThatFailsMeansNotSupported) {
    giveDriver(L"K7400");
    for (const Call call : {Call::PrinterOpen, Call::PrinterDataRead}) {
        world().faults.reset();
        world().faults.add({call});
        std::wstring name = kPrinter;

        EXPECT_FALSE(isSupportedPrinter(name));
    }
}

}  // namespace
