// Messages from several threads to the main thread, in every order.
#include "tests/schedules/scene_parts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace scene {
namespace {

bool isBefore(const Codes& codes, std::uint32_t first, std::uint32_t second) {
    return std::find(codes.begin(), codes.end(), first) <
           std::find(codes.begin(), codes.end(), second);
}

TEST(DeliverySchedules, TwoProducersOfTwoMessagesLoseNoneAndKeepTheirOrder) {
    playEverySchedule([] {
        constexpr std::size_t kMessages = 4;
        Framework framework;
        Codes heard;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage& message) {
            heard.push_back(message.getCode());
            if (heard.size() == kMessages) framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{11, 12}));
        framework.add(std::make_unique<Producer>(framework, Codes{21, 22}));

        framework.run();

        require(heard.size() == kMessages, "every message is delivered once");
        require(isBefore(heard, 11, 12) && isBefore(heard, 21, 22),
                "the messages of one producer keep their order");
    });
}

TEST(DeliverySchedules, StopFromAListenerEndsTheLoopAfterThatMessage) {
    playEverySchedule([] {
        Framework framework;
        int heard = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            ++heard;
            framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2}));

        framework.run();

        require(heard == 1, "nothing is delivered after the stop");
    });
}

TEST(DeliverySchedules, StopFromAnotherThreadEndsTheLoop) {
    playEverySchedule([] {
        Framework framework;
        Codes heard;
        framework.add(std::make_unique<Listener>(
            [&](arbor::IMessage& message) { heard.push_back(message.getCode()); }));
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2}));
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();

        require(heard.size() <= 2 && std::is_sorted(heard.begin(), heard.end()),
                "what is delivered comes in order");
    });
}

TEST(DeliverySchedules, ListenerAndThreadMayStopAtTheSameTime) {
    playEverySchedule([] {
        Framework framework;
        int heard = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            ++heard;
            framework.stop();
        }));
        framework.broker().post(&tern::kVeloListenerId, 1, 0, nullptr);
        framework.broker().post(&tern::kVeloListenerId, 2, 0, nullptr);
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();

        require(heard <= 1, "nothing is delivered after a stop");
    });
}

TEST(DeliverySchedules, ListenerThatLeavesWhileMessagesArriveHearsNoMore) {
    playEverySchedule([] {
        Framework framework;
        int leaverHeard = 0;
        Listener* leaver = nullptr;
        leaver = framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            ++leaverHeard;
            framework.broker().removeComponent(leaver, false);
        }));
        const std::unique_ptr<Listener> owned(leaver);
        framework.add(std::make_unique<Listener>([&](arbor::IMessage& message) {
            if (message.getCode() == 2) framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2}));

        framework.run();

        require(leaverHeard == 1, "a removed listener hears no further message");
    });
}

}  // namespace
}  // namespace scene
