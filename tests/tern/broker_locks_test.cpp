// How often the broker takes its mutex. Two calls of the kernel for each time are most of what a
// message costs under Windows.
#include "tern/event_broker.h"

#include "arbor/simple_message.h"
#include "platform/simulated/held_locks.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <stdexcept>

using platform::simulated::takenKernelMutexes;

namespace {

constexpr arbor::Guid kType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr int kTurns = 100;

bool passes(arbor::IMessage&) {
    return false;
}

// How often a broker with two listeners takes its mutex until it is told to stop in its idle turn
// number `idleTurns`. Each earlier one posts `messages`.
long locksOf(int idleTurns, int messages) {
    test::TestManager<> manager;
    manager.broker.addComponent(new test::ListenerComponent(&passes));
    manager.broker.addComponent(new test::ListenerComponent(&passes));
    manager.onPump = [&] {
        if (manager.pumps == idleTurns) {
            manager.broker.stop(nullptr, 0);
            return;
        }
        for (int i = 0; i < messages; ++i)
            manager.broker.post(&kType, 0, 0, nullptr);
    };
    const long before = takenKernelMutexes();
    manager.broker.run();
    return takenKernelMutexes() - before;
}

// How often an idle turn that posts `messages`, and their delivery, take the mutex.
double locksOfATurn(int messages) {
    constexpr int kWarm = 2;  // by then the list of listeners has been copied
    const long locks = locksOf(kWarm + kTurns, messages) - locksOf(kWarm, messages);
    return static_cast<double>(locks) / kTurns;
}

}  // namespace

TEST(BrokerLocksTest, IdleTurnTakesTheMutexOnce) {
    EXPECT_LE(locksOfATurn(0), 1);
}

TEST(BrokerLocksTest, MessageTakesTheMutexTwice) {
    EXPECT_LE(locksOfATurn(1) - locksOfATurn(0), 2);
}

TEST(BrokerLocksTest, BacklogTakesTheMutexOnceForEachMessageAndOnceForAll) {
    constexpr int kBacklog = 100;

    EXPECT_LE(locksOfATurn(kBacklog) - locksOfATurn(0), kBacklog + 1);
}

TEST(BrokerLocksTest, ListenerThatThrowsDoesNotMakeLaterMessagesDearer) {
    test::TestManager<> manager;
    manager.broker.addComponent(new test::ListenerComponent([&](arbor::IMessage& message) -> bool {
        if (message.getCode() != 1) return false;
        manager.broker.addComponent(new test::ListenerComponent(&passes));
        throw std::runtime_error("the listener fails");
    }));
    arbor::SimpleMessage failing(&kType, 1, 0);
    arbor::SimpleMessage later(&kType, 2, 0);
    EXPECT_THROW(manager.broker.publish(&failing), std::runtime_error);
    manager.broker.publish(&later);
    const long before = takenKernelMutexes();

    manager.broker.publish(&later);

    EXPECT_EQ(takenKernelMutexes(), before);
}
