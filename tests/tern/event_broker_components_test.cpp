// What the broker does with components and with the messages of their threads.
#include "tern/event_broker.h"

#include "arbor/abstract_thread.h"
#include "arbor/simple_message.h"
#include "platform/thread.h"
#include "tests/tern/event_broker_fixture.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

using arbor::AbstractThread;
using arbor::Guid;
using arbor::IMessage;
using arbor::IThread;
using arbor::PropertyHolder;
using arbor::SimpleMessage;
using arbor::ThreadCode;
using test::kType;
using test::ListenerComponent;
using test::passes;

namespace {

// A component whose bag names a thread that the test owns.
class ThreadComponent : public PropertyHolder {
public:
    explicit ThreadComponent(IThread& thread) { setPointer(L"thread", &thread); }
    ThreadComponent(IThread& thread, int& destroyed) : ThreadComponent(thread) {
        _destroyed = &destroyed;
    }
    ~ThreadComponent() override {
        if (_destroyed != nullptr) ++*_destroyed;
    }

private:
    int* _destroyed = nullptr;  // owned by the test
};

class EventBrokerComponentsTest : public test::EventBrokerFixture {
protected:
    bool notify(std::uint32_t code) {
        AbstractThread::ThreadMessage message(static_cast<ThreadCode>(code), &thread);
        return broker.notify(&message);
    }

    test::CountingThread& thread = startedThread;
};

}  // namespace

TEST_F(EventBrokerComponentsTest, NullIsRefused) {
    EXPECT_FALSE(broker.addComponent(nullptr));
    EXPECT_TRUE(broker.removeComponent(nullptr, true));
}

TEST_F(EventBrokerComponentsTest, ComponentWithNeitherThreadNorListenerIsRefusedAndNotOwned) {
    PropertyHolder component;  // on the stack: the broker would crash if it took ownership
    component.setInt(L"thread", 5);

    EXPECT_FALSE(broker.addComponent(&component));
    EXPECT_FALSE(component.hasProperty(L"eventBroker"));
}

TEST_F(EventBrokerComponentsTest, AcceptedComponentFindsTheBrokerInItsBag) {
    auto* component = new ThreadComponent(thread);

    EXPECT_TRUE(broker.addComponent(component));

    EXPECT_EQ(component->getPointer(L"eventBroker", nullptr), &broker);
}

TEST_F(EventBrokerComponentsTest, ComponentWithThreadAndListenerIsBothAndOwnedOnce) {
    auto* component = new ListenerComponent(passes);
    int destroyed = 0;
    component->onDestruction = [&] { ++destroyed; };
    component->setPointer(L"thread", static_cast<IThread*>(&thread));

    EXPECT_TRUE(broker.addComponent(component));
    publish(0);
    runUntilIdle();

    EXPECT_EQ(component->heard, 1);
    EXPECT_EQ(thread.starts, 1);
    EXPECT_TRUE(broker.removeComponent(component, true));
    EXPECT_EQ(destroyed, 1);
}

TEST_F(EventBrokerComponentsTest, ThreadIsStartedAtTheIdleTurnAndNotBefore) {
    broker.addComponent(new ThreadComponent(thread));
    auto& listener = addListener([&](IMessage&) {
        EXPECT_EQ(thread.starts, 0);
        return false;
    });
    broker.post(&kType, 0, 0, nullptr);
    EXPECT_EQ(thread.starts, 0);

    runUntilIdle();

    EXPECT_EQ(listener.heard, 1);
    EXPECT_EQ(thread.starts, 1);
}

TEST_F(EventBrokerComponentsTest, ThreadIsStartedOncePerRequestAndNotAtEveryTurn) {
    int turns = 0;
    manager.onPump = [&] {
        if (++turns == 3) broker.stop(nullptr, 0);
    };
    broker.addComponent(new ThreadComponent(thread));
    EXPECT_TRUE(notify(1));

    runUntilIdle();

    EXPECT_EQ(thread.starts, 2);
}

TEST_F(EventBrokerComponentsTest, RemovedComponentIsDestroyedOnlyWhenAskedTo) {
    int destroyed = 0;
    auto* component = new ThreadComponent(thread, destroyed);
    broker.addComponent(component);

    EXPECT_TRUE(broker.removeComponent(component, false));
    EXPECT_EQ(destroyed, 0);
    delete component;

    auto* other = new ThreadComponent(thread, destroyed);
    broker.addComponent(other);
    EXPECT_TRUE(broker.removeComponent(other, true));
    EXPECT_EQ(destroyed, 2);
}

TEST_F(EventBrokerComponentsTest, ComponentThatWasNeverAddedIsNotDestroyed) {
    ThreadComponent stranger(thread);  // on the stack: the broker would crash if it deleted it
    ListenerComponent strangeListener(passes);
    auto& known = addListener(passes);

    EXPECT_TRUE(broker.removeComponent(&stranger, true));
    EXPECT_TRUE(broker.removeComponent(&strangeListener, true));

    publish(0);
    EXPECT_EQ(known.heard, 1);
}

TEST_F(EventBrokerComponentsTest, ThreadThatWaitsForItsStartStaysWaitingWhenItsComponentIsRemoved) {
    auto component = std::make_unique<ThreadComponent>(thread);
    broker.addComponent(component.get());

    broker.removeComponent(component.get(), false);
    runUntilIdle();

    EXPECT_EQ(thread.starts, 1);
}

TEST_F(EventBrokerComponentsTest, ThreadOfADestroyedComponentIsNeverStarted) {
    auto* component = new ThreadComponent(thread);
    broker.addComponent(component);

    broker.removeComponent(component, true);
    runUntilIdle();

    EXPECT_EQ(thread.starts, 0);
}

