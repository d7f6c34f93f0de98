#include "arbor/rundown.h"

#include "tests/support/eventually.h"
#include "tests/support/test_thread.h"

#include <gtest/gtest.h>

#include <atomic>

using arbor::Rundown;

TEST(RundownTest, UsersComeAndGoUntilItIsClosed) {
    Rundown rundown;

    EXPECT_TRUE(rundown.enter());
    EXPECT_TRUE(rundown.enter());
    rundown.leave();
    rundown.leave();
    rundown.close();

    EXPECT_FALSE(rundown.enter());
    EXPECT_FALSE(static_cast<bool>(Rundown::Visit(rundown)));
}

TEST(RundownTest, CloseFromInsideLeavesTheCallersOwnVisit) {
    Rundown rundown;
    ASSERT_TRUE(rundown.enter());

    rundown.close(1);

    EXPECT_FALSE(rundown.enter());
    rundown.leave();
}

TEST(RundownTest, CloseWaitsForThoseInside) {
    Rundown rundown;
    std::atomic<bool> closed{false};
    ASSERT_TRUE(rundown.enter());
    test::TestThread closer([&] {
        rundown.close();
        closed = true;
        return 0U;
    });

    closer.start();
    ASSERT_TRUE(test::eventually([&] {  // when enter() is refused, the closer has begun
        if (!rundown.enter()) return true;
        rundown.leave();
        return false;
    }));
    EXPECT_FALSE(closed);
    rundown.leave();

    EXPECT_EQ(closer.wait(test::kFailureMs), 0U);
    EXPECT_TRUE(closed);
}
