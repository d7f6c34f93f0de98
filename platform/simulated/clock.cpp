#include "platform/clock.h"

#include "platform/simulated/world.h"

#include <chrono>

namespace platform {

UnixSeconds now() noexcept {
    return simulated::world().time;
}

std::uint64_t uptimeMs() noexcept {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

}  // namespace platform
