#include "tools/printpath/scenario_parser.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace printpath {
namespace {

Scenario parsed(const std::string& text) {
    auto result = parseScenario(text);
    if (const auto* error = std::get_if<ScenarioError>(&result)) {
        ADD_FAILURE() << error->line << ": " << error->message;
        return {};
    }
    return std::get<Scenario>(result);
}

ScenarioError errorOf(const std::string& text) {
    auto result = parseScenario(text);
    if (const auto* error = std::get_if<ScenarioError>(&result)) return *error;
    ADD_FAILURE() << "this was taken for a scenario: " << text;
    return {};
}

// One step between start and end.
std::string running(const std::string& line) {
    return "start\n" + line + "\nexpect-exit 0\n";
}

bool says(const ScenarioError& error, const std::string& text) {
    return error.message.find(text) != std::string::npos;
}

TEST(ScenarioParser, StepsKeepTheirOrderLinesAndValues) {
    const Scenario scenario = parsed(
        "# comment\r\nabout \"Paper out\"\n\nstart\n  status 41100 id=9 # now\nexpect-exit 0");

    EXPECT_EQ(scenario.about, "Paper out");
    ASSERT_EQ(scenario.steps.size(), 4U);
    const Step& status = scenario.steps[2];
    EXPECT_EQ(status.line, 5);
    EXPECT_EQ(status.keyword->name, "status");
    EXPECT_EQ(status["status"].number, 41100);
    EXPECT_EQ(status["id"].number, 9);
    EXPECT_EQ(status.written, "status 41100 id=9 # now");
}

TEST(ScenarioParser, AnOptionThatIsNotWrittenIsNotGiven) {
    const Scenario scenario = parsed(running("status 1"));

    EXPECT_FALSE(scenario.steps[1]["id"].given);
}

TEST(ScenarioParser, AParameterThatTheKeywordLacksIsAnErrorOfTheProgram) {
    const Scenario scenario = parsed(running("status 1"));

    EXPECT_THROW(static_cast<void>(scenario.steps[1]["colour"]), std::logic_error);
}

TEST(ScenarioParser, AnUnknownKeywordIsNamed) {
    const ScenarioError error = errorOf("start\n\nshout loud\n");

    EXPECT_EQ(error.line, 3);
    EXPECT_TRUE(says(error, "\"shout\"")) << error.message;
}

TEST(ScenarioParser, AQuotedWordIsNoKeyword) {
    errorOf(running("\"status\" 1"));
}

TEST(ScenarioParser, NumbersAreStrict) {
    for (const char* wrong : {"", "1x", "x", "-1", "4294967296", "99999999999999999999", "1.0",
                              "+1", "0x", "0xG", "0x-1", "\" 1\""})
        errorOf(running(std::string("status ") + wrong));
    EXPECT_EQ(parsed(running("status 4294967295")).steps[1]["status"].number, 4294967295LL);
    EXPECT_EQ(parsed(running("status 0xA0")).steps[1]["status"].number, 160);
    EXPECT_EQ(
        parsed("known-cartridge 1 snooze-low=-3\n" + running("")).steps[0]["snooze-low"].number,
        -3);
}

TEST(ScenarioParser, ANumberOutsideItsRangeIsToldWithTheRange) {
    const ScenarioError error = errorOf(running("settle within=601"));

    EXPECT_TRUE(says(error, "a number from 1 to 600, not \"601\"")) << error.message;
    errorOf(running("settle within=0"));
}

TEST(ScenarioParser, HexBytesComeInPairs) {
    EXPECT_EQ(parsed(running("raw-hex \"56 45 4c4F\"")).steps[1]["bytes"].bytes, "VELO");
    for (const char* wrong : {"5", "\"5 6\"", "5g", "\"-1\"", "+1", "0x41"})
        errorOf(running(std::string("raw-hex ") + wrong));
}

TEST(ScenarioParser, ControlsHaveNamesOrNumbers) {
    EXPECT_EQ(parsed(running("press ok")).steps[1]["control"].number, 130);
    EXPECT_EQ(parsed(running("press 1018")).steps[1]["control"].number, 1018);
    errorOf(running("press okay"));
    errorOf(running("press 65536"));
}

TEST(ScenarioParser, AChoiceIsOneOfItsWords) {
    EXPECT_EQ(parsed(running("choose never")).steps[1]["snooze"].number, 8);
    EXPECT_TRUE(says(errorOf(running("choose sometimes")), "1-hour, 4-hours"));
    errorOf(running("choose \"\""));
}

TEST(ScenarioParser, FlagsAreWordsWithCommas) {
    const auto flags = [](const std::string& text) {
        return parsed("known-cartridge 1 flags=" + text + "\n" + running(""))
            .steps[0]["flags"]
            .number;
    };

    EXPECT_EQ(flags("none"), 0);
    EXPECT_EQ(flags("illegal,welcome"), 9);
    for (const char* wrong : {"", ",", "welcome,", "welcome,x", "none,welcome"})
        errorOf("known-cartridge 1 flags=" + std::string(wrong) + "\n" + running(""));
}

TEST(ScenarioParser, KeysAreKeys) {
    parsed(running("post-key alt+u"));
    EXPECT_TRUE(says(errorOf(running("post-key alt+")), "enter, esc"));
}

TEST(ScenarioParser, TooFewAndTooManyWordsAreToldWithTheUse) {
    EXPECT_TRUE(says(errorOf(running("document-start 1")),
                     "<name> is missing; expected: document-start <job> <name> [id=...]"));
    EXPECT_TRUE(says(errorOf(running("status 1 2")), "\"2\" is too much"));
    EXPECT_TRUE(says(errorOf(running("status 1 id=1 id=2")), "given twice"));
    EXPECT_TRUE(says(errorOf(running("status 1 colour=red")), "\"colour=\" is no option here"));
    EXPECT_TRUE(says(errorOf(running("status status=1")), "is no option here"));
}

TEST(ScenarioParser, TextMustBeUtf8) {
    EXPECT_EQ(errorOf("about \"x\"\nsay \"\x80\"\n").line, 2);
    errorOf("say \"\\xFF\"\n");
    errorOf(std::string("say \"a\0b\"\n", 10));
    EXPECT_EQ(parsed("\xEF\xBB\xBFsay Gr\xC3\xBC\xC3\x9F"
                     "e\n" +
                     running(""))
                  .steps[0]["text"]
                  .text,
              "Gr\xC3\xBC\xC3\x9F"
              "e");
}

TEST(ScenarioParser, FilesAndLinesHaveTheirLargestSize) {
    errorOf(std::string(kMostScenarioBytes + 1, '\n'));
    errorOf("say \"" + std::string(kMostLineBytes, 'x') + "\"\n");
}

TEST(ScenarioParser, RecordsNeedARunningMonitor) {
    EXPECT_EQ(errorOf("status 1\nstart\nexpect-exit 0\n").line, 1);
    EXPECT_EQ(errorOf("start\nexpect-exit 0\nstatus 1\n").line, 3);
}

TEST(ScenarioParser, NothingIsWrittenAfterHangingUp) {
    EXPECT_EQ(errorOf("start\nhang-up\nstatus 1\nexpect-exit 0\n").line, 3);
    EXPECT_EQ(errorOf("start\nhang-up\nhang-up\nexpect-exit 0\n").line, 3);
    EXPECT_EQ(errorOf("no-pipe\nstart\nstatus 1\nexpect-exit 0\n").line, 3);
}

TEST(ScenarioParser, AMonitorMayBeStartedAgainAfterItsEnd) {
    parsed("start\nhang-up\nexpect-exit 0\nstart\nstatus 1\nexpect-exit 0\n");
    EXPECT_EQ(errorOf("start\nstart\nexpect-exit 0\n").line, 2);
}

TEST(ScenarioParser, PreparationComesBeforeTheStart) {
    EXPECT_EQ(errorOf("start\nprinter-id 5\nexpect-exit 0\n").line, 2);
}

TEST(ScenarioParser, AScenarioStartsTheMonitorAndWaitsForItsEnd) {
    errorOf("");
    errorOf("say hello\n");
    EXPECT_TRUE(says(errorOf("start\nstatus 1\n"), "\"expect-exit\" is missing"));
}

TEST(ScenarioParser, RecordsThatBelongTogetherFollowEachOther) {
    parsed(running("together 2\nstatus 1\nraw-hex 00"));
    EXPECT_EQ(errorOf(running("together 2\nstatus 1\nsettle\nstatus 2")).line, 4);
    errorOf("start\ntogether 2\nstatus 1\n");
    errorOf(running("together 1\nstatus 1"));
}

std::vector<std::int64_t> numbersOf(Value value, int turns) {
    std::vector<std::int64_t> numbers;
    for (int turn = 0; turn < turns; ++turn) {
        value.takeTurn(turn);
        numbers.push_back(value.number);
    }
    return numbers;
}

TEST(ScenarioParser, ANumberCanBeAnotherOneInEachTurn) {
    using Numbers = std::vector<std::int64_t>;
    const auto turns = [](const std::string& text) {
        return numbersOf(parsed(running("status " + text)).steps[1]["status"], 5);
    };

    EXPECT_EQ(turns("7"), (Numbers{7, 7, 7, 7, 7}));
    EXPECT_EQ(turns("7,9"), (Numbers{7, 9, 7, 9, 7}));
    EXPECT_EQ(turns("1,5..7"), (Numbers{1, 5, 6, 7, 1}));
    for (const char* wrong :
         {"1,", ",1", "1..", "..1", "2..1", "1...3", "1..2..3", "1,x", "1..4294967296"})
        errorOf(running(std::string("status ") + wrong));
}

TEST(ScenarioParser, AChoiceCanBeAnotherOneInEachTurn) {
    const Scenario scenario = parsed(running("choose none,never,1-hour"));

    EXPECT_EQ(numbersOf(scenario.steps[1]["snooze"], 4), (std::vector<std::int64_t>{0, 8, 1, 0}));
    errorOf(running("choose none,"));
}

TEST(ScenarioParser, RepeatedStepsHaveABeginningAndAnEnd) {
    parsed("repeat 2\nrepeat 3\nstart\nhang-up\nexpect-exit 0\nend\nend\n");
    parsed(running("repeat 2\nstatus 1\nend"));
    EXPECT_EQ(errorOf(running("end")).line, 2);
    EXPECT_TRUE(says(errorOf(running("repeat 2\nstatus 1")), "\"repeat\" has no \"end\""));
    errorOf(running("repeat 0\nend"));
    errorOf(running("repeat 1,2\nend"));
    errorOf(running("together 2,3\nstatus 1\nstatus 1\nstatus 1"));
}

TEST(ScenarioParser, RepeatedStepsCanFollowThemselves) {
    const char* const expected = "must leave the monitor and its pipe as they found them";
    for (const char* wrong :
         {"repeat 2\nstart\nend\nexpect-exit 0\n", "start\nrepeat 2\nhang-up\nend\nexpect-exit 0\n",
          "repeat 2\nstart\nstatus 1\nexpect-exit 0\nno-pipe\nend\n"})
        EXPECT_TRUE(says(errorOf(wrong), expected)) << wrong;
}

std::string contents(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::filesystem::path sources() {
    return BEAMLINE_SOURCES;
}

// The row of the documentation's table for this keyword, from the keyword on; empty if there is
// no such row.
std::string documentedRow(const std::string& document, std::string_view keyword) {
    for (const char* after : {" ", "`"}) {
        const std::size_t at = document.find("`" + std::string(keyword) + after);
        if (at != std::string::npos) return document.substr(at, document.find('\n', at) - at);
    }
    return {};
}

// Values that are always needed are documented as NAME, the others as name=.
std::string documentedName(const Parameter& parameter) {
    std::string name(parameter.name);
    if (!parameter.required) return name + "=";
    for (char& c : name)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return name;
}

TEST(ScenarioKeywords, EveryKeywordAndParameterIsDocumented) {
    const std::string document = contents(sources() / "docs" / "scenarios.md");
    for (const Keyword& keyword : keywords()) {
        const std::string row = documentedRow(document, keyword.name);
        EXPECT_NE(row, "") << keyword.name;
        const bool marked = row.find("` †") != std::string::npos;
        EXPECT_EQ(marked, keyword.changesSystem) << keyword.name;
        for (const Parameter& parameter : keyword.parameters) {
            if (parameter.name == "id" && !parameter.required) continue;  // explained once for all
            EXPECT_NE(row.find(documentedName(parameter)), std::string::npos)
                << keyword.name << " " << parameter.name;
        }
    }
    for (const ControlName& control : controlNames())
        EXPECT_NE(document.find("`" + std::string(control.name) + "`"), std::string::npos)
            << control.name;
}

TEST(ScenarioKeywords, NoKeywordOrControlHasTwoMeanings) {
    std::set<std::string_view> names;
    for (const Keyword& keyword : keywords())
        EXPECT_TRUE(names.insert(keyword.name).second);
    for (const ControlName& control : controlNames())
        EXPECT_TRUE(names.insert(control.name).second || findKeyword(control.name) != nullptr)
            << control.name;
}

TEST(Scenarios, EveryScenarioOfTheProjectIsReadAndSaysWhatItIsAbout) {
    int count = 0;
    for (const char* folder : {"scenarios", "tests/soak"})
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(sources() / folder)) {
            if (entry.path().extension() != ".txt" || entry.path().stem() == "CMakeLists") continue;
            ++count;
            SCOPED_TRACE(entry.path().filename().string());
            EXPECT_NE(parsed(contents(entry.path())).about, "");
        }
    EXPECT_GE(count, 10);
}

}  // namespace
}  // namespace printpath
