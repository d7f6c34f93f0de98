#include "printer/consumables.h"

#include "platform/simulated/world.h"
#include "tests/printer/stored_values.h"
#include "tests/support/supply_pages.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using platform::simulated::Call;
using platform::simulated::world;
using supply_pages::configuration;
using supply_pages::kConfigurationPath;
using supply_pages::kUsagePath;
using supply_pages::usage;

constexpr wchar_t kPrinter[] = L"Beamline K7400";

class ConsumablesTest : public testing::Test {
protected:
    void SetUp() override {
        stored::clear();
        world().device.install();
        world().device.setPage(kConfigurationPath, configuration("4711", "QV-7400A"));
        world().device.setPage(kUsagePath, usage("1200"));
        product.fill(L'#');
        pages.fill(L'#');
    }
    void TearDown() override {
        EXPECT_EQ(world().device.openDevices(), 0);
        EXPECT_EQ(world().registry.openKeys(), 0);
        stored::clear();
    }

    // The current cartridge after the device has reported the serial number `serial`.
    static std::optional<std::uint32_t> currentAfter(const std::string& serial) {
        stored::clear();
        world().device.install();
        world().device.setPage(kConfigurationPath, configuration(serial, "x"));
        queryCartridgeSerial(kPrinter);
        return stored::current();
    }

    void ask() { getConsumableInfo(kPrinter, product.data(), pages.data()); }

    std::array<wchar_t, 513> product;  // one unit more than getConsumableInfo() may write
    std::array<wchar_t, 513> pages;
};

TEST_F(ConsumablesTest, TheSerialNumberBecomesTheCurrentCartridge) {
    queryCartridgeSerial(kPrinter);

    EXPECT_EQ(stored::current(), 4711U);
    EXPECT_EQ(stored::record().size(), 280U);
    EXPECT_EQ(world().device.openedPorts(), std::vector<std::wstring>{kPrinter});
}

TEST_F(ConsumablesTest, ASerialNumberIsReadUpToItsFirstOtherLetter) {
    EXPECT_EQ(currentAfter("12x34"), 12U);
    EXPECT_EQ(currentAfter("12 34"), 12U);
    EXPECT_EQ(currentAfter("12.5"), 12U);
    EXPECT_EQ(currentAfter("007"), 7U);
    EXPECT_EQ(currentAfter(" \t\r\n 42 "), 42U);
    EXPECT_EQ(currentAfter("+42"), 42U);
}

TEST_F(ConsumablesTest, ASerialNumberEndsAt32Bits) {
    EXPECT_EQ(currentAfter("2147483647"), 2147483647U);
    EXPECT_EQ(currentAfter("2147483648"), 2147483647U);
    EXPECT_EQ(currentAfter("4294967295"), 2147483647U);
    EXPECT_EQ(currentAfter("99999999999999999999999999999999"), 2147483647U);
    EXPECT_EQ(currentAfter("-1"), 0xFFFFFFFFU);
    EXPECT_EQ(currentAfter("-2147483648"), 0x80000000U);
    EXPECT_EQ(currentAfter("-2147483649"), 0x80000000U);
    EXPECT_EQ(currentAfter("-99999999999999999999999999999999"), 0x80000000U);
}

TEST_F(ConsumablesTest, NoNumberChangesNothing) {
    for (const char* const serial :
         {"0", "", "000", "-0", "none", "-", "+", "- 5", "+-5", "x5", "   ", "0x10"}) {
        EXPECT_EQ(currentAfter(serial), std::nullopt) << serial;
        EXPECT_EQ(stored::version(), std::nullopt) << serial;
    }
}

TEST_F(ConsumablesTest, AMissingSerialNumberChangesNothing) {
    world().device.setPage(kConfigurationPath, "<ccdyn:ConsumableInfo xmlns:ccdyn=\"c\"/>");

    queryCartridgeSerial(kPrinter);

    EXPECT_EQ(stored::current(), std::nullopt);
    EXPECT_EQ(stored::version(), std::nullopt);
}

