#include "arbor/abstract_thread.h"

#include "arbor/i_listener.h"
#include "platform/thread.h"
#include "tests/support/eventually.h"
#include "tests/support/test_thread.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using arbor::AbstractThread;
using arbor::Guid;
using arbor::IListener;
using arbor::IMessage;
using arbor::IThread;
using test::eventually;
using test::kFailureMs;
using test::TestThread;

namespace {

constexpr std::uint32_t kNow = 0;
constexpr std::uint32_t kTimedOut = 258;
constexpr std::uint32_t kWaitFailed = 0xFFFFFFFF;

// Records the codes of its messages and runs the test's action for each message.
class Observer : public IListener {
public:
    explicit Observer(std::function<void(IMessage*)> action = {}) : _action(std::move(action)) {}

    bool notify(IMessage* message) override {
        const std::size_t place = _count++;
        if (place < _codes.size()) _codes[place] = message->getCode();
        if (_action) _action(message);
        return true;
    }
    [[nodiscard]] std::vector<std::uint32_t> codes() const {
        return {_codes.begin(), _codes.begin() + static_cast<std::ptrdiff_t>(_count.load())};
    }

private:
    std::function<void(IMessage*)> _action;
    std::array<std::atomic<std::uint32_t>, 8> _codes{};
    std::atomic<std::size_t> _count{0};
};

using Codes = std::vector<std::uint32_t>;

std::uint32_t returnsZero() {
    return 0;
}

}  // namespace

TEST(AbstractThreadTest, NeverStartedThreadIsNotFinishedAndHasNeitherHandleNorId) {
    TestThread thread(returnsZero);

    EXPECT_FALSE(thread.isFinished());
    EXPECT_EQ(*thread.getHandle(), nullptr);
    EXPECT_EQ(thread.getThreadId(), 0U);
    EXPECT_EQ(thread.wait(kNow), kWaitFailed);
}

TEST(AbstractThreadTest, StartedThreadRunsItsBodyOnAThreadOfItsOwn) {
    std::atomic<std::uint32_t> bodyId{0};
    TestThread thread([&] {
        bodyId = platform::currentThreadId();
        return 0U;
    });

    thread.start();

    EXPECT_EQ(thread.wait(kFailureMs), 0U);
    EXPECT_TRUE(thread.isFinished());
    EXPECT_NE(*thread.getHandle(), nullptr);
    EXPECT_EQ(thread.getThreadId(), bodyId);
    EXPECT_NE(bodyId, platform::currentThreadId());
}

TEST(AbstractThreadTest, BodyAndFinishedObserverFindTheIdOfTheirThread) {
    // If the id were stored after the start, only a few of a thousand threads would notice.
    constexpr int kThreads = 1000;
    int misses = 0;

    for (int count = 0; count < kThreads; ++count) {
        std::atomic<std::uint32_t> missesOfThread{0};
        TestThread* self = nullptr;
        const auto ask = [&] {
            if (self->getThreadId() != platform::currentThreadId()) ++missesOfThread;
        };
        TestThread thread([&] {
            ask();
            return 0U;
        });
        self = &thread;
        Observer observer([&](IMessage* message) {
            if (message->getCode() == 3) ask();
        });
        thread.addObserver(&observer);

        thread.start();
        ASSERT_EQ(thread.wait(kFailureMs), 0U);
        if (missesOfThread > 0) ++misses;
    }

    EXPECT_EQ(misses, 0);
}

TEST(AbstractThreadTest, IdAndHandleMayBeReadByAnotherThreadDuringTheStart) {
    TestThread started(returnsZero);
    std::atomic<bool> isReading{false};
    TestThread reader([&] {
        return eventually([&] {
            isReading = true;
            const bool isKnown = started.getThreadId() != 0 && *started.getHandle() != nullptr;
            return started.isFinished() && isKnown;
        })
                   ? 0U
                   : 1U;
    });
    reader.start();
    ASSERT_TRUE(eventually([&] { return isReading.load(); }));

    started.start();

    ASSERT_EQ(reader.wait(kFailureMs), 0U);
    std::uint32_t code = 99;
    EXPECT_TRUE(platform::threadExitCode(*reader.getHandle(), code));
    EXPECT_EQ(code, 0U);
}

TEST(AbstractThreadTest, RunningThreadIsNotFinishedAndWaitTimesOut) {
    std::atomic<bool> mayEnd{false};
    TestThread thread([&] {
        eventually([&] { return mayEnd.load(); });
        return 0U;
    });
    thread.start();

    EXPECT_FALSE(thread.isFinished());
    EXPECT_EQ(thread.wait(kNow), kTimedOut);

    mayEnd = true;
    EXPECT_EQ(thread.wait(kFailureMs), 0U);
}

