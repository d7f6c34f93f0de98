// The framework ends while its generators are still working, under every schedule.
#include "tests/schedules/scene_parts.h"

#include <memory>

namespace scene {
namespace {

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
    playEverySchedule([] {
        Framework framework;
        int received = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) { ++received; }));
        feedStatus(1);
        closeChannel();
        require(addReader(framework), "the reader is made");

        framework.run();

        require(received <= 1, "one record is one message");
    });
}

TEST(ShutdownSchedules, ReaderWithoutAPipeStopsTheLoop) {
    playEverySchedule([] {
        Framework framework;
        platform::simulated::world().pipes.reset();
        require(addReader(framework), "the reader is made");

        framework.run();
    });
}

TEST(ShutdownSchedules, BrokerGoesWhileTheReaderIsBetweenReads) {
    playEverySchedule([] {
        Framework framework;
        stopAtFirstMessage(framework);
        feedStatus(1);
        feedStatus(2);
        closeChannel();
        require(addReader(framework), "the reader is made");

        framework.run();
    });
}

TEST(ShutdownSchedules, BrokerGoesWhileTheReaderIsBlocked) {
    playEverySchedule([] {
        Framework framework;
        stopAtFirstMessage(framework);
        feedStatus(1);
        require(addReader(framework), "the reader is made");

        framework.run();
    });
}

TEST(ShutdownSchedules, BrokerGoesWhileAProducerEnqueues) {
    playEverySchedule([] {
        Framework framework;
        stopAtFirstMessage(framework);
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2, 3}));

        framework.run();
    });
}

TEST(ShutdownSchedules, BrokerGoesWhileTheTimerSleeps) {
    playEverySchedule([] {
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
}

TEST(ShutdownSchedules, BrokerGoesBeforeItsThreadsWereStarted) {
    playEverySchedule([] {
        Framework framework;
        framework.add(std::make_unique<Producer>(framework, Codes{1}));
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();
    });
}

TEST(ShutdownSchedules, ReaderIsRemovedAndDestroyedWhileItReads) {
    playEverySchedule([] {
        Framework framework;
        arbor::PropertyHolder* reader = nullptr;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            framework.broker().removeComponent(reader, true);
            framework.stop();
        }));
        feedStatus(1);
        feedStatus(2);
        reader = addOwnReader(framework);

        framework.run();
    });
}

TEST(ShutdownSchedules, ReaderIsRemovedAndDestroyedWhileItEnds) {
    playEverySchedule([] {
        Framework framework;
        arbor::PropertyHolder* reader = nullptr;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            framework.broker().removeComponent(reader, true);
            framework.stop();
        }));
        feedStatus(1);
        closeChannel();
        reader = addOwnReader(framework);

        framework.run();
    });
}

TEST(ShutdownSchedules, ProducerIsDestroyedBeforeTheLoopStartedIt) {
    playEverySchedule([] {
        Framework framework;
        bool wasReceived = false;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage& message) {
            wasReceived = wasReceived || message.getCode() == 1;
        }));
        auto* const producer = framework.add(std::make_unique<Producer>(framework, Codes{1}));
        framework.broker().removeComponent(producer, true);
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();

        require(!wasReceived, "a thread that was never started posts nothing");
    });
}

}  // namespace
}  // namespace scene
