#include "printer/companion.h"
#include "printer/printer_identity.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <winspool.h>
#include <string>

// The printer's identity as the system's spooler reports it. Each test adds a printer at its start
// and removes it at its end.
namespace {

std::wstring printerName = L"Beamline K7400 test";
std::wstring driverName = L"QV Beamline K7400";

// Registers the driver where the spooler looks for it. The spooler's own function for this would
// need the files of a driver.
void registerDriver() {
    const std::wstring path =
        L"System\\CurrentControlSet\\Control\\Print\\Environments\\Windows "
        L"x64\\Drivers\\Version-3\\" +
        driverName;
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                nullptr, &key, nullptr),
              0);
    ::RegCloseKey(key);
}

class RealSpoolerTest : public testing::Test {
protected:
    void SetUp() override {
        cleanPlatform();
        PRINTER_INFO_2W info{};
        registerDriver();
        std::wstring port = L"FILE:", processor = L"WinPrint", data = L"RAW";
        info.pPrinterName = printerName.data();
        info.pPortName = port.data();
        info.pDriverName = driverName.data();
        info.pPrintProcessor = processor.data();
        info.pDatatype = data.data();
        _printer = ::AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info));
        ASSERT_NE(_printer, nullptr) << ::GetLastError();
    }
    void TearDown() override {
        ::DeletePrinter(_printer);
        ::ClosePrinter(_printer);
        cleanPlatform();
    }

    void setData(const wchar_t* name, DWORD value) {
        std::wstring changeable = name;
        ASSERT_EQ(::SetPrinterDataW(_printer, changeable.data(), REG_DWORD,
                                    reinterpret_cast<BYTE*>(&value), sizeof value),
                  0U);
    }

    HANDLE _printer = nullptr;
};

TEST_F(RealSpoolerTest, OnlyAStatusOfZeroSilencesThePrinter) {
    EXPECT_TRUE(printerWantsStatus(printerName));

    setData(L"Status", 1);
    EXPECT_TRUE(printerWantsStatus(printerName));

    setData(L"Status", 0);
    EXPECT_FALSE(printerWantsStatus(printerName));
}

TEST_F(RealSpoolerTest, AnUnknownPrinterWantsStatus) {
    EXPECT_TRUE(printerWantsStatus(L"nobody's printer"));
    EXPECT_TRUE(printerWantsStatus(L""));
}

TEST_F(RealSpoolerTest, APrinterThatWasNeverConfiguredShowsEverything) {
    const AlertClasses classes = readAlertClasses(printerName).value();

    EXPECT_TRUE(classes.errors && classes.information && classes.warnings);
}

TEST_F(RealSpoolerTest, TheMaskIsReadFromThePrintersData) {
    for (DWORD mask = 0; mask < 8; ++mask) {
        setData(L"AlertMask", mask);

        const AlertClasses classes = readAlertClasses(printerName).value();

        EXPECT_EQ(classes.errors, (mask & 1) != 0) << mask;
        EXPECT_EQ(classes.information, (mask & 2) != 0) << mask;
        EXPECT_EQ(classes.warnings, (mask & 4) != 0) << mask;
    }
}

TEST_F(RealSpoolerTest, AnUnknownPrinterIsNotSupportedAndTraced) {
    const TraceLines trace;
    std::wstring name = L"nobody's printer";

    EXPECT_FALSE(isSupportedPrinter(name));

    EXPECT_TRUE(trace.contains("Error happen, this printer can not be openned!!!"));
}

TEST_F(RealSpoolerTest, TheNameIsRememberedWithoutTerminatorAndRecalled) {
    std::wstring name = printerName;
    isSupportedPrinter(name);
    DWORD bytes = 0;
    EXPECT_EQ(::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Corvane\\QVBL7400 SM", L"CurrPrinter",
                             RRF_RT_REG_SZ, nullptr, nullptr, &bytes),
              0);

    std::wstring empty;
    isSupportedPrinter(empty);

    EXPECT_EQ(empty, printerName);
}

TEST_F(RealSpoolerTest, ACompanionThatIsNotInstalledIsTraced) {
    const TraceLines trace;

    EXPECT_FALSE(startCompanion());

    EXPECT_TRUE(trace.contains("Query registry key error, 2"));
}

}  // namespace
