// Every platform call of the status channel fails in turn, alone and together with an allocation.
#include "tern/event_broker.h"
#include "tern/velo_listener.h"

#include "arbor/message.h"
#include "platform/simulated/world.h"
#include "tern/class_ids.h"
#include "tests/fault_injection/platform_faults_fixture.h"
#include "tests/fault_injection/reading_under_faults.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using fault_injection::Mode;
using fault_injection::Reading;
using platform::simulated::Call;
using platform::simulated::world;
using test::ListenerComponent;

namespace {

class TernPlatformFaultsTest : public fault_injection::PlatformFaultsTest {
protected:
    void SetUp() override { world().reset(); }
    void TearDown() override { world().reset(); }
};

constexpr Call kReadingCalls[] = {Call::PipeWait, Call::PipeOpenForReading, Call::PipeMode,
                                  Call::PipeRead};

TEST_P(TernPlatformFaultsTest, PipeAndMemoryThatFailTogetherStopTheBroker) {
    const std::string bytes =
        records::record(2, 3, records::number(41100)) + records::record(1, 0, "block");
    std::unique_ptr<Reading> reading;
    failEachCallAndAllocation(
        kReadingCalls, [] { world().faults.reset(); },
        [&] {
            reading = std::make_unique<Reading>(bytes);
            return [&] { reading->generator->runOnThisThread(); };
        },
        [&](long failed) {
            EXPECT_EQ(reading->manager.broker.stops, 1) << failed;
            EXPECT_LE(reading->manager.broker.messages, 2);
            reading.reset();
        });
}

constexpr Call kWritingCalls[] = {Call::PipeWait, Call::PipeOpenForWriting, Call::PipeWrite};

// A header is written whole or not at all. A message that cannot be written has no other effect.
TEST_P(TernPlatformFaultsTest, OutputListenerWritesWholeHeadersWhateverFails) {
    std::unique_ptr<arbor::PropertyHolder> parameters;
    std::unique_ptr<tern::VeloListener> listener;
    failEachCallAndAllocation(
        kWritingCalls,
        [] {
            world().reset();
            world().pipes.create(L"answers");
        },
        [&] {
            parameters = std::make_unique<arbor::PropertyHolder>();
            parameters->setString(L"outputPipe", "answers");
            return [&] {
                listener = std::make_unique<tern::VeloListener>(*parameters, nullptr);
                arbor::Message message(&tern::kVeloListenerId, 2, 0);
                EXPECT_FALSE(listener->notify(&message));
                EXPECT_FALSE(listener->notify(&message));
            };
        },
        [&](long) {
            EXPECT_LE(world().pipes.writes(L"answers").size(), 2U);
            for (const std::string& header : world().pipes.writes(L"answers"))
                EXPECT_EQ(header.size(), 20U);
            listener.reset();
            parameters.reset();
            world().reset();
        });
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, TernPlatformFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

// Each call of the platform fails alone, with all the memory that is needed.
TEST(TernPlatformFaultTest, PipeThatFailsAtAnyCallStopsTheBrokerAndNothingElse) {
    const std::string bytes = records::record(2, 3, records::number(41100));
    for (const Call call : kReadingCalls) {
        for (const bool forEver : {false, true}) {
            for (long nth = 1;; ++nth) {
                world().reset();
                ASSERT_TRUE(world().faults.add({call, nth, forEver}));
                Reading reading(bytes + bytes);

                reading.generator->runOnThisThread();

                const bool struck = world().faults.struck() > 0;
                EXPECT_EQ(reading.manager.broker.stops, 1);
                EXPECT_EQ(reading.manager.broker.messages, reading.manager.broker.whole);
                if (!struck || call == Call::PipeMode) {
                    EXPECT_EQ(reading.manager.broker.whole, 2);
                }
                if (!struck) break;
            }
        }
    }
    world().reset();
}

#if !defined(_WIN32)  // the system's threads cannot be made to fail
TEST(TernPlatformFaultTest, ThreadThatCannotBeStartedIsSilentAndStartsAtTheNextTry) {
    world().reset();
    ASSERT_TRUE(world().faults.add({Call::ThreadStart}));
    test::StatusChannel<> channel;

    channel.generator->start();
    EXPECT_EQ(*channel.generator->getHandle(), nullptr);
    EXPECT_FALSE(channel.generator->isFinished());
    channel.play({records::record(2, 3, records::number(5))});

    EXPECT_TRUE(channel.finished);
    EXPECT_EQ(channel.messages().size(), 1U);
    world().reset();
}

TEST(TernPlatformFaultTest, ThreadWhoseExitCodeCannotBeReadCountsAsUnfinished) {
    world().reset();
    test::StatusChannel<> channel;
    channel.play({});
    ASSERT_TRUE(channel.finished);
    ASSERT_TRUE(
        world().faults.add({Call::ThreadExitCode, world().faults.calls(Call::ThreadExitCode) + 1}));

    EXPECT_FALSE(channel.generator->isFinished());
    EXPECT_TRUE(channel.generator->isFinished());
    world().reset();
}

TEST(TernPlatformFaultTest, BrokerWithoutAMutexStillDelivers) {
    world().reset();
    ASSERT_TRUE(world().faults.add({Call::MutexCreation, 1, true}));
    test::TestManager<> manager;
    manager.onPump = [&] { manager.broker.stop(nullptr, 0); };
    auto* listener = new ListenerComponent([](arbor::IMessage&) { return false; });
    manager.broker.addComponent(listener);
    manager.broker.post(&tern::kVeloListenerId, 1, 0, nullptr);

    EXPECT_EQ(manager.broker.run(), 0);

    EXPECT_EQ(listener->heard, 1);
    world().reset();
}
#endif
