#include "tools/gauges/gauges.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace {

constexpr int kRounds = 10;

void loadAndLetGo() {
    const HMODULE library = ::LoadLibraryW(SIMULATED_DEVICE);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(::FreeLibrary(library), FALSE);
}

// The monitor loads the library of the device for every question.
TEST(SimulatedDeviceTest, LeavesNoMemoryBehindWhenItIsLetGo) {
    // The system's loader keeps blocks of its own from the first rounds.
    for (int round = 0; round < kRounds; ++round)
        loadAndLetGo();
    static_cast<void>(readGauges());
    const Gauges before = readGauges();

    for (int round = 0; round < kRounds; ++round)
        loadAndLetGo();

    EXPECT_STREQ(GaugeText(before, readGauges()).text(), "");
}

}  // namespace
