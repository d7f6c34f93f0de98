#pragma once

#include "platform/simulated/world.h"
#include "tern/event_broker.h"

namespace test {

// Whether the main loop has been stopped. A stopped loop returns at once and handles none of the
// messages that wait in its queue; any other handles two here and is stopped then.
inline bool isLoopStopped(tern::EventBroker& broker) {
    auto& messages = platform::simulated::world().messages;
    bool pumped = false;
    messages.post([&pumped] { pumped = true; });
    messages.post([&broker] { broker.stop(nullptr, 0); });
    broker.run();
    messages.reset();
    return !pumped;
}

}  // namespace test
