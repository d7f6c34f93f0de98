#include "app/monitor_process.h"

#include "platform/clock.h"
#include "platform/simulated/world.h"
#include "tern/channel_settings.h"
#include "tern/velo_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr wchar_t kPipe[] = L"jobs";
constexpr char kCommandLine[] = "inputPipe=jobs printerid=7";

class MonitorProcessTest : public testing::Test {
protected:
    MonitorProcessTest() {
        world().reset();
        world().diagnostics.keepTrace();
        tern::channelSettings() = {};
    }

    ~MonitorProcessTest() override { world().reset(); }

    static platform::simulated::World& world() { return platform::simulated::world(); }

    static void record(std::uint32_t recordClass, std::uint32_t subcode, const std::string& body,
                       std::uint32_t printer = 7) {
        const tern::VeloHeaderBytes header =
            tern::encodedHeader({tern::kVeloMagic, recordClass, subcode, printer,
                                 static_cast<std::uint32_t>(body.size())});
        world().pipes.feed(kPipe, std::string(header.begin(), header.end()) + body);
    }

    static void endOfDocument() { record(0, tern::kDocumentEnd, std::string(4, '\0')); }

    // The trace lines that only the start and the shutdown write, in their order.
    static std::vector<std::string> lifeTraced() {
        std::vector<std::string> lines = world().diagnostics.traceLines();
        const auto isOther = [](const std::string& line) {
            return line.rfind("TERNA - ", 0) != 0 && line.find("Strings.dll") == std::string::npos;
        };
        lines.erase(std::remove_if(lines.begin(), lines.end(), isOther), lines.end());
        return lines;
    }

    static bool wasTraced(const std::string& line) { return world().diagnostics.hasTraced(line); }
};

TEST_F(MonitorProcessTest, StartsAndStopsInOrder) {
    world().texts.addModule(L"QVK7400SMs.dll");
    endOfDocument();

    const std::uint32_t exitCode = runMonitor(nullptr, kCommandLine);

    const std::vector<std::string> expected = {
        "TERNA - VSM4000 inputPipe=jobs printerid=7", "succeed to open Strings.dll",
        "TERNA - create new VeloEventGenerator",      "TERNA - run ...",
        "TERNA - TERN_DeleteInstanceManager",
    };
    EXPECT_EQ(lifeTraced(), expected);
    EXPECT_EQ(exitCode, 0U);
}

TEST_F(MonitorProcessTest, GoesOnWithoutItsStringsLibrary) {
    endOfDocument();

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);

    EXPECT_TRUE(wasTraced("Unable to open Strings.dll"));
    EXPECT_TRUE(wasTraced("TERNA - run ..."));
}

TEST_F(MonitorProcessTest, ANullCommandLineIsTracedAsAnEmptyOneAndNamesNoPipe) {
    EXPECT_EQ(runMonitor(nullptr, nullptr), 0U);

    EXPECT_TRUE(wasTraced("TERNA - VSM4000 "));
    EXPECT_TRUE(wasTraced("TERNA - run ..."));
}

TEST_F(MonitorProcessTest, EndsWhenThePipeIsNotThere) {
    EXPECT_EQ(runMonitor(nullptr, "inputPipe=nobody printerid=7"), 0U);

    EXPECT_TRUE(wasTraced("TERNA - TERN_DeleteInstanceManager"));
}

TEST_F(MonitorProcessTest, EndsWhenThePrintPathHangsUp) {
    record(2, tern::kDeviceStatus, std::string(4, '\0'));
    world().pipes.close(kPipe);

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);
}

TEST_F(MonitorProcessTest, EndsAtTheFirstHeaderThatIsNone) {
    world().pipes.feed(kPipe, std::string(20, 'x'));

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);
}

TEST_F(MonitorProcessTest, DropsTheRecordsOfOtherPrinters) {
    record(0, tern::kDocumentEnd, std::string(4, '\0'), 8);
    record(2, tern::kDeviceStatus, std::string("\xBE\xA0\0\0", 4), 8);
    endOfDocument();

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);

    EXPECT_FALSE(wasTraced("TERNA findAlertDialogType 0"));
}

TEST_F(MonitorProcessTest, ShowsTheAlertOfAStatusAndClosesItWithTheDocument) {
    record(2, tern::kDeviceStatus, std::string("\xBE\xA0\0\0", 4));  // 41150
    endOfDocument();

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);

    EXPECT_TRUE(wasTraced("TERNA findAlertDialogType 0"));
    EXPECT_TRUE(wasTraced("TERNA remove Dialog 0"));
    EXPECT_TRUE(wasTraced("TERNA Dialogs left 0"));
}

TEST_F(MonitorProcessTest, TheFirstRecordDoesNotWaitForTheSleepOfTheLoop) {
    constexpr std::uint64_t kSleepMs = 100;
    std::uint64_t shortest = kSleepMs;
    for (int attempt = 0; attempt < 5; ++attempt) {
        world().reset();
        endOfDocument();
        const std::uint64_t start = platform::uptimeMs();
        runMonitor(nullptr, kCommandLine);
        shortest = std::min(shortest, platform::uptimeMs() - start);
    }

    EXPECT_LT(shortest, kSleepMs);
}

TEST_F(MonitorProcessTest, LeavesNeitherThreadsNorMutexesBehindThatItOwns) {
    const int mutexes = world().openMutexes;
    endOfDocument();

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);

    EXPECT_EQ(world().openMutexes, mutexes);
    EXPECT_EQ(world().openThreads, 0);
}

TEST_F(MonitorProcessTest, DoesNotWaitForAReaderThatHangs) {
    endOfDocument();  // after this record the pipe stays open, and the reader waits

    EXPECT_EQ(runMonitor(nullptr, kCommandLine), 0U);

    world().pipes.close(kPipe);  // the read returns, after its generator was destroyed
}

}  // namespace
