#include "printer/companion.h"

#include "platform/simulated/world.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::Hive;
using platform::ValueType;
using platform::simulated::Call;
using platform::simulated::world;
using Lines = std::vector<std::string>;

constexpr wchar_t kCompanionKey[] = L"SOFTWARE\\Corvane\\Orrery\\";

class CompanionTest : public testing::Test {
protected:
    void SetUp() override { cleanPlatform(); }
    void TearDown() override {
        EXPECT_EQ(world().registry.openKeys(), 0);
        cleanPlatform();
    }

    TraceLines trace;
};

TEST_F(CompanionTest, TheCompanionIsStartedFromItsRegisteredPath) {
    world().registry.setText(Hive::LocalMachine, kCompanionKey, L"ApplicationPath",
                             L"C:\\Program Files\\Orrery\\orrery.exe");

    EXPECT_TRUE(startCompanion());

    EXPECT_EQ(world().desktop.programs(),
              std::vector<std::wstring>{L"C:\\Program Files\\Orrery\\orrery.exe"});
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(CompanionTest, ACompanionThatIsNotInstalledIsTraced) {
    EXPECT_FALSE(startCompanion());

    EXPECT_EQ(trace.all(), Lines{"Query registry key error, 2"});
}

TEST_F(CompanionTest, ACompanionWithoutAPathIsTraced) {
    world().registry.create(Hive::LocalMachine, kCompanionKey);

    EXPECT_FALSE(startCompanion());

    EXPECT_EQ(trace.all(), Lines{"Query registry value error, 2"});
}

TEST_F(CompanionTest, ACompanionPathThatIsTooLongOrNoTextIsTraced) {
    world().registry.set(Hive::LocalMachine, kCompanionKey, L"ApplicationPath", ValueType::String,
                         std::string(1026, 'A'));
    EXPECT_FALSE(startCompanion());
    world().registry.setDword(Hive::LocalMachine, kCompanionKey, L"ApplicationPath", 1);
    EXPECT_FALSE(startCompanion());

    EXPECT_EQ(trace.all(),
              (Lines{"Query registry value error, 234", "Query registry value error, 13"}));
    EXPECT_TRUE(world().desktop.programs().empty());
}

TEST_F(CompanionTest, ACompanionThatDoesNotStartIsTraced) {
    world().registry.setText(Hive::LocalMachine, kCompanionKey, L"ApplicationPath",
                             L"C:\\gone.exe");
    world().faults.add({Call::ProgramStart});

    EXPECT_FALSE(startCompanion());

    EXPECT_EQ(trace.all(), Lines{"Failed to launch OrreryMX."});
}

TEST_F(CompanionTest, AnEmptyCompanionPathNeverReachesTheShell) {
    world().registry.setText(Hive::LocalMachine, kCompanionKey, L"ApplicationPath", L"");

    EXPECT_FALSE(startCompanion());

    EXPECT_EQ(world().faults.calls(Call::ProgramStart), 0);
    EXPECT_EQ(trace.all(), Lines{"Failed to launch OrreryMX."});
}

}  // namespace
