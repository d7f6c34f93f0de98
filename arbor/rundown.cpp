#include "arbor/rundown.h"

#include "platform/thread.h"

namespace arbor {

bool Rundown::enter() noexcept {
    // Count first, then check: close() could pass between a check and the count that follows it.
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
    // Polls: leave() must not touch the object once it has counted itself out, because the object
    // may be gone then. So it cannot signal that it has left.
    while ((_state.load(std::memory_order_acquire) & ~kClosed) > own)
        platform::sleepFor(1);  // Equally right with 2: it only looks less often.
}

}  // namespace arbor
