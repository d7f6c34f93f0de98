#include "app/first_record.h"

#include "arbor/guid.h"
#include "platform/clock.h"
#include "platform/message_pump.h"
#include "platform/simulated/world.h"
#include "platform/thread.h"
#include "tern/event_broker.h"
#include "tests/support/test_thread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::uint64_t kLongestWaitMs = 30;
constexpr int kTries = 5;  // one of them is not disturbed by other programs

class FirstRecordTest : public testing::Test {
protected:
    ~FirstRecordTest() override { platform::simulated::world().reset(); }

    // How long the first turn of the loop takes, in milliseconds.
    static std::uint64_t firstTurn(tern::EventBroker& broker) {
        waitForFirstRecord(broker);
        EXPECT_TRUE(platform::isMessageWaiting());
        const std::uint64_t start = platform::uptimeMs();
        platform::dispatchOneMessage();
        return platform::uptimeMs() - start;
    }
};

TEST_F(FirstRecordTest, TheFirstTurnLoadsTheSpooler) {
    tern::EventBroker broker(nullptr);

    firstTurn(broker);

    EXPECT_TRUE(platform::simulated::world().printers.isPrepared());
}

TEST_F(FirstRecordTest, TheFirstTurnWaitsForARecordButNotForEver) {
    tern::EventBroker broker(nullptr);

    EXPECT_GE(firstTurn(broker), kLongestWaitMs);
}

TEST_F(FirstRecordTest, ARecordEndsTheWait) {
    tern::EventBroker broker(nullptr);
    const arbor::Guid type{};
    broker.post(&type, 0, 0, nullptr);

    std::uint64_t shortest = kLongestWaitMs;
    for (int attempt = 0; attempt < kTries; ++attempt)
        shortest = std::min(shortest, firstTurn(broker));

    EXPECT_LT(shortest, kLongestWaitMs);
}

TEST_F(FirstRecordTest, ARecordThatComesDuringTheWaitEndsIt) {
    constexpr std::uint32_t kLaterMs = 10;
    constexpr std::uint64_t kEarlyMs = 25;
    constexpr int kManyTries = 20;  // as another thread must get its turn, too
    std::uint64_t shortest = kLongestWaitMs;
    for (int attempt = 0; attempt < kManyTries && shortest >= kEarlyMs; ++attempt) {
        tern::EventBroker broker(nullptr);
        test::TestThread sender([&broker] {
            const arbor::Guid type{};
            platform::sleepFor(kLaterMs);
            broker.post(&type, 0, 0, nullptr);
            return 0U;
        });
        sender.start();
        shortest = std::min(shortest, firstTurn(broker));
        while (!sender.isFinished())
            platform::sleepFor(1);
    }

    EXPECT_LT(shortest, kEarlyMs);
}

TEST_F(FirstRecordTest, AStoppedLoopIsNotHeldUp) {
    tern::EventBroker broker(nullptr);
    broker.stop(nullptr, 0);

    std::uint64_t shortest = kLongestWaitMs;
    for (int attempt = 0; attempt < kTries; ++attempt)
        shortest = std::min(shortest, firstTurn(broker));

    EXPECT_LT(shortest, kLongestWaitMs);
}

}  // namespace
