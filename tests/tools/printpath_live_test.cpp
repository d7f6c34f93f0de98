// printpath live, with its input through a pipe and with monitor_double.exe.
#include "tests/tools/printpath_fixture.h"
#include "tools/printpath/live_session.h"
#include "tools/printpath/windows/timeline.h"

namespace {

using namespace printpath_test;
using printpath::Timeline;

constexpr DWORD kPipeBytes = 65536;

class LiveTest : public PrintpathTest {
protected:
    // Types these lines and the end of the input; `output` then has the answers.
    int type(const std::string& lines, const std::wstring& options = L"--timeout 5") {
        return typeTo(windowsPath(PLAYED_MONITOR), lines, options);
    }

    int typeTo(const fs::path& monitor, const std::string& lines, const std::wstring& options) {
        HANDLE reader = nullptr;
        HANDLE writer = nullptr;
        EXPECT_TRUE(::CreatePipe(&reader, &writer, nullptr, kPipeBytes));
        ::SetHandleInformation(reader, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
        DWORD written = 0;
        ::WriteFile(writer, lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
        ::CloseHandle(writer);
        const int code =
            run(L"--monitor \"" + monitor.wstring() + L"\" " + options + L" live", reader);
        ::CloseHandle(reader);
        return code;
    }
};

TEST_F(LiveTest, StepsArePlayedAsTheyAreTyped) {
    EXPECT_EQ(type("start\r\nstatus 41100\nwait-dialog \"out of paper\"\npress ok\nwait-no-dialog\n"
                   "document-end 7\nexpect-exit 0\nquit\nsay never\n"),
              kAsExpected);

    EXPECT_TRUE(printed("opened: dialog")) << output;
    EXPECT_TRUE(printed("ended with exit code 0")) << output;
    EXPECT_FALSE(printed("!!")) << output;
    EXPECT_FALSE(printed("never")) << output;
}

TEST_F(LiveTest, AnErrorIsToldAndTheNextStepIsPlayed) {
    EXPECT_EQ(type("stauts 41100\nstart\nwait-dialog never within=1\npress help\n"
                   "status 41100\nwait-dialog \"\"\nhang-up\nexpect-exit 5\nexpect-exit 0\n"
                   "say goodbye\n"),
              kAsExpected);

    EXPECT_TRUE(printed("!! a step must begin with a keyword, and \"stauts\" is none")) << output;
    EXPECT_TRUE(printed("!! live:2: wait-dialog: waited 1000 ms")) << output;
    EXPECT_TRUE(printed("the exit code is 0 (0x00000000), not 5")) << output;
    EXPECT_TRUE(printed("!! expect-exit: no monitor runs here")) << output;
    EXPECT_TRUE(printed("> say goodbye")) << output;
}

TEST_F(LiveTest, AMonitorThatCouldNotBeStartedIsTriedAgain) {
    EXPECT_EQ(typeTo(folder() / "none.exe", "start\nstart\n", L"--timeout 5"), kAsExpected);

    EXPECT_TRUE(printed("live:1: start: the monitor")) << output;
    EXPECT_TRUE(printed("live:2: start: the monitor")) << output;
}

TEST_F(LiveTest, AnEndThatNobodyExpectedIsToldAndAnotherMonitorMayBeStarted) {
    EXPECT_EQ(type("start\nstatus 900003\npause 1500\nexpect-exit 7\nstart\nhang-up\n"
                   "expect-exit 0\n"),
              kAsExpected);

    EXPECT_TRUE(printed("has ended, which nobody expected, with exit code 7")) << output;
    EXPECT_TRUE(printed("ended with exit code 0")) << output;
}

TEST_F(LiveTest, WhatWasTypedIsSavedAndPlaysAgain) {
    const fs::path file = folder() / "my story.txt";
    type("start\nstatus 41100\nwait-dialog nothing within=1\nwait-dialog \"out of paper\"\nsave " +
         file.string() + "\nsave " + file.string() + "\n");

    EXPECT_TRUE(printed("saved; printpath \"" + file.string() + "\" plays it")) << output;
    EXPECT_TRUE(printed("exists already")) << output;
    EXPECT_EQ(play(contents(file)), kAsExpected) << output << contents(file);
    EXPECT_TRUE(printed("> wait-dialog \"out of paper\"")) << output;
    EXPECT_FALSE(printed("nothing")) << output;
}

TEST_F(LiveTest, WhatCannotBeSavedIsTold) {
    type("save " + (folder() / "early.txt").string() + "\nstart\nsave " +
         (folder() / "bad?name.txt").string() + "\n");

    EXPECT_TRUE(printed("nothing is saved: the scenario never starts the monitor")) << output;
    EXPECT_TRUE(printed("bad?name.txt could not be written")) << output;
    EXPECT_FALSE(fs::exists(folder() / "early.txt"));
}

TEST_F(LiveTest, AStepThatChangesTheSystemIsRefusedAlone) {
    type("forget-cartridges\nsay \"still here\"\n", L"--system-changes refuse");

    EXPECT_TRUE(printed("forget-cartridges changes this system")) << output;
    EXPECT_TRUE(printed("> say \"still here\"")) << output;
    EXPECT_EQ(type("", L"--clean --system-changes refuse"), kUnusable);
}

TEST_F(LiveTest, QuestionsAreAnswered) {
    type("docu?\nstatus ?\nhelp\nhistory\n");

    EXPECT_TRUE(printed("document-start document-start-wide document-end\n")) << output;
    EXPECT_TRUE(printed("status <status> [id=...]\n")) << output;
    EXPECT_TRUE(printed("save FILE")) << output;
    EXPECT_TRUE(printed("no step has been played yet")) << output;
}

TEST_F(LiveTest, ARepeatedPartThatFailsLeavesTheNextStepsVisible) {
    type("start\nrepeat 2\nstatus 41100,900003\npause 500\nexpect-running\nend\nsay visible\n");

    EXPECT_TRUE(printed("> say visible")) << output;
}

TEST_F(LiveTest, TheExampleOfTheHelpIsPlayedAsItStands) {
    const std::string help = printpath::liveHelp();
    const std::size_t begin = help.find("\n  ");

    type(help.substr(begin, help.find("\n\n") - begin) + "\n");

    EXPECT_TRUE(printed("ended with exit code 0")) << output;
    EXPECT_FALSE(printed("!!")) << output;
}

TEST(Prompt, GivesItsLineToWhatIsToldAndMustBeShownAgain) {
    testing::internal::CaptureStdout();
    Timeline timeline;
    timeline.prompt();
    EXPECT_TRUE(timeline.isPrompting());

    timeline.plain("an alert has opened");
    timeline.plain("it is still open");

    EXPECT_FALSE(timeline.isPrompting());
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "> \ran alert has opened\nit is still open\n");
}

TEST_F(LiveTest, ALongWaitSaysThatItGoesOn) {
    type("pause 5400\n");

    EXPECT_TRUE(printed("waiting for the end of the pause, 5 of at most 5 seconds")) << output;
}

}  // namespace
