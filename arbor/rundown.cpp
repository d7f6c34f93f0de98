#include "arbor/rundown.h"

#include "platform/thread.h"

namespace arbor {

bool Rundown::enter() noexcept {
    const std::uint32_t before = _state.fetch_add(1, std::memory_order_acquire);
    if ((before & kClosed) == 0) return true;
    leave();
    return false;
}

void Rundown::leave() noexcept {
    _state.fetch_sub(1, std::memory_order_release);
}

void Rundown::close(std::uint32_t own) noexcept {
    _state.fetch_or(kClosed, std::memory_order_acq_rel);
    while ((_state.load(std::memory_order_acquire) & ~kClosed) > own)
        platform::sleepFor(1);  // Equally right with 2: it only looks less often.
}

}  // namespace arbor
