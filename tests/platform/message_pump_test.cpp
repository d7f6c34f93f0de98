#include "platform/message_pump.h"

#include "system.h"

#include <gtest/gtest.h>

namespace {

class MessagePumpTest : public testing::Test {
protected:
    void SetUp() override {
        while (platform::isMessageWaiting())
            platform::dispatchOneMessage();
    }
};

TEST_F(MessagePumpTest, AnEmptyQueueHasNothingWaiting) {
    EXPECT_FALSE(platform::isMessageWaiting());
}

TEST_F(MessagePumpTest, LookingTakesNothingOut) {
    contract::postMessage([] {});

    EXPECT_TRUE(platform::isMessageWaiting());
    EXPECT_TRUE(platform::isMessageWaiting());
    EXPECT_TRUE(platform::dispatchOneMessage());
}

TEST_F(MessagePumpTest, OneMessageIsDispatchedAtATimeInTheirOrder) {
    std::string order;
    contract::postMessage([&] { order += 'a'; });
    contract::postMessage([&] { order += 'b'; });

    EXPECT_TRUE(platform::dispatchOneMessage());
    EXPECT_EQ(order, "a");
    EXPECT_TRUE(platform::dispatchOneMessage());
    EXPECT_EQ(order, "ab");
    EXPECT_FALSE(platform::isMessageWaiting());
}

TEST_F(MessagePumpTest, AQuitMessageIsTakenAndDropped) {
    contract::postQuit();

    EXPECT_TRUE(platform::isMessageWaiting());
    EXPECT_FALSE(platform::dispatchOneMessage());
    EXPECT_FALSE(platform::isMessageWaiting());
}

TEST_F(MessagePumpTest, WorkIsDoneOnceByTheNextMessage) {
    int done = 0;
    const auto count = [](void* counter) { ++*static_cast<int*>(counter); };

    EXPECT_TRUE(platform::workInNextMessage(count, &done));
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(platform::isMessageWaiting());
    EXPECT_EQ(done, 0) << "looking does not take the message";

    EXPECT_TRUE(platform::dispatchOneMessage());
    EXPECT_EQ(done, 1);
    EXPECT_FALSE(platform::isMessageWaiting());
}

TEST_F(MessagePumpTest, WorkCanBeAskedForAgain) {
    int done = 0;
    const auto count = [](void* counter) { ++*static_cast<int*>(counter); };
    platform::workInNextMessage(count, &done);
    platform::dispatchOneMessage();

    EXPECT_TRUE(platform::workInNextMessage(count, &done));
    platform::dispatchOneMessage();
    contract::postMessage([] {});
    platform::dispatchOneMessage();

    EXPECT_EQ(done, 2);
}

TEST_F(MessagePumpTest, AMessageMayPostTheNext) {
    bool wasLast = false;
    contract::postMessage([&] { contract::postMessage([&] { wasLast = true; }); });

    EXPECT_TRUE(platform::dispatchOneMessage());
    EXPECT_TRUE(platform::dispatchOneMessage());

    EXPECT_TRUE(wasLast);
}

}  // namespace
