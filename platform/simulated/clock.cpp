#include "platform/clock.h"

#include "platform/simulated/world.h"

namespace platform {

UnixSeconds now() noexcept {
    return simulated::world().time;
}

}  // namespace platform
