#include "tern/event_broker.h"

#include "arbor/abstract_thread.h"
#include "arbor/message.h"
#include "arbor/simple_message.h"
#include "tests/tern/event_broker_fixture.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using arbor::AbstractThread;
using arbor::IMessage;
using arbor::PropertyHolder;
using arbor::SimpleMessage;
using arbor::ThreadCode;
using test::CountingThread;
using test::kType;
using test::ListenerComponent;
using test::passes;
using test::takes;

using EventBrokerTest = test::EventBrokerFixture;

TEST_F(EventBrokerTest, KnowsItsInstanceManagerAndIsReady) {
    EXPECT_EQ(broker.getInstanceManager(), &manager);
    EXPECT_TRUE(broker.isReady());
}

TEST_F(EventBrokerTest, ExclusiveMessageStopsAtTheFirstListenerThatTakesIt) {
    auto& before = addListener(passes);
    auto& first = addListener(takes);
    auto& second = addListener(takes);

    publish(arbor::kExclusiveFlag);

    EXPECT_EQ(before.heard, 1);
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(second.heard, 0);
}

TEST_F(EventBrokerTest, OrdinaryMessageReachesEveryListenerWhateverTheyAnswer) {
    auto& first = addListener(takes);
    auto& second = addListener(passes);
    auto& third = addListener(takes);

    publish(2);

    EXPECT_EQ(first.heard + second.heard + third.heard, 3);
}

TEST_F(EventBrokerTest, ExclusiveFlagIsReadOnceBeforeDelivery) {
    addListener([](IMessage& message) {
        message.setFlags(arbor::kExclusiveFlag);
        return true;
    });
    auto& second = addListener(passes);

    publish(0);

    EXPECT_EQ(second.heard, 1);
}

