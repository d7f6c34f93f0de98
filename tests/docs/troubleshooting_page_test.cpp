// The lines of the trace that docs/troubleshooting.md shows are those that the monitor writes.
#include "tests/tools/printpath_fixture.h"

#include <algorithm>
#include <regex>
#include <sstream>
#include <vector>

namespace {

using namespace printpath_test;
using Lines = std::vector<std::string>;

// The text of each line, without what differs between two runs: the date, the time and the thread
// before it, addresses, and the name of the pipe.
Lines texts(const std::string& trace) {
    static const std::regex stamp(
        "^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\d+ (.*?)\\r?$");
    static const std::regex address("0x[0-9a-f]+");
    static const std::regex pipe("inputPipe=\\S+");
    Lines found;
    std::istringstream in(trace);
    std::smatch parts;
    for (std::string line; std::getline(in, line);)
        if (std::regex_match(line, parts, stamp))
            found.push_back(std::regex_replace(std::regex_replace(parts.str(1), address, "0x"),
                                               pipe, "inputPipe="));
    return found;
}

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

class TroubleshootingPage : public PrintpathTest {
protected:
    // The lines that the page shows in the first block after these words.
    static Lines shownAfter(const std::string& words) {
        const std::string page = contents(windowsPath(BEAMLINE_SOURCES "/docs/troubleshooting.md"));
        const std::size_t begin = page.find("```\n", page.find(words));
        EXPECT_NE(page.find(words), std::string::npos);
        return texts(page.substr(begin, page.find("```", begin + 3) - begin));
    }

    // The lines that the monitor writes while it plays these steps.
    Lines written(const std::string& steps) {
        const fs::path file = folder() / "trace.txt";
        ::SetEnvironmentVariableW(L"QVSM_TRACE", file.c_str());
        EXPECT_EQ(play(steps, L"--clean"), kAsExpected) << output;
        return texts(contents(file));
    }

    static void expectWithin(const Lines& trace, const Lines& shown) {
        ASSERT_FALSE(shown.empty());
        EXPECT_NE(std::search(trace.begin(), trace.end(), shown.begin(), shown.end()), trace.end())
            << "shown:\n"
            << joined(shown) << "written:\n"
            << joined(trace);
    }
};

TEST_F(TroubleshootingPage, ShowsEveryLineOfAGoodJob) {
    const Lines trace = written(
        "known-cartridge 740021\n"
        "current-cartridge 740021\n"
        "spooler-printer \"Beamline K7400\"\n"
        "device\n"
        "start\n"
        "printer \"Beamline K7400\" USB001\n"
        "document-start 7 \"Annual report.pdf\"\n"
        "status 41100\n"
        "wait-dialog \"The printer is out of paper.\"\n"
        "document-end 7\n"
        "expect-exit 0\n");

    EXPECT_EQ(joined(shownAfter("## How a good job looks")), joined(trace));
}

TEST_F(TroubleshootingPage, ShowsHowSwitchedOffAlertsLook) {
    const Lines trace = written(
        "known-cartridge 740021\n"
        "current-cartridge 740021\n"
        "spooler-printer \"Silent\" alert-mask=0\n"
        "device\n"
        "start\n"
        "printer \"Silent\" USB001\n"
        "status 41100\n"
        "settle\n"
        "document-end 7\n"
        "expect-exit 0\n");

    expectWithin(trace, shownAfter("Alerts switched off for the printer look like this"));
}

TEST_F(TroubleshootingPage, ShowsHowAReminderThatWasPutOffLooks) {
    const Lines trace = written(
        "known-cartridge 740021 snooze-low=5\n"
        "current-cartridge 740021\n"
        "start\n"
        "printer \"Beamline K7400\" USB001\n"
        "status 10209\n"
        "settle\n"
        "document-end 7\n"
        "expect-exit 0\n");

    expectWithin(trace, shownAfter("a reminder that was put off like this"));
}

TEST_F(TroubleshootingPage, ShowsHowAMissingOrderingPageLooks) {
    const Lines trace = written(
        "current-cartridge 740021\n"
        "known-cartridge 740021\n"
        "device\n"
        "start\n"
        "printer \"Beamline K7400\" USB001\n"
        "status 10209\n"
        "wait-dialog \"The toner is low.\"\n"
        "press shop\n"
        "expect-trace \"not copy template\"\n"
        "document-end 7\n"
        "close-dialog\n"
        "expect-exit 0\n");

    expectWithin(trace, shownAfter("a machine without the files of the ordering page like this"));
}

}  // namespace
