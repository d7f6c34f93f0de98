#include "platform/spooler.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <array>
#include <string>

namespace {

// This test runs with the simulated spooler, which reads the driver's name from the variable below.
TEST(PrinterDriverTest, AValueBelowAKeyOfThePrinterIsRead) {
    ::SetEnvironmentVariableW(L"QVSM_PRINTER_DRIVER", L"Fake K7400 driver");
    platform::Printer printer;
    ASSERT_TRUE(printer.open(L"Fake printer"));
    std::array<wchar_t, 256> text{};

    EXPECT_EQ(printer.readDataOf(L"\\", L"Printer Driver", text.data(), sizeof text), 0U);
    EXPECT_EQ(std::wstring(text.data()), L"Fake K7400 driver");
    EXPECT_EQ(printer.readDataOf(L"\\", L"Printer Driver", text.data(), 2), platform::kMoreData);
    EXPECT_EQ(printer.readDataOf(L"\\", L"Missing", text.data(), 2), platform::kFileNotFound);
}

}  // namespace
