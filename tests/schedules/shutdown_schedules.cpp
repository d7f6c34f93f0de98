// Ends of the framework while its generators are somewhere in their work, in every order.
#include "tests/schedules/scene_parts.h"

#include <gtest/gtest.h>

namespace {

using exploring::everySchedule;
using exploring::require;
using scene::Framework;
using scene::kForcedSwitches;
using scene::Listener;
using scene::OutsideThread;
using scene::Producer;

bool addReader(Framework& framework) {
    return framework.manager().createInstance(L"VeloEventGenerator", L"");
}

// Adds the reader of the channel as a component of the test, which may take it away again.
arbor::PropertyHolder* addOwnReader(Framework& framework) {
    arbor::PropertyHolder* const reader =
        framework.manager().createInstanceByGuid(&tern::kVeloEventGeneratorId, L"");
    require(framework.manager().addComponent(reader), "the broker takes the reader");
    return reader;
}

TEST(ShutdownSchedules, ReaderThatLosesItsPipeStopsTheLoop) {
    const long played = everySchedule("ReaderThatLosesItsPipeStopsTheLoop", kForcedSwitches, [] {
        Framework framework;
        int heard = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) { ++heard; }));
        scene::feedStatus(1);
        scene::closeChannel();
        require(addReader(framework), "the reader is made");

        framework.run();

        require(heard <= 1, "one record is one message");
    });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, ReaderWithoutAPipeStopsTheLoop) {
    const long played = everySchedule("ReaderWithoutAPipeStopsTheLoop", kForcedSwitches, [] {
        Framework framework;
        platform::simulated::world().pipes.reset();
        require(addReader(framework), "the reader is made");

        framework.run();
    });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, BrokerGoesWhileTheReaderIsBetweenReads) {
    const long played =
        everySchedule("BrokerGoesWhileTheReaderIsBetweenReads", kForcedSwitches, [] {
            Framework framework;
            framework.add(std::make_unique<Listener>([&](arbor::IMessage&) { framework.stop(); }));
            scene::feedStatus(1);
            scene::feedStatus(2);
            scene::closeChannel();
            require(addReader(framework), "the reader is made");

            framework.run();
        });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, BrokerGoesWhileTheReaderIsBlocked) {
    const long played = everySchedule("BrokerGoesWhileTheReaderIsBlocked", kForcedSwitches, [] {
        Framework framework;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) { framework.stop(); }));
        scene::feedStatus(1);
        require(addReader(framework), "the reader is made");

        framework.run();
    });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, BrokerGoesWhileAProducerEnqueues) {
    const long played = everySchedule("BrokerGoesWhileAProducerEnqueues", kForcedSwitches, [] {
        Framework framework;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) { framework.stop(); }));
        framework.add(std::make_unique<Producer>(framework, std::vector<std::uint32_t>{1, 2, 3}));

        framework.run();
    });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, BrokerGoesWhileTheTimerSleeps) {
    const long played = everySchedule("BrokerGoesWhileTheTimerSleeps", kForcedSwitches, [] {
        Framework framework;
        int ticks = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            if (++ticks == 2) framework.stop();
        }));
        require(framework.manager().createInstance(L"TimerEventGenerator", L"interval=50"),
                "the timer is made");

        framework.run();

        require(ticks == 2, "nothing is delivered after the stop");
    });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, BrokerGoesBeforeItsThreadsWereStarted) {
    const long played = everySchedule("BrokerGoesBeforeItsThreadsWereStarted", kForcedSwitches, [] {
        Framework framework;
        framework.add(std::make_unique<Producer>(framework, std::vector<std::uint32_t>{1}));
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();
    });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, ReaderIsRemovedAndDestroyedWhileItReads) {
    const long played =
        everySchedule("ReaderIsRemovedAndDestroyedWhileItReads", kForcedSwitches, [] {
            Framework framework;
            arbor::PropertyHolder* reader = nullptr;
            framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
                framework.broker().removeComponent(reader, true);
                framework.stop();
            }));
            scene::feedStatus(1);
            scene::feedStatus(2);
            reader = addOwnReader(framework);

            framework.run();
        });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, ReaderIsRemovedAndDestroyedWhileItEnds) {
    const long played =
        everySchedule("ReaderIsRemovedAndDestroyedWhileItEnds", kForcedSwitches, [] {
            Framework framework;
            arbor::PropertyHolder* reader = nullptr;
            framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
                framework.broker().removeComponent(reader, true);
                framework.stop();
            }));
            scene::feedStatus(1);
            scene::closeChannel();
            reader = addOwnReader(framework);

            framework.run();
        });
    EXPECT_GT(played, 0);
}

TEST(ShutdownSchedules, ProducerIsDestroyedBeforeTheLoopStartedIt) {
    const long played =
        everySchedule("ProducerIsDestroyedBeforeTheLoopStartedIt", kForcedSwitches, [] {
            Framework framework;
            bool wasHeard = false;
            framework.add(std::make_unique<Listener>(
                [&](arbor::IMessage& message) { wasHeard = wasHeard || message.getCode() == 1; }));
            auto* const producer =
                framework.add(std::make_unique<Producer>(framework, std::vector<std::uint32_t>{1}));
            framework.broker().removeComponent(producer, true);
            const OutsideThread stopper([&] { framework.stop(); });

            framework.run();

            require(!wasHeard, "a thread that was never started posts nothing");
        });
    EXPECT_GT(played, 0);
}

}  // namespace
