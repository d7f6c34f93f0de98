// Several threads send messages to the main thread, under every schedule.
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
        Codes received;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage& message) {
            received.push_back(message.getCode());
            if (received.size() == kMessages) framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{11, 12}));
        framework.add(std::make_unique<Producer>(framework, Codes{21, 22}));

        framework.run();

        require(received.size() == kMessages, "every message is delivered once");
        require(isBefore(received, 11, 12) && isBefore(received, 21, 22),
                "the messages of one producer keep their order");
    });
}

TEST(DeliverySchedules, StopFromAListenerEndsTheLoopAfterThatMessage) {
    playEverySchedule([] {
        Framework framework;
        int received = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            ++received;
            framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2}));

        framework.run();

        require(received == 1, "nothing is delivered after the stop");
    });
}

TEST(DeliverySchedules, StopFromAnotherThreadEndsTheLoop) {
    playEverySchedule([] {
        Framework framework;
        Codes received;
        framework.add(std::make_unique<Listener>(
            [&](arbor::IMessage& message) { received.push_back(message.getCode()); }));
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2}));
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();

        require(received.size() <= 2 && std::is_sorted(received.begin(), received.end()),
                "messages are delivered in order");
    });
}

TEST(DeliverySchedules, ListenerAndThreadMayStopAtTheSameTime) {
    playEverySchedule([] {
        Framework framework;
        int received = 0;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            ++received;
            framework.stop();
        }));
        framework.broker().post(&tern::kVeloListenerId, 1, 0, nullptr);
        framework.broker().post(&tern::kVeloListenerId, 2, 0, nullptr);
        const OutsideThread stopper([&] { framework.stop(); });

        framework.run();

        require(received <= 1, "nothing is delivered after a stop");
    });
}

TEST(DeliverySchedules, ListenerThatLeavesWhileMessagesArriveReceivesNoMore) {
    playEverySchedule([] {
        Framework framework;
        int leaverReceived = 0;
        Listener* leaver = nullptr;
        leaver = framework.add(std::make_unique<Listener>([&](arbor::IMessage&) {
            ++leaverReceived;
            framework.broker().removeComponent(leaver, false);
        }));
        const std::unique_ptr<Listener> owned(leaver);
        framework.add(std::make_unique<Listener>([&](arbor::IMessage& message) {
            if (message.getCode() == 2) framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{1, 2}));

        framework.run();

        require(leaverReceived == 1, "a removed listener receives no further message");
    });
}

TEST(DeliverySchedules, ListenerThatComesBetweenMessagesHearsAllThatFollow) {
    playEverySchedule([] {
        Framework framework;
        Codes received;
        Codes late;
        framework.add(std::make_unique<Listener>([&](arbor::IMessage& message) {
            received.push_back(message.getCode());
            if (received.size() == 1) {
                framework.add(std::make_unique<Listener>(
                    [&](arbor::IMessage& heard) { late.push_back(heard.getCode()); }));
                framework.broker().post(&tern::kVeloListenerId, 31, 0, nullptr);
            }
            if (received.size() == 4) framework.stop();
        }));
        framework.add(std::make_unique<Producer>(framework, Codes{11, 12}));
        framework.add(std::make_unique<Producer>(framework, Codes{21}));

        framework.run();

        require(received.size() == 4 && isBefore(received, 11, 12),
                "every message is delivered in its order");
        require(late == Codes(received.begin() + 1, received.end()),
                "the late listener hears each message after the first");
    });
}

}  // namespace
}  // namespace scene
