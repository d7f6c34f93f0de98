// The steps of printpath.exe for windows and files, played with monitor_double.exe.
#include "tests/tools/printpath_fixture.h"
#include "tools/printpath/windows/spooler_printer.h"

namespace {

using namespace printpath_test;

constexpr char kRun[] = "start\nhang-up\nexpect-exit 0\n";
constexpr wchar_t kCompanionKey[] = L"SOFTWARE\\Corvane\\Orrery";
constexpr wchar_t kValue[] = L"ApplicationPath";

void setMachineText(const wchar_t* key, const std::wstring& text) {
    EXPECT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, kValue, REG_SZ, text.c_str(),
                                static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

// Empty when there is no such text.
std::wstring machineText(const wchar_t* key) {
    wchar_t text[64] = {};
    DWORD bytes = sizeof text;
    ::RegGetValueW(HKEY_LOCAL_MACHINE, key, kValue, RRF_RT_REG_SZ, nullptr, text, &bytes);
    return text;
}

bool machineKeyExists(const wchar_t* key) {
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return false;
    ::RegCloseKey(opened);
    return true;
}

TEST_F(PrintpathTest, ACleanRunKeepsTheSettingsOfTheMachine) {
    setMachineText(kCompanionKey, L"C:\\orrery.exe");

    EXPECT_EQ(play(kRun, L"--clean"), kAsExpected) << output;

    EXPECT_EQ(machineText(kCompanionKey), L"C:\\orrery.exe");
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kCompanionKey);
}

TEST_F(PrintpathTest, TheRegistryIsAsItWasWhenAScenarioHasEnded) {
    setMachineText(kCompanionKey, L"before");

    EXPECT_EQ(play("registry-text machine SOFTWARE\\Corvane\\Orrery ApplicationPath first\n"
                   "registry-number machine SOFTWARE\\Corvane\\Orrery ApplicationPath 7\n"
                   "registry-text machine SOFTWARE\\Corvane\\New\\Deep ApplicationPath x\n" +
                   std::string(kRun)),
              kAsExpected)
        << output;

    EXPECT_EQ(machineText(kCompanionKey), L"before");
    EXPECT_FALSE(machineKeyExists(L"SOFTWARE\\Corvane\\New"));
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kCompanionKey);
}

TEST_F(PrintpathTest, APrinterThatWasThereBeforeIsNotTouched) {
    const printpath::SpoolerPrinter printer(L"Reception");

    EXPECT_EQ(play("spooler-printer Reception alert-mask=5\n" + std::string(kRun)), kUnusable)
        << output;

    EXPECT_TRUE(printed("has a printer \"Reception\" already")) << output;
    EXPECT_NO_THROW(printpath::setPrinterValue(L"Reception", L"AlertMask", 7));
}

TEST_F(PrintpathTest, WhatChangesTheSystemIsRefusedWhereThatIsNotAllowed) {
    const fs::path target = folder() / "kept.txt";
    std::ofstream(target) << "as before";
    std::ofstream(folder() / "sample.htm") << "stockline";
    const std::string file = "\"" + doubled(target.string()) + "\"";
    setMachineText(kCompanionKey, L"before");

    for (const std::string& step : std::vector<std::string>{
             "forget-cartridges", "known-cartridge 7", "current-cartridge 7", "cartridge-version 4",
             "registry-text machine SOFTWARE\\Corvane\\Orrery ApplicationPath x",
             "registry-number machine SOFTWARE\\Corvane\\Orrery ApplicationPath 7",
             "spooler-printer \"Beamline Test\"", "spooler-value \"Beamline Test\" AlertMask 2",
             "printer-driver Driver", "record-links", "install-file sample.htm " + file,
             "protect-file " + file, "remove-file " + file}) {
        EXPECT_EQ(play("say first\n" + step + "\n" + kRun, L"--system-changes refuse"), kUnusable)
            << step << output;
        EXPECT_TRUE(
            printed("scenario.txt:2: " + step.substr(0, step.find(' ')) + " changes this system"))
            << output;
        EXPECT_FALSE(printed("process")) << output;
    }

    EXPECT_EQ(contents(target), "as before");
    EXPECT_EQ(machineText(kCompanionKey), L"before");
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kCompanionKey);
}

TEST_F(PrintpathTest, ACleanRunIsRefusedWhereTheSystemMayNotChange) {
    ASSERT_EQ(play("known-cartridge 77\n" + std::string(kRun)), kAsExpected) << output;

    EXPECT_EQ(play(kRun, L"--clean --system-changes refuse"), kUnusable) << output;

    EXPECT_TRUE(printed("--clean changes this system")) << output;
    EXPECT_EQ(play("expect-cartridge 77\n" + std::string(kRun)), kAsExpected) << output;
}

