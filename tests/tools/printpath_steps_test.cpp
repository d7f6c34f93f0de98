// Steps of printpath.exe for windows and files, against the double of the monitor.
#include "tests/tools/printpath_fixture.h"

namespace {

using namespace printpath_test;

TEST_F(PrintpathTest, AProtectedFileIsNotWrittenByOthersUntilItIsRemoved) {
    const fs::path target = folder() / "protected.txt";
    std::ofstream(target) << "as before";
    std::string path = target.string();
    for (std::size_t at = 0; (at = path.find('\\', at)) != std::string::npos; at += 2)
        path.insert(at, "\\");
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

}  // namespace