TEST_F(EventBrokerComponentsTest, ComponentsAddedWhileAThreadIsStartedAreStartedAtTheNextIdleTurn) {
    constexpr int kComponents = 8;  // more than the inline storage for waiting threads holds
    test::CountingThread late;
    int startedAtFirstTurn = -1;
    int turns = 0;
    manager.onPump = [&] {
        if (++turns == 1) startedAtFirstTurn = late.starts;
        if (turns == 2) broker.stop(nullptr, 0);
    };
    thread.onStart = [&] {
        for (int count = 0; count < kComponents; ++count)
            EXPECT_TRUE(broker.addComponent(new ThreadComponent(late)));
    };
    broker.addComponent(new ThreadComponent(thread));

    runUntilIdle();

    EXPECT_EQ(thread.starts, 1);
    EXPECT_EQ(startedAtFirstTurn, 0);
    EXPECT_EQ(late.starts, kComponents);
}

TEST_F(EventBrokerComponentsTest, ComponentsMayBeDestroyedWhileAThreadIsStarted) {
    test::CountingThread doomed;
    test::CountingThread last;
    auto* doomedComponent = new ThreadComponent(doomed);
    auto* own = new ThreadComponent(thread);
    thread.onStart = [&] {
        EXPECT_TRUE(broker.removeComponent(doomedComponent, true));
        EXPECT_TRUE(broker.removeComponent(own, true));
    };
    broker.addComponent(own);
    broker.addComponent(doomedComponent);
    broker.addComponent(new ThreadComponent(last));

    runUntilIdle();

    EXPECT_EQ(thread.starts, 1);
    EXPECT_EQ(doomed.starts, 0);
    EXPECT_EQ(last.starts, 1);
}

TEST_F(EventBrokerComponentsTest, ThreadsAreStartedBeforeTheFirstWindowMessageIsHandled) {
    int startedWhenPumped = -1;
    manager.onPump = [&] {
        startedWhenPumped = thread.starts;
        broker.stop(nullptr, 0);
    };
    broker.addComponent(new ThreadComponent(thread));

    runUntilIdle();

    EXPECT_EQ(startedWhenPumped, 1);
}

TEST(EventBrokerDestructionTest, ComponentMayRemoveAndAddOthersOnItsWayOut) {
    std::string order;
    auto manager = std::make_unique<test::TestManager<>>();
    tern::EventBroker& broker = manager->broker;
    const auto add = [&](char name) {
        auto* component = new ListenerComponent(passes);
        component->onDestruction = [&order, name] { order += name; };
        EXPECT_TRUE(broker.addComponent(component));
        return component;
    };
    auto* first = add('a');
    auto* second = add('b');
    add('c');
    first->onDestruction = [&] {
        order += 'a';
        EXPECT_TRUE(broker.removeComponent(second, true));
        for (const char late : std::string("defg"))
            add(late);
    };

    manager.reset();

    EXPECT_EQ(order, "abcdefg");
}

// The destruction holds the broker's lock and waits for threads that are about to end.
TEST(EventBrokerDestructionTest, ThreadThatEndsMeanwhileDoesNotWaitForTheLock) {
    constexpr std::uint32_t kLongEnoughMs = 5000;  // reached by a test that fails
    struct Ending {
        tern::EventBroker& broker;
        test::CountingThread thread;
        static std::uint32_t run(void* parameter) {
            auto& self = *static_cast<Ending*>(parameter);
            AbstractThread::ThreadMessage message(ThreadCode::Finished, &self.thread);
            return self.broker.notify(&message) ? 0 : 1;
        }
    };
    auto manager = std::make_unique<test::TestManager<>>();
    Ending ending{manager->broker, {}};
    platform::NativeHandle thread = nullptr;
    std::uint32_t waited = 1;
    auto* component = new ListenerComponent(passes);
    component->onDestruction = [&] {
        std::atomic<std::uint32_t> id{0};
        thread = platform::startThread(&Ending::run, &ending, id);
        waited = platform::waitForThread(thread, kLongEnoughMs);
    };
    EXPECT_TRUE(manager->broker.addComponent(component));

    manager.reset();

    std::uint32_t answer = 1;
    EXPECT_EQ(waited, 0U);
    EXPECT_TRUE(platform::threadExitCode(thread, answer));
    EXPECT_EQ(answer, 0U);
    platform::closeThread(thread);
}

TEST_F(EventBrokerComponentsTest, MessageOfAnotherTypeIsNotAThreadMessage) {
    SimpleMessage other(&kType, 1, 0);
    Guid nearly = AbstractThread::ThreadMessage::type();
    ++nearly.data4[7];
    SimpleMessage lastByteDiffers(&nearly, 1, 0);

    EXPECT_FALSE(broker.notify(&other));
    EXPECT_FALSE(broker.notify(&lastByteDiffers));
}

TEST_F(EventBrokerComponentsTest, ThreadMessageWithoutAThreadIsRefused) {
    SimpleMessage message(&AbstractThread::ThreadMessage::type(), 1, 0);

    EXPECT_FALSE(broker.notify(&message));
}

TEST_F(EventBrokerComponentsTest, ThreadCodesOneToThreeAreTakenAndNoOther) {
    EXPECT_FALSE(notify(0));
    EXPECT_TRUE(notify(1));
    EXPECT_TRUE(notify(2));
    EXPECT_TRUE(notify(3));
    EXPECT_FALSE(notify(4));
}

TEST_F(EventBrokerComponentsTest, OnlyTheStartRequestLeadsToAStart) {
    notify(2);
    notify(3);
    EXPECT_TRUE(notify(1));

    runUntilIdle();

    EXPECT_EQ(thread.starts, 1);
}
