#include "platform/thread.h"

#include "platform/lock.h"

#include <gtest/gtest.h>
#include <atomic>
#include <chrono>
#include <memory>

namespace {

using platform::kNoTimeout;

// A thread that waits until the test lets it go on, and then ends with a number.
class ThreadTest : public testing::Test {
protected:
    static constexpr std::uint32_t kAnswer = 42;
    static constexpr std::uint32_t kTimedOut = 258;
    static constexpr std::uint32_t kFailed = 0xFFFFFFFF;

    static std::uint32_t run(void* parameter) {
        auto* const self = static_cast<ThreadTest*>(parameter);
        self->_idInside = platform::currentThreadId();
        self->_gate.lock();
        self->_gate.unlock();
        return kAnswer;
    }

    void SetUp() override { _gate.lock(); }
    void start() { _thread = platform::startThread(&ThreadTest::run, this, _id); }
    void letGo() {
        _gate.unlock();
        ASSERT_EQ(platform::waitForThread(_thread, kNoTimeout), 0U);
    }
    void TearDown() override { platform::closeThread(_thread); }

    platform::CriticalSection _gate;
    platform::NativeHandle _thread = nullptr;
    std::atomic<std::uint32_t> _id{0};
    std::uint32_t _idInside = 0;
};

TEST_F(ThreadTest, ItRunsBesideItsCreator) {
    start();

    ASSERT_NE(_thread, nullptr);
    EXPECT_EQ(platform::waitForThread(_thread, 0), kTimedOut);
    letGo();
}

TEST_F(ThreadTest, ItsExitCodeIsStillActiveUntilItEnds) {
    start();

    std::uint32_t code = 0;
    EXPECT_TRUE(platform::threadExitCode(_thread, code));
    EXPECT_EQ(code, platform::kStillActive);
    letGo();
}

TEST_F(ThreadTest, ItsExitCodeIsWhatTheProcedureReturned) {
    start();
    letGo();

    std::uint32_t code = 0;
    EXPECT_TRUE(platform::threadExitCode(_thread, code));
    EXPECT_EQ(code, kAnswer);
}

TEST_F(ThreadTest, TheIdIsTheOneThatTheThreadHas) {
    start();
    letGo();

    EXPECT_NE(_id, 0U);
    EXPECT_EQ(_id, _idInside);
    EXPECT_NE(_id, platform::currentThreadId());
}

TEST_F(ThreadTest, AnEndedThreadCanBeWaitedForAgain) {
    start();
    letGo();

    EXPECT_EQ(platform::waitForThread(_thread, 0), 0U);
    EXPECT_EQ(platform::waitForThread(_thread, kNoTimeout), 0U);
}

// Owned by the test and by its thread: nobody can wait for a thread whose handle is closed, so the
// last of the two deletes it.
struct Forgotten {
    platform::CriticalSection gate;
    std::atomic<bool> hasPassed{false};
    static std::uint32_t run(void* parameter) {
        const std::unique_ptr<std::shared_ptr<Forgotten>> self(
            static_cast<std::shared_ptr<Forgotten>*>(parameter));
        (*self)->gate.lock();
        (*self)->gate.unlock();
        (*self)->hasPassed = true;
        return 0;
    }
};

TEST(ForgottenThreadTest, AClosedHandleDoesNotStopTheThread) {
    const auto forgotten = std::make_shared<Forgotten>();
    auto ofThread = std::make_unique<std::shared_ptr<Forgotten>>(forgotten);
    forgotten->gate.lock();
    std::atomic<std::uint32_t> id{0};

    const auto thread = platform::startThread(&Forgotten::run, ofThread.get(), id);
    ASSERT_NE(thread, nullptr);
    static_cast<void>(ofThread.release());
    platform::closeThread(thread);
    forgotten->gate.unlock();

    for (int ms = 0; !forgotten->hasPassed && ms < 10'000; ++ms)
        platform::sleepFor(1);
    EXPECT_TRUE(forgotten->hasPassed);
}

// Its thread reads the variable in which startThread() stores the id before it does anything else.
struct SelfAsking {
    static std::uint32_t run(void* parameter) {
        auto* const self = static_cast<SelfAsking*>(parameter);
        self->foundByItself = self->id;
        return 0;
    }

    std::atomic<std::uint32_t> id{0};
    std::uint32_t foundByItself = 0;
};

TEST(ThreadIdTest, AThreadThatLooksAtOnceFindsItsIdWhereItsCreatorAskedForIt) {
    // If the id were stored after the start, only a few of a thousand threads would notice.
    constexpr int kThreads = 2000;
    int misses = 0;

    for (int count = 0; count < kThreads; ++count) {
        SelfAsking asking;
        const auto thread = platform::startThread(&SelfAsking::run, &asking, asking.id);
        ASSERT_EQ(platform::waitForThread(thread, kNoTimeout), 0U);
        platform::closeThread(thread);
        if (asking.foundByItself == 0 || asking.foundByItself != asking.id) ++misses;
    }

    EXPECT_EQ(misses, 0);
}

TEST_F(ThreadTest, WithoutAHandleQuestionsFailAndClosingDoesNothing) {
    std::uint32_t code = 7;

    EXPECT_FALSE(platform::threadExitCode(nullptr, code));
    EXPECT_EQ(code, 7U);
    EXPECT_EQ(platform::waitForThread(nullptr, kNoTimeout), kFailed);
    platform::closeThread(nullptr);
    _gate.unlock();
}

TEST(SleepTest, ItEndsWithoutASignalAndNotAtOnce) {
    constexpr std::chrono::milliseconds kAsked(40), kTickOfTheClock(16);
    const auto began = std::chrono::steady_clock::now();

    platform::sleepFor(static_cast<std::uint32_t>(kAsked.count()));

    EXPECT_GE(std::chrono::steady_clock::now() - began, kAsked - kTickOfTheClock);
}

}  // namespace
