#include "platform/spooler.h"

#include <gtest/gtest.h>
#include <array>
#include <string>

namespace {

// The spooler is fake_spooler.cpp, beside this program.
TEST(PrinterDriverTest, AValueBelowAKeyOfThePrinterIsRead) {
    platform::Printer printer;
    ASSERT_TRUE(printer.open(L"Fake printer"));
    std::array<wchar_t, 256> text{};

    EXPECT_EQ(printer.readDataOf(L"\\", L"Printer Driver", text.data(), sizeof text), 0U);
    EXPECT_EQ(std::wstring(text.data()), L"Fake K7400 driver");
    EXPECT_EQ(printer.readDataOf(L"\\", L"Printer Driver", text.data(), 2), platform::kMoreData);
    EXPECT_EQ(printer.readDataOf(L"\\", L"Missing", text.data(), 2), platform::kFileNotFound);
}

}  // namespace
