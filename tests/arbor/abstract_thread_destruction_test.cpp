// A thread object is destroyed while its thread runs, or before its thread begins.
#include "arbor/abstract_thread.h"

#include "platform/thread.h"
#include "tests/support/eventually.h"
#include "tests/support/test_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>

using arbor::AbstractThread;
using test::eventually;
using test::kFailureMs;
using test::TestThread;

namespace {

constexpr std::uint32_t kLongerThanADestructor = 50;

// How far the body of a BlockingThread has come. The test owns it, so that it exists longer than
// the thread object.
struct Progress {
    std::atomic<bool> isOutside{false};
    std::atomic<bool> mayComeBack{false};
    std::atomic<bool> wasLetIn{false};
    std::atomic<bool> wasRefused{false};
    std::atomic<bool> mustThrow{false};  // the work outside ends with an exception
    std::atomic<bool> wasThrownAt{false};
    std::atomic<bool> mustStay{false};  // the body stays inside until the destruction begins
    std::atomic<bool> isLeaving{false};
    std::atomic<bool> isDone{false};
};

// Its body blocks outside the object. It has no destructor of its own, so the destructor of the
// base class must end the use of the object.
class BlockingThread : public AbstractThread {
public:
    explicit BlockingThread(Progress& progress) : _progress(progress) {}

    std::uint32_t run() override {
        Progress& progress = _progress;
        try {
            outside([&progress] {
                progress.isOutside = true;
                eventually([&] { return progress.mayComeBack.load(); });
                if (progress.mustThrow) throw std::runtime_error("blocked in vain");
            });
        } catch (const ObjectGone&) {
            progress.wasRefused = true;
            throw;
        } catch (const std::runtime_error&) {
            progress.wasThrownAt = true;
        }
        progress.wasLetIn = true;
        eventually([&] { return !progress.mustStay || progress.isLeaving; });
        if (progress.mustStay) platform::sleepFor(kLongerThanADestructor);
        progress.isDone = true;
        return 0;
    }

private:
    Progress& _progress;
};

// For a body that still uses its object when the destruction begins: the destructor of the concrete
// class waits for it, as the base class demands.
class WaitedForThread final : public BlockingThread {
public:
    using BlockingThread::BlockingThread;
    ~WaitedForThread() override { endThreadUse(); }
};

// Lets the test run the body on its own thread, at the moment that it chooses.
class LateThread : public TestThread {
public:
    using AbstractThread::endThreadUse;
    using AbstractThread::runOnThisThread;
    using TestThread::TestThread;
};

}  // namespace

TEST(AbstractThreadDestructionTest, DestructionWaitsForABodyThatUsesItsObject) {
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

TEST(AbstractThreadDestructionTest, BodyIsBackInItsObjectWhenItsWorkOutsideHasThrown) {
    Progress progress;
    progress.mustThrow = progress.mustStay = progress.mayComeBack = true;
    auto thread = std::make_unique<WaitedForThread>(progress);
    thread->start();
    ASSERT_TRUE(eventually([&] { return progress.wasThrownAt.load(); }));

    progress.isLeaving = true;
    thread.reset();

    EXPECT_TRUE(progress.isDone);  // the destructor has waited for the body
}

TEST(AbstractThreadDestructionTest, WorkOutsideThatThrowsInAGoneObjectTellsTheBodyThatItIsGone) {
    Progress progress;
    progress.mustThrow = true;
    auto thread = std::make_unique<BlockingThread>(progress);
    thread->start();
    ASSERT_TRUE(eventually([&] { return progress.isOutside.load(); }));

    thread.reset();
    progress.mayComeBack = true;

    EXPECT_TRUE(eventually([&] { return progress.wasRefused || progress.wasThrownAt; }));
    EXPECT_TRUE(progress.wasRefused);
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
