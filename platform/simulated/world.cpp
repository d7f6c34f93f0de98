#include "platform/simulated/world.h"

#include <new>

namespace platform::simulated {

void World::reset() {
    faults.reset();
    pipes.reset();
    registry.reset();
    printers.reset();
    desktop.reset();
    files.reset();
    device.reset();
    texts.reset();
    messages.reset();
    diagnostics.reset();
    time = kStartTime;
}

World& world() noexcept {
    alignas(World) static unsigned char storage[sizeof(World)];
    static World* const made = ::new (storage) World;
    return *made;
}

}  // namespace platform::simulated
