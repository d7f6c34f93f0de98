// Runs every input of every corpus through its target, as it is compiled for this system. The
// results are compared with tests/fuzz/expected, which all systems share. So the test fails when
// the size of wchar_t or long, or a library function that meets unusual bytes, makes a difference.
//
//   replay_corpora                       the test
//   replay_corpora --write               replaces the expected results
//   replay_corpora TARGET FILE...        prints all results for the files
#include "tests/fuzz/replay/replayed_input.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

extern "C" {
int replayCartridgeRecord(const std::uint8_t* data, std::size_t size);
int replayCommandLine(const std::uint8_t* data, std::size_t size);
int replayConsumables(const std::uint8_t* data, std::size_t size);
int replayDeviceText(const std::uint8_t* data, std::size_t size);
int replayRecordStream(const std::uint8_t* data, std::size_t size);
int replayScenario(const std::uint8_t* data, std::size_t size);
int replayShopPage(const std::uint8_t* data, std::size_t size);
int replayTextFormat(const std::uint8_t* data, std::size_t size);
int replayValidationUrl(const std::uint8_t* data, std::size_t size);
}

namespace {

constexpr ReplayTarget kTargets[] = {
    {"cartridge_record", &replayCartridgeRecord},
    {"command_line", &replayCommandLine},
    {"consumables", &replayConsumables},
    {"device_text", &replayDeviceText},
    {"record_stream", &replayRecordStream},
    {"scenario", &replayScenario},
    {"shop_page", &replayShopPage},
    {"text_format", &replayTextFormat},
    {"validation_url", &replayValidationUrl},
};

const std::string kFolder = BEAMLINE_FUZZ_FOLDER;

std::string expectedFile(const ReplayTarget& target) {
    return kFolder + "/expected/" + target.name + ".txt";
}

std::vector<ReplayedInput> replayedCorpus(const ReplayTarget& target) {
    std::vector<std::string> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(kFolder + "/corpus/" + target.name))
        files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    std::vector<ReplayedInput> inputs;
    for (const std::string& file : files)
        inputs.emplace_back(target, file);
    return inputs;
}

std::vector<std::string> expectedLines(const ReplayTarget& target) {
    std::ifstream stream(expectedFile(target), std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

void writeExpected(const ReplayTarget& target) {
    std::ofstream stream(expectedFile(target), std::ios::binary);
    for (const ReplayedInput& input : replayedCorpus(target))
        stream << input.line() << '\n';
}

void printNotes(const ReplayTarget& target, const char* file) {
    const ReplayedInput input(target, file);
    std::printf("%s\n%s", input.line().c_str(), input.notes.c_str());
}

int runTool(const std::vector<std::string>& arguments) {
    for (const ReplayTarget& target : kTargets) {
        if (arguments.front() == "--write") writeExpected(target);
        if (arguments.front() != target.name) continue;
        for (std::size_t i = 1; i < arguments.size(); ++i)
            printNotes(target, arguments[i].c_str());
    }
    return 0;
}

class ReplayTest : public testing::TestWithParam<ReplayTarget> {};

TEST_P(ReplayTest, EveryInputComesToTheExpectedResult) {
    const auto inputs = replayedCorpus(GetParam());

    const auto expected = expectedLines(GetParam());

    ASSERT_FALSE(inputs.empty());
    ASSERT_EQ(inputs.size(), expected.size()) << "see replay_corpora --write";
    for (std::size_t i = 0; i < inputs.size(); ++i)
        EXPECT_EQ(inputs[i].line(), expected[i]) << inputs[i].notes;
}

INSTANTIATE_TEST_SUITE_P(Corpora, ReplayTest, testing::ValuesIn(kTargets),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace

int main(int argumentCount, char** arguments) try {
    testing::InitGoogleTest(&argumentCount, arguments);
    if (argumentCount > 1) return runTool({arguments + 1, arguments + argumentCount});
    return RUN_ALL_TESTS();
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
