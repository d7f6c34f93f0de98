// Messages, stops and shutdown from several threads. The thread sanitizer runs these tests too.
#include "tern/event_broker.h"
#include "tern/instance_manager.h"

#include "arbor/simple_message.h"
#include "tern/class_ids.h"
#include "tests/support/eventually.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"
#include "tests/support/test_thread.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#if !defined(_WIN32)
#include "platform/simulated/world.h"
#endif

using arbor::Guid;
using arbor::IMessage;
using test::eventually;
using test::kFailureMs;
using test::ListenerComponent;
using test::TestThread;

namespace {

constexpr Guid kType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr std::uint32_t kProducers = 4;
#if defined(_WIN32)
constexpr std::uint32_t kMessagesEach = 500;  // fewer, because locks under Wine are slow
#else
constexpr std::uint32_t kMessagesEach = 5000;
#endif
constexpr std::uint32_t kCodesEach = 1000000;
constexpr int kRounds = 10;

bool passes(IMessage&) {
    return false;
}

struct Producers {
    explicit Producers(tern::EventBroker& broker) {
        for (std::uint32_t producer = 0; producer < kProducers; ++producer) {
            threads.push_back(std::make_unique<TestThread>([&broker, producer] {
                for (std::uint32_t number = 0; number < kMessagesEach; ++number)
                    broker.post(&kType, producer * kCodesEach + number, 0, nullptr);
                return 0U;
            }));
        }
        for (auto& thread : threads)
            thread->start();
    }
    ~Producers() {
        for (auto& thread : threads)
            EXPECT_EQ(thread->wait(kFailureMs), 0U);
    }

    std::vector<std::unique_ptr<TestThread>> threads;
};

// A pipe of the print path and an instance manager that reads from it.
struct RunningMonitor {
    RunningMonitor() {
        constexpr std::size_t kPrefixUnits = 9;
        test::setChannel(server.path().substr(kPrefixUnits), records::kPrinter);
        manager = tern::NewInstanceManager("", 0, nullptr);
        auto* listener = new ListenerComponent([this](IMessage& message) {
            if (onMessage) onMessage(message);
            return false;
        });
        EXPECT_TRUE(manager->addComponent(listener));
        generator = manager->createInstanceByGuid(&tern::kVeloEventGeneratorId, "");
        EXPECT_TRUE(manager->addComponent(generator));
    }
    ~RunningMonitor() { shutDown(); }

    void sendStatus(std::uint32_t status) {
        server.write(records::record(2, 3, records::number(status)));
    }
    void stop() { manager->getEventBroker()->stop(nullptr, 0); }
    void shutDown() { tern::TERN_DeleteInstanceManager(manager); }

    contract::PipeServer server{test::newPipeName()};
    tern::IInstanceManager* manager = nullptr;
    arbor::PropertyHolder* generator = nullptr;
    std::function<void(IMessage&)> onMessage;
};

// Keeps sending records until it is told to end.
class RestlessPrintPath {
public:
    explicit RestlessPrintPath(RunningMonitor& monitor)
        : _thread([&monitor, this] {
              for (std::uint32_t sent = 0; !_mayEnd && sent < kMostRecords; ++sent)
                  monitor.sendStatus(sent);
              return 0U;
          }) {
        _thread.start();
    }
    ~RestlessPrintPath() {
        _mayEnd = true;
        EXPECT_EQ(_thread.wait(kFailureMs), 0U);
    }

private:
    static constexpr std::uint32_t kMostRecords =
        20000;  // a pipe that nobody reads from holds as many

    std::atomic<bool> _mayEnd{false};
    TestThread _thread;
};

// Waits until the generator's thread has nothing to read and is blocked in the pipe.
void waitUntilBlocked() {
#if defined(_WIN32)
    platform::sleepFor(20);  // Windows cannot be asked; the test also holds if this is too short
#else
    ASSERT_TRUE(eventually([] { return platform::simulated::world().pipes.waitingReaders() > 0; }));
#endif
}

}  // namespace

TEST(ThreadsTest, MessagesOfEveryProducerArriveCompletelyAndInTheirOrder) {
    test::TestManager<> manager;
    manager.onPump = [] { platform::sleepFor(1); };
    std::array<std::uint32_t, kProducers> next{};
    std::uint32_t heard = 0;
    manager.broker.addComponent(new ListenerComponent([&](IMessage& message) {
        const std::uint32_t producer = message.getCode() / kCodesEach;
        EXPECT_EQ(message.getCode() % kCodesEach, next[producer]++);
        if (++heard == kProducers * kMessagesEach) manager.broker.stop(nullptr, 0);
        return false;
    }));

    {
        const Producers producers(manager.broker);
        EXPECT_EQ(manager.broker.run(), 0);
    }

    EXPECT_EQ(heard, kProducers * kMessagesEach);
}

TEST(ThreadsTest, StopFromAnotherThreadEndsTheLoop) {
    for (int round = 0; round < 50; ++round) {
        test::TestManager<> manager;
        manager.onPump = [] { platform::sleepFor(1); };
        TestThread stopper([&] {
            manager.broker.post(&kType, 0, 0, nullptr);
            manager.broker.stop(nullptr, 0);
            return 0U;
        });
        stopper.start();

        EXPECT_EQ(manager.broker.run(), 0);

        EXPECT_EQ(stopper.wait(kFailureMs), 0U);
    }
}

