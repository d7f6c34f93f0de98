#include "platform/message_pump.h"

#include "platform/simulated/messages.h"
#include "platform/simulated/world.h"
#include "platform/thread.h"

#include <cstdint>
#include <functional>
#include <new>

namespace platform {

using simulated::Messages;
using simulated::world;

bool isMessageWaiting() noexcept {
    return world().messages.isWaiting();
}

bool dispatchOneMessage() {
    constexpr std::uint32_t kPollMs = 1;
    std::function<void()> procedure;
    Messages::Taken taken = world().messages.take(procedure);
    while (taken == Messages::Taken::Nothing) {
        sleepFor(kPollMs);
        taken = world().messages.take(procedure);
    }
    if (taken == Messages::Taken::Quit) return false;
    procedure();
    return true;
}

bool workInNextMessage(void (*work)(void*), void* context) noexcept try {
    world().messages.post([work, context] { work(context); });
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

}  // namespace platform