TEST_F(ConsumablesTest, AFailureOnTheWayToTheSerialNumberChangesNothing) {
    for (const Call call : {Call::LibraryLoad, Call::FunctionLookup, Call::DeviceOpen,
                            Call::DevicePage, Call::XmlQuery}) {
        world().faults.reset();
        world().faults.add({call, 1, true});

        queryCartridgeSerial(kPrinter);

        EXPECT_EQ(stored::current(), std::nullopt);
    }
}

TEST_F(ConsumablesTest, ABrokenOrHugePageWithoutTheNodeChangesNothing) {
    for (const std::string& page :
         {std::string("<a><b></a>"), std::string("no xml at all"), std::string(1, '\0'),
          "<a>" + std::string(60 * 1024, 'x') + "</a>", configuration("5", "x").substr(0, 120)}) {
        world().device.setPage(kConfigurationPath, page);

        queryCartridgeSerial(kPrinter);

        EXPECT_EQ(stored::current(), std::nullopt);
    }
}

TEST_F(ConsumablesTest, BothTextsComeFromTheirPages) {
    ask();

    EXPECT_STREQ(product.data(), L"QV-7400A");
    EXPECT_STREQ(pages.data(), L"1200");
    EXPECT_EQ(world().device.openedPorts().size(), 2U);
    EXPECT_EQ(world().faults.calls(Call::LibraryLoad), 1);
}

TEST_F(ConsumablesTest, EitherOutputMayBeAbsent) {
    getConsumableInfo(kPrinter, nullptr, pages.data());
    EXPECT_STREQ(pages.data(), L"1200");

    getConsumableInfo(kPrinter, product.data(), nullptr);
    EXPECT_STREQ(product.data(), L"QV-7400A");
}

TEST_F(ConsumablesTest, WithoutAnOutputNoDeviceIsAsked) {
    getConsumableInfo(kPrinter, nullptr, nullptr);

    EXPECT_EQ(world().faults.calls(Call::LibraryLoad), 0);
}

TEST_F(ConsumablesTest, WhenEitherPageFailsBothStayNotKnownAndBothWereAsked) {
    for (const long nth : {1L, 2L}) {
        world().faults.reset();
        world().faults.add({Call::DevicePage, nth});

        ask();

        EXPECT_STREQ(product.data(), L"Not Known");
        EXPECT_STREQ(pages.data(), L"Not Known");
        EXPECT_EQ(world().faults.calls(Call::DevicePage), 2);
    }
}

TEST_F(ConsumablesTest, WithoutTheLibraryBothStayNotKnown) {
    world().device.reset();

    ask();

    EXPECT_STREQ(product.data(), L"Not Known");
    EXPECT_STREQ(pages.data(), L"Not Known");
}

TEST_F(ConsumablesTest, AnEmptyOrMissingNodeStaysNotKnown) {
    world().device.setPage(kConfigurationPath, configuration("1", ""));
    world().device.setPage(kUsagePath, "<a/>");

    ask();

    EXPECT_STREQ(product.data(), L"Not Known");
    EXPECT_STREQ(pages.data(), L"Not Known");
}

TEST_F(ConsumablesTest, OneFailedQueryLeavesTheOtherText) {
    world().faults.add({Call::XmlQuery, 1});

    ask();

    EXPECT_STREQ(product.data(), L"Not Known");
    EXPECT_STREQ(pages.data(), L"1200");
}

TEST_F(ConsumablesTest, ALongTextIsCutAt511Characters) {
    world().device.setPage(kConfigurationPath, configuration("1", std::string(511, 'a')));
    world().device.setPage(kUsagePath, usage(std::string(50000, 'b')));

    ask();

    EXPECT_EQ(std::wstring(product.data()), std::wstring(511, L'a'));
    EXPECT_EQ(std::wstring(pages.data()), std::wstring(511, L'b'));
    EXPECT_EQ(product[512], L'#');
    EXPECT_EQ(pages[512], L'#');
}

TEST_F(ConsumablesTest, LettersOfTheCodePageAreWidened) {
    world().device.setPage(kConfigurationPath, configuration("1", "T\xFCner"));

    ask();

    EXPECT_STREQ(product.data(), L"T\u00FCner");
}

}  // namespace
