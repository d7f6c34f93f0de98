#pragma once

#include "tern/event_broker.h"

#include "arbor/simple_message.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace test {

// The type of the messages that belong to nobody but the test.
inline constexpr arbor::Guid kType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

// What listeners may answer.
inline bool takes(arbor::IMessage&) {
    return true;
}
inline bool passes(arbor::IMessage&) {
    return false;
}

// A broker whose loop ends at its first idle turn.
class EventBrokerFixture : public testing::Test {
protected:
    EventBrokerFixture() {
        manager.onPump = [this] { broker.stop(nullptr, 0); };
    }

    // Makes a listener of the broker's.
    ListenerComponent& addListener(ListenerComponent::Action action) {
        auto* component = new ListenerComponent(std::move(action));
        EXPECT_TRUE(broker.addComponent(component));
        return *component;
    }
    void publish(std::uint32_t flags) {
        arbor::SimpleMessage message(&kType, 0, flags);
        broker.publish(&message);
    }
    // Delivers all that is queued, then stops.
    void runUntilIdle() { EXPECT_EQ(broker.run(), 0); }

    CountingThread startedThread;  // for components: outlives the broker, which may hold it
    TestManager<> manager;
    tern::EventBroker& broker = manager.broker;
};

}  // namespace test