TEST(AbstractThreadTest, ResultOfTheBodyIsTheExitCodeOfTheThread) {
    TestThread thread([] { return 42U; });
    thread.start();
    ASSERT_EQ(thread.wait(kFailureMs), 0U);
    std::uint32_t code = 0;

    EXPECT_TRUE(platform::threadExitCode(*thread.getHandle(), code));
    EXPECT_EQ(code, 42U);
}

TEST(AbstractThreadTest, BodyThatReturns259ReadsAsUnfinishedForEver) {
    TestThread thread([] { return platform::kStillActive; });
    thread.start();

    ASSERT_EQ(thread.wait(kFailureMs), 0U);

    EXPECT_FALSE(thread.isFinished());
}

TEST(AbstractThreadTest, ReservedOperationsDoNothingAndAnswerTrue) {
    TestThread thread(returnsZero);

    thread.reserved4();

    EXPECT_TRUE(thread.reserved5());
    EXPECT_TRUE(thread.reserved6());
    EXPECT_TRUE(thread.reserved7());
}

TEST(AbstractThreadTest, SecondStartTellsTheObserversAgainAndStartsNoSecondThread) {
    std::atomic<int> runs{0};
    Observer observer;
    TestThread thread([&] {
        ++runs;
        return 0U;
    });
    thread.addObserver(&observer);

    thread.start();
    ASSERT_EQ(thread.wait(kFailureMs), 0U);
    const platform::NativeHandle first = *thread.getHandle();
    thread.start();

    EXPECT_EQ(observer.codes(), (Codes{2, 3, 2}));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(*thread.getHandle(), first);
}

TEST(AbstractThreadTest, MessagesCarryTypeNoFlagsAndTheThread) {
    TestThread thread(returnsZero);
    const Guid expected{
        0x7B2FE4B8, 0x9AA6, 0x4FB4, {0x8E, 0x63, 0x1E, 0xB4, 0x21, 0xA9, 0x9F, 0xAA}};
    Guid type;
    std::uint32_t flags = 99;
    void* sender = nullptr;
    Observer observer([&](IMessage* message) {
        type = *message->getType();
        flags = message->getFlags();
        sender = message->getProperties()->getPointer(L"thread", nullptr);
    });
    thread.addObserver(&observer);

    thread.requestStart();

    EXPECT_EQ(type, expected);
    EXPECT_EQ(flags, 0U);
    EXPECT_EQ(sender, static_cast<IThread*>(&thread));
    EXPECT_EQ(observer.codes(), Codes{1});
}

TEST(AbstractThreadTest, StartingIsToldByTheCallerBeforeTheThreadExists) {
    TestThread thread(returnsZero);
    std::uint32_t toldOn = 0;
    bool existed = true;
    Observer observer([&](IMessage* message) {
        if (message->getCode() != 2) return;
        toldOn = platform::currentThreadId();
        existed = *thread.getHandle() != nullptr;
    });
    thread.addObserver(&observer);

    thread.start();
    EXPECT_EQ(thread.wait(kFailureMs), 0U);

    EXPECT_EQ(toldOn, platform::currentThreadId());
    EXPECT_FALSE(existed);
}

TEST(AbstractThreadTest, FinishedIsToldByTheThreadItselfAfterItsBody) {
    std::atomic<bool> bodyDone{false};
    std::atomic<std::uint32_t> toldOn{0};
    std::atomic<bool> wasDone{false};
    TestThread thread([&] {
        bodyDone = true;
        return 0U;
    });
    Observer observer([&](IMessage* message) {
        if (message->getCode() != 3) return;
        toldOn = platform::currentThreadId();
        wasDone = bodyDone.load();
    });
    thread.addObserver(&observer);

    thread.start();
    ASSERT_EQ(thread.wait(kFailureMs), 0U);

    EXPECT_EQ(toldOn, thread.getThreadId());
    EXPECT_TRUE(wasDone);
    EXPECT_EQ(observer.codes(), (Codes{2, 3}));
}

TEST(AbstractThreadTest, ObserversAreCalledInOrderAndAsOftenAsTheyWereAdded) {
    TestThread thread(returnsZero);
    std::string order;
    Observer a([&](IMessage*) { order += 'a'; });
    Observer b([&](IMessage*) { order += 'b'; });
    for (Observer* observer : {&a, &b, &a, &b, &a, &a})
        thread.addObserver(observer);

    thread.requestStart();

    EXPECT_EQ(order, "ababaa");
}

