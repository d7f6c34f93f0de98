// A thread object that goes while its thread is at work, and one whose thread comes too late.
#include "arbor/abstract_thread.h"

#include "platform/thread.h"
#include "tests/support/eventually.h"
#include "tests/support/test_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using arbor::AbstractThread;
using test::eventually;
using test::kFailureMs;
using test::TestThread;

namespace {

// What the body of a BlockingThread has come to; outlives it.
struct Progress {
    std::atomic<bool> isOutside{false};
    std::atomic<bool> mayComeBack{false};
    std::atomic<bool> wasLetIn{false};
    std::atomic<bool> wasRefused{false};
};

// Blocks outside its object. Leaves it to its base to end the use of the object.
class BlockingThread : public AbstractThread {
public:
    explicit BlockingThread(Progress& progress) : _progress(progress) {}

    std::uint32_t run() override {
        Progress& progress = _progress;
        Outside outside(*this);
        progress.isOutside = true;
        eventually([&] { return progress.mayComeBack.load(); });
        try {
            outside.back();
        } catch (const ObjectGone&) {
            progress.wasRefused = true;
            throw;
        }
        progress.wasLetIn = true;
        return 0;
    }

private:
    Progress& _progress;
};

// Runs its body on the caller's thread, whenever the test wants.
class LateThread : public TestThread {
public:
    using AbstractThread::endThreadUse;
    using AbstractThread::runOnThisThread;
    using TestThread::TestThread;
};

}  // namespace

TEST(AbstractThreadDestructionTest, DestructionWaitsForABodyThatUsesItsObject) {
    constexpr std::uint32_t kLongerThanADestructor = 50;
    std::atomic<bool> isInside{false};
    std::atomic<bool> isLeaving{false};
    std::atomic<bool> isDone{false};
    auto thread = std::make_unique<TestThread>([&] {
        isInside = true;
        eventually([&] { return isLeaving.load(); });
        platform::sleepFor(kLongerThanADestructor);
        isDone = true;
        return 0U;
    });
    thread->start();
    ASSERT_TRUE(eventually([&] { return isInside.load(); }));

    isLeaving = true;
    thread.reset();

    EXPECT_TRUE(isDone);
}

TEST(AbstractThreadDestructionTest, BodyThatBlocksOutsideHoldsNothingUpAndIsRefusedAfterwards) {
    Progress progress;
    auto thread = std::make_unique<BlockingThread>(progress);
    thread->start();
    ASSERT_TRUE(eventually([&] { return progress.isOutside.load(); }));

    thread.reset();
    progress.mayComeBack = true;

    EXPECT_TRUE(eventually([&] { return progress.wasRefused || progress.wasLetIn; }));
    EXPECT_FALSE(progress.wasLetIn);
}

TEST(AbstractThreadDestructionTest, BodyThatComesBackInTimeGoesOnInItsObject) {
    Progress progress;
    BlockingThread thread(progress);
    thread.start();
    ASSERT_TRUE(eventually([&] { return progress.isOutside.load(); }));

    progress.mayComeBack = true;

    EXPECT_EQ(thread.wait(kFailureMs), 0U);
    EXPECT_TRUE(progress.wasLetIn);
}

TEST(AbstractThreadDestructionTest, BodyThatComesAfterTheEndOfUseIsNotRun) {
    bool hasRun = false;
    LateThread thread([&] {
        hasRun = true;
        return 42U;
    });
    thread.endThreadUse();

    EXPECT_EQ(thread.runOnThisThread(), 0U);

    EXPECT_FALSE(hasRun);
}
