#include "app/first_record.h"

#include "platform/clock.h"
#include "platform/message_pump.h"
#include "platform/spooler.h"
#include "platform/thread.h"
#include "tern/event_broker.h"

#include <cstdint>

namespace {

constexpr std::uint64_t kLongestWaitMs = 30;
constexpr std::uint32_t kPollMs = 1;

void prepareAndWait(void* context) {
    auto& broker = *static_cast<tern::EventBroker*>(context);
    const std::uint64_t start = platform::uptimeMs();
    platform::prepareSpooler();
    while (broker.isIdle() && platform::uptimeMs() - start < kLongestWaitMs)
        platform::sleepFor(kPollMs);
}

}  // namespace

void waitForFirstRecord(tern::EventBroker& broker) {
    // Without it the first record waits for the loop's sleep to end, and nothing else changes.
    static_cast<void>(platform::workInNextMessage(prepareAndWait, &broker));
}