TEST_F(EventBrokerTest, ListenersAreCalledInTheOrderInWhichTheyWereAdded) {
    std::string order;
    for (const char name : {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j'}) {
        addListener([&order, name](IMessage&) {
            order += name;
            return false;
        });
    }

    publish(0);

    EXPECT_EQ(order, "abcdefghij");
}

TEST_F(EventBrokerTest, ListenerAddedDuringDeliveryHearsTheNextMessage) {
    ListenerComponent* late = nullptr;
    addListener([&](IMessage&) {
        if (late == nullptr) late = &addListener(passes);
        return false;
    });

    publish(0);
    EXPECT_EQ(late->heard, 0);
    publish(0);
    EXPECT_EQ(late->heard, 1);
}

TEST_F(EventBrokerTest, ListenerRemovedDuringDeliveryStillHearsThisMessage) {
    ListenerComponent* leaving = nullptr;
    addListener([&](IMessage&) { return broker.removeComponent(leaving, false); });
    leaving = &addListener(passes);
    const std::unique_ptr<ListenerComponent> owned(leaving);

    publish(0);
    publish(0);

    EXPECT_EQ(leaving->heard, 1);
}

TEST_F(EventBrokerTest, NoLockIsHeldWhileAListenerIsCalled) {
    // stop() takes the broker's lock. A second thread must get it in the middle of a delivery.
    struct Locker {
        static std::uint32_t run(void* broker) {
            static_cast<tern::EventBroker*>(broker)->stop(nullptr, 0);
            return 0;
        }
    };
    std::uint32_t waited = 1;
    addListener([&](IMessage&) {
        std::atomic<std::uint32_t> id{0};
        platform::NativeHandle thread = platform::startThread(&Locker::run, &broker, id);
        waited = platform::waitForThread(thread, 20000);
        platform::closeThread(thread);
        return false;
    });

    publish(0);

    EXPECT_EQ(waited, 0U);
}

TEST_F(EventBrokerTest, PostWithoutPropertiesDeliversASimpleMessage) {
    std::vector<std::uint32_t> heard;
    addListener([&](IMessage& message) {
        heard = {message.getCode(), message.getFlags()};
        EXPECT_EQ(message.getType(), &kType);
        EXPECT_NE(dynamic_cast<SimpleMessage*>(&message), nullptr);
        return false;
    });

    EXPECT_TRUE(broker.post(&kType, 123, 4, nullptr));
    runUntilIdle();

    EXPECT_EQ(heard, (std::vector<std::uint32_t>{123, 4}));
}

TEST_F(EventBrokerTest, PostWithPropertiesDeliversAMessageWithAnEmptyBag) {
    PropertyHolder payload;
    payload.setInt(L"key", 5);
    auto& listener = addListener([&](IMessage& message) {
        EXPECT_NE(dynamic_cast<arbor::Message*>(&message), nullptr);
        EXPECT_FALSE(message.getProperties()->hasProperty(L"key"));
        return false;
    });

    EXPECT_TRUE(broker.post(&kType, 0, 0, &payload));
    runUntilIdle();

    EXPECT_EQ(listener.heard, 1);
}

TEST_F(EventBrokerTest, PostExclusiveSetsTheLowestFlag) {
    PropertyHolder payload;
    std::vector<std::uint32_t> flags;
    addListener([&](IMessage& message) {
        EXPECT_EQ(message.getType(), &kType);
        EXPECT_EQ(message.getCode(), 123U);
        EXPECT_NE(dynamic_cast<arbor::Message*>(&message), nullptr);
        flags.push_back(message.getFlags());
        return true;
    });

    EXPECT_TRUE(broker.postExclusive(&kType, 123, 0, &payload));
    EXPECT_TRUE(broker.postExclusive(&kType, 123, 6, &payload));
    runUntilIdle();

    EXPECT_EQ(flags, (std::vector<std::uint32_t>{1, 7}));
}

TEST_F(EventBrokerTest, MessagesAreDeliveredInTheOrderOfTheirEnqueueBeforeAnyIdleTurn) {
    std::vector<std::uint32_t> codes;
    addListener([&](IMessage& message) {
        EXPECT_EQ(manager.pumps, 0);
        codes.push_back(message.getCode());
        return false;
    });
    for (const std::uint32_t code : {3U, 1U, 2U})
        broker.post(&kType, code, 0, nullptr);

    runUntilIdle();

    EXPECT_EQ(codes, (std::vector<std::uint32_t>{3, 1, 2}));
    EXPECT_EQ(manager.pumps, 1);
}

TEST_F(EventBrokerTest, MessagePostedByAListenerIsDeliveredAfterThoseThatWaited) {
    std::vector<std::uint32_t> codes;
    addListener([&](IMessage& message) {
        codes.push_back(message.getCode());
        if (message.getCode() == 1) broker.post(&kType, 4, 0, nullptr);
        return false;
    });
    for (const std::uint32_t code : {1U, 2U, 3U})
        broker.post(&kType, code, 0, nullptr);

    runUntilIdle();

    EXPECT_EQ(codes, (std::vector<std::uint32_t>{1, 2, 3, 4}));
}

TEST_F(EventBrokerTest, ListenerAddedDuringADeliveryHearsTheMessagesThatWait) {
    ListenerComponent* late = nullptr;
    addListener([&](IMessage&) {
        if (late == nullptr) late = &addListener(passes);
        return false;
    });
    for (const std::uint32_t code : {1U, 2U, 3U})
        broker.post(&kType, code, 0, nullptr);

    runUntilIdle();

    EXPECT_EQ(late->heard, 2);
}

TEST_F(EventBrokerTest, ListenerRemovedDuringADeliveryHearsNoMessageThatWaits) {
    ListenerComponent* leaving = nullptr;
    addListener([&](IMessage&) { return broker.removeComponent(leaving, false); });
    leaving = &addListener(passes);
    const std::unique_ptr<ListenerComponent> owned(leaving);
    broker.post(&kType, 1, 0, nullptr);
    broker.post(&kType, 2, 0, nullptr);

    runUntilIdle();

    EXPECT_EQ(leaving->heard, 1);
}

TEST_F(EventBrokerTest, DeliveryInsideAnotherGoesToTheListenersOfThatMoment) {
    std::string heard;
    const auto notes = [&heard](const char* name) {
        return [&heard, name](IMessage& message) {
            heard += name + std::to_string(message.getCode()) + ' ';
            return false;
        };
    };
    ListenerComponent* leaving = nullptr;
    addListener([&](IMessage& message) {
        notes("first")(message);
        if (message.getCode() == 2) return false;
        broker.removeComponent(leaving, false);
        SimpleMessage inner(&kType, 2, 0);
        broker.publish(&inner);
        return false;
    });
    leaving = &addListener(notes("leaving"));
    const std::unique_ptr<ListenerComponent> owned(leaving);
    addListener(notes("last"));

    SimpleMessage outer(&kType, 1, 0);
    broker.publish(&outer);

    EXPECT_EQ(heard, "first1 first2 last2 leaving1 last1 ");
}

TEST_F(EventBrokerTest, ListenerAddedBeforeADeliveryInsideAnotherHearsThatOneAndTheNext) {
    ListenerComponent* late = nullptr;
    addListener([&](IMessage& message) {
        if (message.getCode() != 1) return false;
        late = &addListener(passes);
        SimpleMessage inner(&kType, 2, 0);
        broker.publish(&inner);
        return false;
    });
    SimpleMessage outer(&kType, 1, 0);
    broker.publish(&outer);
    EXPECT_EQ(late->heard, 1);

    publish(0);

    EXPECT_EQ(late->heard, 2);
}

TEST_F(EventBrokerTest, IsNotIdleWhileAMessageWaitsOrAfterAStop) {
    std::string idle;
    addListener([&](IMessage& message) {
        idle += broker.isIdle() ? "idle " : "busy ";
        if (message.getCode() == 3) broker.stop(nullptr, 0);
        if (message.getCode() == 3) idle += broker.isIdle() ? "idle " : "stopped";
        return false;
    });
    for (const std::uint32_t code : {1U, 2U, 3U})
        broker.post(&kType, code, 0, nullptr);

    runUntilIdle();

    EXPECT_EQ(idle, "busy busy idle stopped");
}

TEST_F(EventBrokerTest, StopFromAListenerEndsTheLoopAfterTheMessageInHand) {
    auto& stopping = addListener([&](IMessage&) { return broker.stop(&kType, 0); });
    auto& second = addListener(passes);
    broker.post(&kType, 1, 0, nullptr);
    broker.post(&kType, 2, 0, nullptr);

    EXPECT_EQ(broker.run(), 0);

    EXPECT_EQ(stopping.heard, 1);
    EXPECT_EQ(second.heard, 1);
    EXPECT_EQ(manager.pumps, 0);
}

TEST_F(EventBrokerTest, RunAfterStopDeliversNothing) {
    auto& listener = addListener(passes);
    broker.post(&kType, 1, 0, nullptr);

    EXPECT_TRUE(broker.stop(&kType, 77));
    EXPECT_EQ(broker.run(), 0);
    EXPECT_EQ(broker.run(), 0);

    EXPECT_EQ(listener.heard, 0);
    EXPECT_EQ(manager.pumps, 0);
}

TEST_F(EventBrokerTest, DeliveredMessageIsDestroyedBeforeTheNextIsTaken) {
    std::weak_ptr<IMessage> first;
    auto& listener = addListener([&](IMessage& message) {
        EXPECT_EQ(first.expired(), message.getCode() == 2);
        return false;
    });
    auto message = std::make_shared<SimpleMessage>(&kType, 1U, 0U);
    first = message;
    EXPECT_TRUE(broker.enqueue(std::move(message)));
    broker.post(&kType, 2, 0, nullptr);

    runUntilIdle();

    EXPECT_EQ(listener.heard, 2);
}

TEST_F(EventBrokerTest, MessageThatTheSenderKeepsStaysAliveAfterDelivery) {
    const auto message = std::make_shared<SimpleMessage>(&kType, 1U, 0U);

    broker.enqueue(message);
    EXPECT_EQ(message.use_count(), 2);
    runUntilIdle();

    EXPECT_EQ(message.use_count(), 1);
}

TEST(EventBrokerEndTest, UndeliveredMessagesAreDestroyedWithTheBroker) {
    const auto message = std::make_shared<SimpleMessage>(&kType, 1U, 0U);
    {
        test::TestManager<> manager;
        manager.broker.stop(nullptr, 0);
        EXPECT_TRUE(manager.broker.enqueue(message));
        manager.broker.run();
        EXPECT_EQ(message.use_count(), 2);
    }
    EXPECT_EQ(message.use_count(), 1);
}

TEST(EventBrokerEndTest, MessagesThatWaitedBehindTheStopAreDestroyedLastFirst) {
    struct LoudMessage : SimpleMessage {
        LoudMessage(std::uint32_t code, std::vector<std::uint32_t>& itsGone)
            : SimpleMessage(&kType, code, 0), gone(itsGone) {}
        ~LoudMessage() override { gone.push_back(getCode()); }
        std::vector<std::uint32_t>& gone;
    };
    std::vector<std::uint32_t> gone;
    {
        test::TestManager<> manager;
        manager.broker.addComponent(new ListenerComponent([&](IMessage&) {
            manager.broker.enqueue(std::make_shared<LoudMessage>(4U, gone));
            manager.broker.enqueue(std::make_shared<LoudMessage>(5U, gone));
            return manager.broker.stop(nullptr, 0);
        }));
        for (const std::uint32_t code : {1U, 2U, 3U})
            manager.broker.enqueue(std::make_shared<LoudMessage>(code, gone));
        manager.broker.run();
        EXPECT_EQ(gone, (std::vector<std::uint32_t>{1}));
    }
    EXPECT_EQ(gone, (std::vector<std::uint32_t>{1, 5, 4, 3, 2}));
}

TEST(EventBrokerEndTest, MessagePublishedByADyingComponentReachesNobody) {
    auto manager = std::make_unique<test::TestManager<>>();
    int heard = 0;
    auto* first = new ListenerComponent(passes);
    first->onDestruction = [&, &broker = manager->broker] {
        SimpleMessage message(&kType, 1, 0);
        broker.publish(&message);
    };
    manager->broker.addComponent(first);
    manager->broker.addComponent(new ListenerComponent([&](IMessage&) { return ++heard > 0; }));
    SimpleMessage before(&kType, 1, 0);
    manager->broker.publish(&before);
    EXPECT_EQ(heard, 1);

    manager.reset();

    EXPECT_EQ(heard, 1);
}

TEST(EventBrokerEndTest, BrokerThatIsBeingDestroyedTakesNothingMore) {
    const auto message = std::make_shared<SimpleMessage>(&kType, 1U, 0U);
    CountingThread thread;
    bool wasAsked = false;
    auto manager = std::make_unique<test::TestManager<>>();
    auto* component = new ListenerComponent(passes);
    component->onDestruction = [&, &broker = manager->broker] {
        EXPECT_FALSE(broker.enqueue(message));
        EXPECT_FALSE(broker.post(&kType, 1, 0, nullptr));
        EXPECT_TRUE(broker.stop(nullptr, 0));
        for (const ThreadCode code :
             {ThreadCode::StartRequest, ThreadCode::Starting, ThreadCode::Finished}) {
            AbstractThread::ThreadMessage told(code, &thread);
            EXPECT_TRUE(broker.notify(&told));
        }
        wasAsked = true;
    };
    manager->broker.addComponent(component);

    manager.reset();

    EXPECT_TRUE(wasAsked);
    EXPECT_EQ(message.use_count(), 1);
    EXPECT_EQ(thread.starts, 0);
}

TEST(EventBrokerEndTest, ComponentsAreDestroyedInTheOrderInWhichTheyWereAdded) {
    std::string order;
    {
        test::TestManager<> manager;
        for (const char name : {'a', 'b', 'c'}) {
            auto* component = new ListenerComponent(passes);
            component->onDestruction = [&order, name] { order += name; };
            manager.broker.addComponent(component);
        }
    }
    EXPECT_EQ(order, "abc");
}
