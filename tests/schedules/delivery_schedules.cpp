// Messages from several threads to the main thread, in every order.
#include "tests/schedules/scene_parts.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace {

using exploring::everySchedule;
using exploring::require;
using scene::Framework;
using scene::kForcedSwitches;
using scene::Listener;
using scene::OutsideThread;
using scene::Producer;

using Codes = std::vector<std::uint32_t>;

bool isBefore(const Codes& codes, std::uint32_t first, std::uint32_t second) {
    return std::find(codes.begin(), codes.end(), first) <
           std::find(codes.begin(), codes.end(), second);
}

TEST(DeliverySchedules, TwoProducersOfTwoMessagesLoseNoneAndKeepTheirOrder) {
    const long played =
        everySchedule("TwoProducersOfTwoMessagesLoseNoneAndKeepTheirOrder", kForcedSwitches, [] {
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
    EXPECT_GT(played, 0);
}

TEST(DeliverySchedules, StopFromAListenerEndsTheLoopAfterThatMessage) {
    const long played =
        everySchedule("StopFromAListenerEndsTheLoopAfterThatMessage", kForcedSwitches, [] {
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
    EXPECT_GT(played, 0);
}

TEST(DeliverySchedules, StopFromAnotherThreadEndsTheLoop) {
    const long played = everySchedule("StopFromAnotherThreadEndsTheLoop", kForcedSwitches, [] {
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
    EXPECT_GT(played, 0);
}

TEST(DeliverySchedules, ListenerAndThreadMayStopAtTheSameTime) {
    const long played = everySchedule("ListenerAndThreadMayStopAtTheSameTime", kForcedSwitches, [] {
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
    EXPECT_GT(played, 0);
}

TEST(DeliverySchedules, ListenerThatLeavesWhileMessagesArriveHearsNoMore) {
    const long played =
        everySchedule("ListenerThatLeavesWhileMessagesArriveHearsNoMore", kForcedSwitches, [] {
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
    EXPECT_GT(played, 0);
}

}  // namespace