TEST_F(PrintpathTest, AScenarioThatChangesNothingIsPlayedWhereTheSystemMayNotChange) {
    EXPECT_EQ(play(kRun, L"--system-changes refuse"), kAsExpected) << output;
    EXPECT_EQ(play(kRun, L"--system-changes sometimes"), kUnusable) << output;
}

TEST_F(PrintpathTest, AProtectedFileIsNotWrittenByOthersUntilItIsRemoved) {
    const fs::path target = folder() / "protected.txt";
    std::ofstream(target) << "as before";
    const std::string path = doubled(target.string());
    std::ofstream(folder() / "sample.htm") << "stockline";

    EXPECT_EQ(play("protect-file \"" + path + "\"\nremove-file \"" + path +
                   "\"\ninstall-file sample.htm \"" + path + "\"\nexpect-file-with \"" + path +
                   "\" stockline\nstart\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_EQ(play("protect-file \"" + path + "x\"\nstart\nhang-up\nexpect-exit 0\n"), kUnusable)
        << output;
}

TEST_F(PrintpathTest, ADialogIsKnownByAControl) {
    EXPECT_EQ(play("start\nstatus 41100\nwait-dialog \"\" with=snooze\npress ok\nhang-up\n"
                   "expect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_EQ(play("start\nstatus 41100\nwait-dialog \"\" with=check-submit within=1\nhang-up\n"
                   "expect-exit 0\n"),
              kNotAsExpected);
    EXPECT_TRUE(printed("and has the control check-submit")) << output;
}

TEST_F(PrintpathTest, AMessageBoxHasItsOwnPicture) {
    EXPECT_EQ(play("start\nstatus 41100\nwait-dialog \"out of paper\"\n"
                   "press help\nexpect-message \"Load paper\"\nscreenshot box area=message\n"
                   "dismiss-message\npress ok\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_GT(fs::file_size(folder() / "box.bmp"), 1000U);
    EXPECT_EQ(play("start\nstatus 41100\nwait-dialog \"out of paper\"\n"
                   "screenshot box area=message\nhang-up\nexpect-exit 0\n"),
              kNotAsExpected)
        << output;
}

TEST_F(PrintpathTest, TheTraceFileOfTheUserIsKept) {
    const fs::path file = folder() / "mine.txt";
    std::ofstream(file) << "an older line\n";
    ::SetEnvironmentVariableW(L"QVSM_TRACE", file.c_str());

    const int olderLines = play("expect-no-trace older\nstart\nhang-up\nexpect-exit 0\n");
    const int newLines = play("start\nexpect-trace \"the double runs\"\nhang-up\nexpect-exit 0\n");
    ::SetEnvironmentVariableW(L"QVSM_TRACE", nullptr);

    EXPECT_EQ(olderLines, kAsExpected) << output;
    EXPECT_EQ(newLines, kAsExpected) << output;
    EXPECT_NE(contents(file).find("the double runs"), std::string::npos);
}

TEST_F(PrintpathTest, RepeatedStepsArePlayedSoOftenAndShownOnce) {
    EXPECT_EQ(play("start\nrepeat 40\nrepeat 2\nstatus 1\nend\nstatus 41100,1..39\nend\n"
                   "wait-alerts 1\nclose-alerts\nwait-no-dialog\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_EQ(output.find("> status 1\n"), output.rfind("> status 1\n")) << output;
}

TEST_F(PrintpathTest, AStepThatFailsInALaterRoundIsNamed) {
    EXPECT_EQ(play("start\nrepeat 2\nstatus 41100,1\nwait-dialog paper within=5\npress ok\n"
                   "wait-no-dialog\nend\nexpect-exit 0\n"),
              kNotAsExpected);
    EXPECT_TRUE(printed("scenario.txt:4: wait-dialog: waited 5000 ms")) << output;
}

TEST_F(PrintpathTest, TheAlertToKeepStaysWhenTheOthersAreClosed) {
    EXPECT_EQ(
        play("start\nstatus 41100\nwait-dialog paper\nstatus 41100\nwait-alerts 2\n"
             "close-alerts keep=dialog choose=1-hour\nwait-alerts 1\npress ok\nwait-no-dialog\n"
             "hang-up\nexpect-exit 0\n"),
        kAsExpected)
        << output;
}

TEST_F(PrintpathTest, AMonitorThatKeepsNothingIsFlat) {
    EXPECT_EQ(play("start\nrepeat 6\nstatus 1\nread-gauges\nend\nexpect-flat\nhang-up\n"
                   "expect-exit 0\n"),
              kAsExpected)
        << output;
}

TEST_F(PrintpathTest, AHandleLostInEachRoundIsNotFlat) {
    EXPECT_EQ(play("start\nrepeat 6\nstatus 900007\nread-gauges\nend\nexpect-flat\n"
                   "expect-exit 0\n"),
              kNotAsExpected);
    EXPECT_TRUE(printed("expect-flat: not flat: handles ")) << output;
}

}  // namespace
