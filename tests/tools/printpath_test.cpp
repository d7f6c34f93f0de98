// Plays scenarios with printpath.exe and monitor_double.exe, which crashes or hangs on demand.
#include "tests/tools/printpath_fixture.h"

namespace {

using namespace printpath_test;

TEST_F(PrintpathTest, AStoryThatGoesWellEndsWithZero) {
    EXPECT_EQ(play("start\n"
                   "status 41100\n"
                   "wait-dialog \"out of paper\"\n"
                   "expect-alerts 1\n"
                   "expect-title \"Double - Printer alert\"\n"
                   "expect-text headline \"The printer is out of paper.\"\n"
                   "expect-text-with headline paper\n"
                   "expect-visible ok\n"
                   "expect-hidden detail\n"
                   "expect-position 100 100\n"
                   "screenshot alert\n"
                   "press ok\n"
                   "wait-no-dialog\n"
                   "document-end 1\n"
                   "expect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_TRUE(
        printed("opened: dialog \"Double - Printer alert\": \"The printer is out of paper.\""));
    EXPECT_TRUE(printed("closed: dialog"));
    EXPECT_GT(fs::file_size(folder() / "alert.bmp"), 10000U);
}

TEST_F(PrintpathTest, TheUserChoosesClicksTypesAndReadsMessages) {
    EXPECT_EQ(play("start\n"
                   "status 41100\n"
                   "wait-dialog \"out of paper\"\n"
                   "choose 1-week\n"
                   "expect-visible detail\n"
                   "click help\n"
                   "expect-message \"Load paper\" caption=Double\n"
                   "dismiss-message\n"
                   "expect-no-message\n"
                   "post-key x\n"
                   "wait-no-dialog\n"
                   "status 41100\n"
                   "wait-dialog \"out of paper\"\n"
                   "close-dialog\n"
                   "wait-alerts 0\n"
                   "hang-up\n"
                   "expect-exit 0\n"),
              kAsExpected)
        << output;
}

TEST_F(PrintpathTest, ACrashIsTold) {
    EXPECT_EQ(play("start\nstatus 900001\nexpect-exit 0\n", kPatient), kCrashed) << output;
    EXPECT_TRUE(printed("an access violation")) << output;
}

TEST_F(PrintpathTest, ACrashWhileADialogIsAwaitedIsTold) {
    EXPECT_EQ(play("start\nstatus 900001\nwait-dialog paper\nexpect-exit 0\n", kPatient), kCrashed)
        << output;
}

TEST_F(PrintpathTest, AMonitorThatDoesNotEndHasHung) {
    EXPECT_EQ(play("start\nstatus 900004\nhang-up\nexpect-exit 0\n"), kHung) << output;
    EXPECT_TRUE(printed("did not end in 5000 ms")) << output;
}

TEST_F(PrintpathTest, AMonitorThatStopsReadingHasHung) {
    EXPECT_EQ(play("start\nstatus 900002\npause 200\nstatus 1\nsettle\nexpect-exit 0\n"), kHung)
        << output;
    EXPECT_TRUE(printed("does not read its pipe")) << output;
}

TEST_F(PrintpathTest, AnotherExitCodeIsTold) {
    EXPECT_EQ(play("start\nstatus 900003\nexpect-exit 0\n"), kNotAsExpected) << output;
    EXPECT_TRUE(printed("the exit code is 7 (0x00000007), not 0")) << output;
}

TEST_F(PrintpathTest, AnExitCodeCanBeExpected) {
    EXPECT_EQ(play("start\nstatus 900003\nexpect-exit 7\n"), kAsExpected) << output;
}

TEST_F(PrintpathTest, AnEarlyEndIsTold) {
    EXPECT_EQ(play("start\nstatus 900003\nwait-dialog paper\nexpect-exit 0\n"), kNotAsExpected);
    EXPECT_TRUE(printed("the monitor has ended, which nobody expected")) << output;
}

TEST_F(PrintpathTest, ADialogThatNeverComesFailsWithWhatWasAwaitedAndWhatIsOpen) {
    EXPECT_EQ(play("start\nstatus 41100\nwait-dialog \"no such text\"\nexpect-exit 0\n"),
              kNotAsExpected);
    EXPECT_TRUE(
        printed("scenario.txt:3: wait-dialog: waited 5000 ms for a dialog that shows "
                "\"no such text\"; open: dialog \"Double - Printer alert\""))
        << output;
}

TEST_F(PrintpathTest, EveryExpectationFailsWhenItIsNotMet) {
    const std::string shown = "start\nstatus 41100\nwait-dialog \"out of paper\"\n";
    for (const char* wrong : {"expect-alerts 2",
                              "expect-alerts 0",
                              "expect-title Other",
                              "expect-text headline paper",
                              "expect-text-with headline toner",
                              "expect-visible detail",
                              "expect-hidden ok",
                              "expect-focus help within=1",
                              "expect-position 120 120",
                              "expect-message x within=1",
                              "dismiss-message",
                              "wait-no-dialog within=1",
                              "wait-alerts 2 within=1",
                              "press detail",
                              "press shop",
                              "press 999",
                              "choose never\nexpect-hidden detail",
                              "expect-trace nothing within=1",
                              "expect-current-cartridge 5 within=1",
                              "expect-cartridge 5 within=1",
                              "press help\nexpect-message \"Load paper\"\nexpect-no-message",
                              "expect-message other within=1"})
        EXPECT_EQ(play(shown + wrong + "\nexpect-exit 0\n"), kNotAsExpected) << wrong << output;
}

TEST_F(PrintpathTest, AWrongLineIsNamedAndNothingIsStarted) {
    EXPECT_EQ(play("start\nstatus 900001\nstatus seven\nexpect-exit 0\n"), kUnusable);
    EXPECT_TRUE(
        printed("scenario.txt:3: status: <status> must be a number from 0 to 4294967295, "
                "not \"seven\""))
        << output;
    EXPECT_FALSE(printed("process")) << output;
}

TEST_F(PrintpathTest, WrongOptionsAreNamed) {
    EXPECT_EQ(run(L"--sideways x.txt"), kUnusable);
    EXPECT_TRUE(printed("there is no option \"--sideways\"")) << output;
    EXPECT_EQ(run(L""), kUnusable);
    EXPECT_TRUE(printed("no scenario is given")) << output;
    EXPECT_EQ(run(L"--timeout 0 x.txt"), kUnusable);
    EXPECT_EQ(run(L"--monitor"), kUnusable);
    EXPECT_EQ(run(L"no-such-file.txt"), kUnusable);
    EXPECT_TRUE(printed("could not be read")) << output;
}

TEST_F(PrintpathTest, AMonitorThatCannotBeStartedIsNamed) {
    std::ofstream(folder() / "s.txt") << "start\nexpect-exit 0\n";
    EXPECT_EQ(run(L"--monitor Z:\\none.exe \"" + (folder() / "s.txt").wstring() + L"\""),
              kUnusable);
    EXPECT_TRUE(printed("none.exe could not be started")) << output;
}

TEST_F(PrintpathTest, RecordsArriveInEveryWayOfWriting) {
    for (const char* way : {"one-message", "header-and-body", "single-bytes", "chunks size=7"})
        for (const char* mode : {"message", "byte"})
            EXPECT_EQ(play(std::string("pipe-mode ") + mode + "\nstart\nwrite-as " + way +
                               "\nstatus 41100\nwait-dialog paper\ntogether 2\nstatus 1\n"
                               "document-end 1\nexpect-exit 0\n",
                           L""),
                      kAsExpected)
                << way << output;
}

TEST_F(PrintpathTest, CartridgesAreRememberedAndFound) {
    EXPECT_EQ(play("forget-cartridges\n"
                   "known-cartridge 7 snooze-low=336 snooze-out=-1 flags=welcome,memory\n"
                   "current-cartridge 7\n"
                   "expect-current-cartridge 7\n"
                   "expect-cartridge 7 snooze-low=336 snooze-very-low=0 snooze-out=0 "
                   "flags=memory,welcome\n"
                   "expect-no-cartridge 8\n"
                   "start\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    for (const char* wrong :
         {"expect-cartridge 7 snooze-low=335 within=1", "expect-cartridge 7 flags=none within=1",
          "expect-cartridge 7 snooze-very-low=1 within=1", "expect-no-cartridge 7"})
        EXPECT_EQ(play("known-cartridge 7 snooze-low=336 flags=welcome\n" + std::string(wrong) +
                       "\nstart\nhang-up\nexpect-exit 0\n"),
                  kNotAsExpected)
            << wrong << output;
}

TEST_F(PrintpathTest, ThePrinterOfTheSpoolerExistsWhileTheScenarioRuns) {
    EXPECT_EQ(play("spooler-printer \"Beamline Test\" alert-mask=5 status=1\n"
                   "spooler-value \"Beamline Test\" AlertMask 2\n"
                   "start\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_EQ(play("spooler-value \"Beamline Test\" AlertMask 2\n"
                   "start\nhang-up\nexpect-exit 0\n"),
              kUnusable)
        << output;
}

TEST_F(PrintpathTest, WhatTheMonitorOpensIsRecorded) {
    EXPECT_EQ(play("record-links\n"
                   "start\n"
                   "expect-nothing-opened\n"
                   "status 900005\n"
                   "expect-opened \"url https://www.corvane.example/go/recycle?a=1&b=%20x\"\n"
                   "hang-up\nexpect-exit 0\n",
                   L""),
              kAsExpected)
        << output;
    for (const char* wrong : {"expect-opened privacy within=1", "expect-nothing-opened"})
        EXPECT_EQ(play("record-links\nstart\nstatus 900005\nexpect-opened recycle\n" +
                       std::string(wrong) + "\nexpect-exit 0\n"),
                  kNotAsExpected)
            << wrong << output;
}

TEST_F(PrintpathTest, TheDeviceServesPagesAndNoticesButtons) {
    EXPECT_EQ(play("device\n"
                   "start\n"
                   "expect-no-button\n"
                   "expect-page-not-fetched /DevMgmt/ProductUsageDyn.xml\n"
                   "status 900006\n"
                   "expect-page-fetched /DevMgmt/ProductUsageDyn.xml\n"
                   "expect-button go\n"
                   "device-supplies pages=17\n"
                   "status 900006\n"
                   "expect-button cancel\n"
                   "hang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_FALSE(fs::exists(windowsPath(PLAYED_MONITOR).parent_path() / "rtqewsi.dll"));
}

TEST_F(PrintpathTest, ADeviceThatIsOfflineOrLacksThePageDoesNotAnswer) {
    for (const char* state : {"device-offline", "device-page-missing /DevMgmt/ProductUsageDyn.xml"})
        EXPECT_EQ(play("device\n" + std::string(state) +
                       "\nstart\nstatus 900006\nsettle\nexpect-no-button\n"
                       "expect-page-not-fetched /DevMgmt/ProductUsageDyn.xml\n"
                       "hang-up\nexpect-exit 0\n"),
                  kAsExpected)
            << state << output;
    EXPECT_EQ(play("device\ndevice-offline\ndevice-online\nstart\nstatus 900006\n"
                   "expect-button go\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
}

TEST_F(PrintpathTest, WhatTheDeviceDidNotSeeFails) {
    for (const char* wrong : {"expect-button cancel within=1", "expect-no-button",
                              "expect-page-fetched /dev/qvLoyalty.xml within=1",
                              "expect-page-not-fetched /DevMgmt/ProductUsageDyn.xml"})
        EXPECT_EQ(play("device\nstart\nstatus 900006\nexpect-button go\n" + std::string(wrong) +
                       "\nexpect-exit 0\n"),
                  kNotAsExpected)
            << wrong << output;
    EXPECT_EQ(play("start\nexpect-no-button\nexpect-exit 0\n"), kNotAsExpected) << output;
    EXPECT_EQ(play("device\ndevice-page-text ../x text\nstart\nexpect-exit 0\n"), kUnusable);
}

TEST_F(PrintpathTest, ASlowDeviceTakesItsTime) {
    EXPECT_EQ(play("device\ndevice-slow 700\nstart\nstatus 900006\n"
                   "expect-button go within=1\nexpect-exit 0\n"),
              kNotAsExpected)
        << output;
}

TEST_F(PrintpathTest, FilesAreInstalledAndRead) {
    std::ofstream(folder() / "sample.htm") << "stockline";
    const std::string target = "C:\\\\printpath-test\\\\sample.htm";

    EXPECT_EQ(play("install-file sample.htm \"" + target + "\"\nexpect-file-with \"" + target +
                   "\" stockline\nstart\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_EQ(
        play("expect-file-with \"" + target + "\" toner within=1\nstart\nhang-up\nexpect-exit 0\n"),
        kNotAsExpected)
        << output;
    fs::remove_all("C:\\printpath-test");
}

TEST_F(PrintpathTest, RegistryValuesAreWrittenAndCompared) {
    EXPECT_EQ(play("registry-text user Software\\Corvane\\Test Name \"two words\"\n"
                   "registry-number machine Software\\Corvane\\Test Number 5\n"
                   "expect-registry-text user Software\\Corvane\\Test Name \"two words\"\n"
                   "start\nhang-up\nexpect-exit 0\n"),
              kAsExpected)
        << output;
    EXPECT_EQ(play("expect-registry-text user Software\\Corvane\\Test Name one within=1\n"
                   "start\nhang-up\nexpect-exit 0\n"),
              kNotAsExpected)
        << output;
}

TEST_F(PrintpathTest, ACleanRunBeginsWithAnEmptyMemory) {
    ASSERT_EQ(play("known-cartridge 77\nstart\nhang-up\nexpect-exit 0\n"), kAsExpected);

    EXPECT_EQ(play("expect-no-cartridge 77\nstart\nhang-up\nexpect-exit 0\n", L"--clean"),
              kAsExpected)
        << output;
}

TEST_F(PrintpathTest, AScenarioForAnotherLanguageIsNotPlayed) {
    EXPECT_EQ(play("language xx_YY\nstart\nhang-up\nexpect-exit 0\n"), kUnusable);
    EXPECT_TRUE(printed("this scenario is for the language")) << output;
}

TEST_F(PrintpathTest, HelpAndKeywordsArePrinted) {
    EXPECT_EQ(run(L"--help"), kAsExpected);
    EXPECT_TRUE(printed("--timeout N")) << output;
    EXPECT_TRUE(printed("allow them under Wine, refuse them elsewhere")) << output;
    EXPECT_EQ(run(L"--keywords"), kAsExpected);
    EXPECT_TRUE(printed("wait-dialog\n")) << output;
}

}  // namespace
