#include "platform/spooler.h"

#include "system.h"

#include <gtest/gtest.h>
#include <array>
#include <string_view>

namespace {

constexpr wchar_t kPrinterName[] = L"Contract printer";

class SpoolerTest : public testing::Test {
protected:
    void SetUp() override {
        contract::addPrinter(kPrinterName, L"AlertMask", std::string_view("\x05\0\0\0", 4));
    }

    platform::Printer _printer;
};

TEST_F(SpoolerTest, AValueOfThePrinterIsRead) {
    ASSERT_TRUE(_printer.open(kPrinterName));
    std::uint32_t mask = 0;

    EXPECT_EQ(_printer.readData(L"AlertMask", &mask, sizeof mask), 0U);
    EXPECT_EQ(mask, 5U);
}

TEST_F(SpoolerTest, AMissingValueIsFileNotFoundAndLeavesThePreset) {
    ASSERT_TRUE(_printer.open(kPrinterName));
    std::uint32_t status = 1;

    EXPECT_EQ(_printer.readData(L"Status", &status, sizeof status), platform::kFileNotFound);
    EXPECT_EQ(status, 1U);
}

TEST_F(SpoolerTest, ATooSmallBufferIsMoreData) {
    ASSERT_TRUE(_printer.open(kPrinterName));
    std::array<char, 2> small{};

    EXPECT_EQ(_printer.readData(L"AlertMask", small.data(), small.size()), platform::kMoreData);
}

TEST_F(SpoolerTest, AnUnknownPrinterDoesNotOpen) {
    EXPECT_FALSE(_printer.open(L"Printer that nobody installed"));
}

TEST_F(SpoolerTest, APrinterWithoutANameIsNotTheSpoolerItself) {
    EXPECT_FALSE(_printer.open(L""));
    EXPECT_FALSE(_printer.open(nullptr));
}

TEST_F(SpoolerTest, AFailedOpenLeavesNoPrinterOpen) {
    ASSERT_TRUE(_printer.open(kPrinterName));
    ASSERT_FALSE(_printer.open(L"Printer that nobody installed"));
    std::uint32_t mask = 0;

    EXPECT_EQ(_printer.readData(L"AlertMask", &mask, sizeof mask), platform::kInvalidHandleError);
    EXPECT_EQ(_printer.readDataOf(L"\\", L"Printer Driver", &mask, sizeof mask),
              platform::kInvalidHandleError);
}

}  // namespace
