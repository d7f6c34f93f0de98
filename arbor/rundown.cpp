#include "arbor/rundown.h"

#include "platform/thread.h"

namespace arbor {

void Rundown::close(std::uint32_t own) noexcept {
    _state.fetch_or(kClosed, std::memory_order_acq_rel);
    // Polls: leave() must not touch the object once it has counted itself out, because the object
    // may be gone then. So it cannot signal that it has left.
    while ((_state.load(std::memory_order_acquire) & ~kClosed) > own)
        platform::sleepFor(1);  // Equally right with 2: it only looks less often.
}

}  // namespace arbor