TEST(ThreadsTest, ComponentsComeAndGoDuringDeliveryWhileProducersPost) {
    test::TestManager<> manager;
    manager.onPump = [] { platform::sleepFor(1); };
    ListenerComponent* guest = nullptr;
    std::uint32_t heard = 0;
    manager.broker.addComponent(new ListenerComponent([&](IMessage&) {
        // The guest comes after this listener in the same delivery. So it may be removed here, but
        // not destroyed: the broker still calls it.
        if (guest == nullptr) {
            guest = new ListenerComponent(passes);
            EXPECT_TRUE(manager.broker.addComponent(guest));
        } else {
            EXPECT_TRUE(manager.broker.removeComponent(guest, false));
        }
        return false;
    }));
    manager.broker.addComponent(new ListenerComponent([&](IMessage&) {
        if (++heard == kProducers * kMessagesEach) manager.broker.stop(nullptr, 0);
        return false;
    }));

    {
        const Producers producers(manager.broker);
        EXPECT_EQ(manager.broker.run(), 0);
    }
    manager.broker.removeComponent(guest, false);
    delete guest;

    EXPECT_EQ(heard, kProducers * kMessagesEach);
}

TEST(ShutdownTest, DoesNotWaitForAGeneratorThatIsBlockedInARead) {
    RunningMonitor monitor;
    monitor.onMessage = [&](IMessage&) { monitor.stop(); };
    monitor.sendStatus(1);
    EXPECT_EQ(monitor.manager->run(), 0U);
    waitUntilBlocked();

    monitor.shutDown();

    monitor.sendStatus(2);  // the thread wakes up although its object is gone
    monitor.server.close();
}

TEST(ShutdownTest, RecordsThatKeepComingDoNoHarm) {
    for (int round = 0; round < kRounds; ++round) {
        RunningMonitor monitor;
        std::uint32_t heard = 0;
        monitor.onMessage = [&](IMessage&) {
            if (++heard == 3) monitor.stop();
        };
        const RestlessPrintPath printPath(monitor);

        EXPECT_EQ(monitor.manager->run(), 0U);
        monitor.shutDown();

        EXPECT_EQ(heard, 3U);
    }
}

TEST(ShutdownTest, PrintPathThatHangsUpMeanwhileDoesNoHarm) {
    for (int round = 0; round < kRounds; ++round) {
        RunningMonitor monitor;
        TestThread printPath([&] {
            monitor.sendStatus(1);
            monitor.server.close();
            return 0U;
        });
        monitor.onMessage = [&](IMessage&) { monitor.stop(); };
        printPath.start();

        EXPECT_EQ(monitor.manager->run(), 0U);
        monitor.shutDown();

        EXPECT_EQ(printPath.wait(kFailureMs), 0U);
    }
}

TEST(ShutdownTest, GeneratorThatWasNeverStartedIsDestroyedWithTheMonitor) {
    RunningMonitor monitor;
    monitor.sendStatus(1);

    monitor.shutDown();
}

TEST(RemovalTest, BlockedGeneratorIsDestroyedWithoutWaiting) {
    RunningMonitor monitor;
    bool removed = false;
    monitor.onMessage = [&](IMessage&) {
        waitUntilBlocked();
        removed = monitor.manager->removeComponent(monitor.generator, true);
        monitor.stop();
    };
    monitor.sendStatus(1);

    EXPECT_EQ(monitor.manager->run(), 0U);

    EXPECT_TRUE(removed);
    monitor.sendStatus(2);
    monitor.server.close();
}

TEST(RemovalTest, ReadingGeneratorIsDestroyedWhileRecordsKeepComing) {
    for (int round = 0; round < kRounds; ++round) {
        RunningMonitor monitor;
        std::uint32_t heard = 0;
        monitor.onMessage = [&](IMessage&) {
            if (++heard == 2) monitor.manager->removeComponent(monitor.generator, true);
            if (heard == 2) monitor.stop();
        };
        const RestlessPrintPath printPath(monitor);

        EXPECT_EQ(monitor.manager->run(), 0U);

        EXPECT_EQ(heard, 2U);
    }
}

TEST(RemovalTest, TimerIsDestroyedBetweenItsTicks) {
    tern::IInstanceManager* manager = tern::NewInstanceManager("", 0, nullptr);
    arbor::PropertyHolder* timer =
        manager->createInstanceByGuid(&tern::kTimerEventGeneratorId, "interval=10");
    ASSERT_TRUE(manager->addComponent(timer));
    int ticks = 0;
    manager->addComponent(new ListenerComponent([&](IMessage&) {
        if (++ticks == 2) manager->removeComponent(timer, true);
        if (ticks == 2) manager->getEventBroker()->stop(nullptr, 0);
        return false;
    }));

    EXPECT_EQ(manager->run(), 0U);
    tern::TERN_DeleteInstanceManager(manager);

    EXPECT_EQ(ticks, 2);
}