TEST(AbstractThreadTest, NullObserversAreIgnored) {
    TestThread thread(returnsZero);
    Observer observer;
    thread.addObserver(nullptr);
    thread.addObserver(&observer);
    thread.removeObserver(nullptr);

    thread.requestStart();

    EXPECT_EQ(observer.codes(), Codes{1});
}

TEST(AbstractThreadTest, RemovingAnObserverTakesItsFirstPlaceAndKeepsTheOrder) {
    TestThread thread(returnsZero);
    std::string order;
    Observer a([&](IMessage*) { order += 'a'; });
    Observer b([&](IMessage*) { order += 'b'; });
    for (Observer* observer : {&a, &b, &a})
        thread.addObserver(observer);

    thread.removeObserver(&a);
    thread.requestStart();

    EXPECT_EQ(order, "ba");
}

TEST(AbstractThreadTest, RemovingAnObserverFromTheMiddleKeepsTheOthers) {
    TestThread thread(returnsZero);
    std::string order;
    Observer a([&](IMessage*) { order += 'a'; });
    Observer b([&](IMessage*) { order += 'b'; });
    Observer c([&](IMessage*) { order += 'c'; });
    for (Observer* observer : {&a, &b, &c})
        thread.addObserver(observer);

    thread.removeObserver(&b);
    thread.requestStart();

    EXPECT_EQ(order, "ac");
}

TEST(AbstractThreadTest, RemovingAnUnknownObserverDropsTheLastOne) {
    TestThread thread(returnsZero);
    std::string order;
    Observer a([&](IMessage*) { order += 'a'; });
    Observer b([&](IMessage*) { order += 'b'; });
    Observer stranger;
    thread.addObserver(&a);
    thread.addObserver(&b);

    thread.removeObserver(&stranger);
    thread.requestStart();

    EXPECT_EQ(order, "a");
}

TEST(AbstractThreadTest, RemovingFromAThreadWithoutObserversDoesNothing) {
    TestThread thread(returnsZero);
    Observer stranger;

    thread.removeObserver(&stranger);
    thread.requestStart();

    EXPECT_EQ(stranger.codes(), Codes{});
}

TEST(AbstractThreadTest, ObserverThatRemovesItselfStillHearsThisMessageButNotTheNext) {
    TestThread thread(returnsZero);
    Observer* self = nullptr;
    Observer leaving([&](IMessage*) { thread.removeObserver(self); });
    self = &leaving;
    Observer staying;
    thread.addObserver(&leaving);
    thread.addObserver(&staying);

    thread.requestStart();
    thread.requestStart();

    EXPECT_EQ(leaving.codes(), Codes{1});
    EXPECT_EQ(staying.codes(), (Codes{1, 1}));
}

TEST(AbstractThreadTest, ObserverAddedDuringAMessageHearsTheNextOnly) {
    TestThread thread(returnsZero);
    Observer late;
    bool added = false;
    Observer adding([&](IMessage*) {
        if (!added) thread.addObserver(&late);
        added = true;
    });
    thread.addObserver(&adding);

    thread.requestStart();
    thread.requestStart();

    EXPECT_EQ(late.codes(), Codes{1});
}

TEST(AbstractThreadTest, NoLockIsHeldWhileObserversAreCalled) {
    TestThread thread(returnsZero);
    std::atomic<bool> lockedElsewhere{false};
    Observer observer([&](IMessage*) {
        TestThread other([&] {
            thread.lock();
            lockedElsewhere = true;
            thread.unlock();
            return 0U;
        });
        other.start();
        other.wait(kFailureMs);
    });
    thread.addObserver(&observer);

    thread.requestStart();

    EXPECT_TRUE(lockedElsewhere);
}

TEST(AbstractThreadTest, BodyThatThrowsEndsItsThreadAndNothingElse) {
    TestThread thread([]() -> std::uint32_t { throw std::bad_alloc(); });
    std::uint32_t code = 99;

    thread.start();

    EXPECT_EQ(thread.wait(kFailureMs), 0U);
    EXPECT_TRUE(thread.isFinished());
    EXPECT_TRUE(platform::threadExitCode(*thread.getHandle(), code));
    EXPECT_EQ(code, 0U);
}

TEST(AbstractThreadTest, ObserverMayDestroyTheThreadObjectOnTheThreadItself) {
    std::atomic<bool> destroyed{false};
    TestThread* thread = nullptr;
    Observer observer([&](IMessage* message) {
        if (message->getCode() != 3) return;
        delete thread;
        destroyed = true;
    });
    thread = new TestThread(returnsZero);
    thread->addObserver(&observer);

    thread->start();

    EXPECT_TRUE(eventually([&] { return destroyed.load(); }));
}
