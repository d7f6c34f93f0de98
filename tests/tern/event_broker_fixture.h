#pragma once

#include "tern/event_broker.h"

#include "arbor/simple_message.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace test {

// A message type of the tests, which no class of the product uses.
inline constexpr arbor::Guid kType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

// The two answers of a listener: it has taken the message, or it has not.
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

    // Adds a listener, which the broker then owns.
    ListenerComponent& addListener(ListenerComponent::Action action) {
        auto* component = new ListenerComponent(std::move(action));
        EXPECT_TRUE(broker.addComponent(component));
        return *component;
    }
    void publish(std::uint32_t flags) {
        arbor::SimpleMessage message(&kType, 0, flags);
        broker.publish(&message);
    }
    // Delivers all queued messages and returns.
    void runUntilIdle() { EXPECT_EQ(broker.run(), 0); }

    CountingThread startedThread;  // for components; declared first because the broker may use it
    TestManager<> manager;
    tern::EventBroker& broker = manager.broker;
};

}  // namespace test
