#include "arbor/message.h"

#include "arbor/simple_message.h"
#include "tests/support/test_properties.h"

#include <gtest/gtest.h>

#include <memory>

using arbor::Guid;
using arbor::IMessage;
using arbor::Message;
using arbor::PropertyHolder;
using arbor::SimpleMessage;

namespace {

constexpr Guid kType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

}  // namespace

TEST(MessageTest, CarriesTypeCodeAndFlags) {
    const Message message(&kType, 0xFFFFFFFF, 0x80000000);
    const SimpleMessage simple(&kType, 7, 9);

    EXPECT_EQ(message.getType(), &kType);
    EXPECT_EQ(message.getCode(), 0xFFFFFFFFU);
    EXPECT_EQ(message.getFlags(), 0x80000000U);
    EXPECT_EQ(simple.getType(), &kType);
    EXPECT_EQ(simple.getCode(), 7U);
    EXPECT_EQ(simple.getFlags(), 9U);
}

TEST(MessageTest, SetFlagsReplacesThem) {
    Message message(&kType, 0, 6);
    SimpleMessage simple(&kType, 0, 6);

    for (IMessage* each : {static_cast<IMessage*>(&message), static_cast<IMessage*>(&simple)}) {
        each->setFlags(9);
        EXPECT_EQ(each->getFlags(), 9U);
    }
}

TEST(MessageTest, OnlyTheLowestFlagMeansExclusive) {
    for (const std::uint32_t flags : {1U, 3U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(Message(&kType, 0, flags).isExclusive()) << flags;
        EXPECT_TRUE(SimpleMessage(&kType, 0, flags).isExclusive()) << flags;
    }
    for (const std::uint32_t flags : {0U, 2U, 0xFFFFFFFEU}) {
        EXPECT_FALSE(Message(&kType, 0, flags).isExclusive()) << flags;
        EXPECT_FALSE(SimpleMessage(&kType, 0, flags).isExclusive()) << flags;
    }
}

TEST(MessageTest, BagIsEmptyWhateverHolderItIsMadeWith) {
    PropertyHolder payload;
    payload.setInt(L"key", 5);

    const Message message(&kType, 0, 0, &payload);

    EXPECT_FALSE(message.getProperties()->hasProperty(L"key"));
    EXPECT_NE(message.getProperties(), &payload);
    EXPECT_EQ(payload.getInt(L"key", 0), 5);
}

TEST(MessageTest, BothWaysToTheBagLeadToTheSameOne) {
    Message message(&kType, 0, 0);
    const Message& same = message;

    message.getProperties()->setInt(L"key", 5);

    EXPECT_EQ(same.getProperties(), message.getProperties());
    EXPECT_EQ(same.getProperties()->getInt(L"key", 0), 5);
}

TEST(MessageTest, DestroysEveryPropertyOfItsBag) {
    int destroyed = 0;
    auto message = std::make_unique<Message>(&kType, 0U, 0U);
    message->getProperties()->adoptProperty(L"a", new test::CountedProperty(destroyed, 1));
    message->getProperties()->adoptProperty(L"b", new test::CountedProperty(destroyed, 2));

    message.reset();

    EXPECT_EQ(destroyed, 2);
}

TEST(SimpleMessageTest, AllSimpleMessagesShareOneEmptyBag) {
    SimpleMessage first(&kType, 1, 0);
    const SimpleMessage second(&kType, 2, 1);

    EXPECT_EQ(first.getProperties(), second.getProperties());
    EXPECT_EQ(first.getProperties(), static_cast<const SimpleMessage&>(first).getProperties());
    EXPECT_FALSE(first.getProperties()->hasProperty(L"subcode"));
    EXPECT_EQ(first.getProperties()->getInt(L"subcode", -1), -1);
}
