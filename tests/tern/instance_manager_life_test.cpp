// How an instance manager is created, run and deleted.
#include "tern/instance_manager.h"

#include "arbor/i_database.h"
#include "system.h"
#include "tern/channel_settings.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using tern::IInstanceManager;

TEST(InstanceManagerRunTest, RunIsTheLoopOfTheBroker) {
    test::TestManager<> manager;
    manager.onPump = [&] { manager.broker.stop(nullptr, 0); };

    EXPECT_EQ(manager.run(), 0U);
    EXPECT_EQ(manager.pumps, 1);
}

TEST(InstanceManagerRunTest, RunThatIsNotReadyAnswersAllOnes) {
    struct Unready : test::TestManager<> {
        bool initialize() override { return false; }
    } unready;

    EXPECT_EQ(unready.run(), 0xFFFFFFFFU);
    EXPECT_EQ(unready.runLoop(), 0xFFFFFFFFU);
    EXPECT_EQ(unready.pumps, 0);
}

TEST(InstanceManagerRunTest, RunIsRefusedWhileTheBrokerIsNotReady) {
    struct UnreadyBroker : tern::EventBroker {
        using EventBroker::EventBroker;
        bool isReady() override { return ready; }
        bool ready = false;
    };
    test::TestManager<UnreadyBroker> manager;
    manager.onPump = [&] { manager.broker.stop(nullptr, 0); };

    EXPECT_EQ(manager.run(), 0xFFFFFFFFU);
    EXPECT_EQ(manager.pumps, 0);
    manager.broker.ready = true;
    EXPECT_EQ(manager.run(), 0U);
    EXPECT_EQ(manager.pumps, 1);
}

TEST(InstanceManagerRunTest, ReadyBrokerIsNotAskedAgain) {
    struct AskedBroker : tern::EventBroker {
        using EventBroker::EventBroker;
        bool isReady() override {
            ++questions;
            return questions > 1;
        }
        int questions = 0;
    };
    test::TestManager<AskedBroker> manager;

    EXPECT_FALSE(manager.initialize());
    EXPECT_TRUE(manager.initialize());
    EXPECT_TRUE(manager.initialize());

    EXPECT_EQ(manager.broker.questions, 2);
}

TEST(NewInstanceManagerTest, ArgumentsAreAcceptedAndNotUsed) {
    const char* const arguments[] = {"inputPipe=x", "y"};
    test::setChannel(L"before", 5);
    IInstanceManager* manager = tern::NewInstanceManager("version=1.0.0.0", 2, arguments);
    ASSERT_NE(manager, nullptr);
    EXPECT_STREQ(tern::channelSettings().inputPipe.data(), L"before");

    tern::TERN_DeleteInstanceManager(manager);
    EXPECT_EQ(manager, nullptr);

    manager = tern::NewInstanceManager("version=1.0.0.0", 0, nullptr);
    EXPECT_NE(manager, nullptr);
    tern::TERN_DeleteInstanceManager(manager);
    tern::TERN_DeleteInstanceManager(manager);  // `manager` is null now, which does nothing
}

TEST(NewInstanceManagerTest, ComponentsGoWhileTheDatabaseStillStands) {
    IInstanceManager* manager = tern::NewInstanceManager("", 0, nullptr);
    bool registryStood = false;
    auto* listener = new test::ListenerComponent([](arbor::IMessage&) { return false; });
    arbor::IDatabase* database = manager->getDatabase();
    listener->onDestruction = [&registryStood, database] {
        registryStood = database->contains(L"/VeloListener/GUID");
    };
    ASSERT_TRUE(manager->addComponent(listener));

    tern::TERN_DeleteInstanceManager(manager);

    EXPECT_TRUE(registryStood);
}

TEST(NewInstanceManagerTest, StatusChannelRunsFromCommandLineToListener) {
    contract::PipeServer server(test::newPipeName());
    IInstanceManager* manager = tern::NewInstanceManager("version=1.0.0.0", 0, nullptr);
    std::vector<std::int32_t> statuses;
    auto* listener = new test::ListenerComponent([&](arbor::IMessage& message) {
        statuses.push_back(message.getProperties()->getInt(L"status", -1));
        if (statuses.size() == 2) manager->getEventBroker()->stop(nullptr, 0);
        return false;
    });
    ASSERT_TRUE(manager->addComponent(listener));
    const std::string name = [&] {
        std::string narrow;
        for (const wchar_t c : server.path().substr(9))
            narrow += static_cast<char>(c);
        return narrow;
    }();
    // Arguments are separated by spaces, so the name of the pipe must not contain one.
    ASSERT_EQ(name.find(' '), std::string::npos);
    ASSERT_TRUE(manager->createInstance("VeloEventGenerator",
                                        ("inputPipe=" + name + " printerid=7").c_str()));
    server.write(records::record(2, 3, records::number(41)));
    server.write(records::record(2, 3, records::number(42)));

    EXPECT_EQ(manager->run(), 0U);

    EXPECT_EQ(statuses, (std::vector<std::int32_t>{41, 42}));
    tern::TERN_DeleteInstanceManager(manager);
}
