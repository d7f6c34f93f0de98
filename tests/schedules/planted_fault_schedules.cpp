// Faults planted on purpose: the exploration must find, print and replay them.
#include "platform/lock.h"
#include "tests/schedules/scene_parts.h"

#include <gtest/gtest.h>

namespace {

using exploring::everySchedule;
using exploring::require;
using platform::KernelMutex;
using platform::kNoTimeout;
using scene::OutsideThread;

constexpr int kFound = 3;  // exit code of a failed schedule

void lockBoth(KernelMutex& first, KernelMutex& second) {
    first.lock(kNoTimeout);
    second.lock(kNoTimeout);
    second.unlock();
    first.unlock();
}

void twoLocksInTwoOrders() {
    KernelMutex a;
    KernelMutex b;
    const OutsideThread other([&] { lockBoth(b, a); });
    lockBoth(a, b);
}

// The lock is released between reading and writing. If another thread counts in between, its count
// is lost.
void lostUpdate() {
    KernelMutex lock;
    int counter = 0;
    const auto countOne = [&] {
        lock.lock(kNoTimeout);
        const int seen = counter;
        lock.unlock();
        lock.lock(kNoTimeout);
        counter = seen + 1;
        lock.unlock();
    };
    {
        const OutsideThread other(countOne);
        countOne();
    }
    require(counter == 2, "both counts arrive");
}

void waitsForEver() {
    while (true)
        platform::sleepFor(1);
}

void destroysALockInUse() {
    auto lock = std::make_unique<KernelMutex>();
    const OutsideThread other([&] {
        lock->lock(kNoTimeout);
        platform::sleepFor(1);
        lock->unlock();
    });
    platform::sleepFor(1);
    lock.reset();
}

TEST(SchedulePlantedFaultDeathTest, TwoLocksInTwoOrdersAreADeadlock) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(everySchedule("planted fault", 1, twoLocksInTwoOrders),
                testing::ExitedWithCode(kFound), "deadlock; thread 1 waits for .*Replay");
}

TEST(SchedulePlantedFaultDeathTest, LostUpdateIsFound) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(everySchedule("planted fault", 1, lostUpdate), testing::ExitedWithCode(kFound),
                "not met: both counts arrive");
}

TEST(SchedulePlantedFaultDeathTest, LostUpdateNeedsAPreemption) {
    EXPECT_GE(everySchedule("planted fault", 0, lostUpdate), 1);
}

TEST(SchedulePlantedFaultDeathTest, SceneWithoutAnEndIsFound) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(everySchedule("planted fault", 1, waitsForEver), testing::ExitedWithCode(kFound),
                "the scene does not end");
}

TEST(SchedulePlantedFaultDeathTest, LockDestroyedInUseIsFound) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(everySchedule("planted fault", 1, destroysALockInUse),
                testing::ExitedWithCode(kFound), "a lock is destroyed while a thread");
}

TEST(SchedulePlantedFaultDeathTest, FailingScheduleReplaysExactly) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto replayed = [] {
        exploring::options().isReplay = true;
        exploring::options().replay = "0,0,0,1";
        everySchedule("planted fault", 0, lostUpdate);
        std::_Exit(0);
    };
    EXPECT_EXIT(replayed(), testing::ExitedWithCode(kFound), "both counts arrive");
}

TEST(SchedulePlantedFaultDeathTest, RandomSchedulesFindTheDeadlock) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto atRandom = [] {
        exploring::options().seeds = 1000;
        everySchedule("planted fault", 0, twoLocksInTwoOrders);
        std::_Exit(0);
    };
    EXPECT_EXIT(atRandom(), testing::ExitedWithCode(kFound), "deadlock");
}

}  // namespace
