#pragma once

#include "platform/clock.h"
#include "platform/simulated/desktop.h"
#include "platform/simulated/device.h"
#include "platform/simulated/diagnostics.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/files.h"
#include "platform/simulated/messages.h"
#include "platform/simulated/pipes.h"
#include "platform/simulated/printers.h"
#include "platform/simulated/process_ended.h"
#include "platform/simulated/registry_store.h"
#include "platform/simulated/texts.h"

#include <atomic>

namespace platform::simulated {

// The state of all simulated services: what a test puts in, and what it finds afterwards. Each
// member has its own lock, so any thread may use it. When memory runs out, a function of `platform`
// fails as its header says; it throws only where the header says so.
struct World {
    static constexpr UnixSeconds kStartTime = 1'700'000'000;

    Faults faults;
    Pipes pipes;
    RegistryStore registry;
    Printers printers;
    Desktop desktop;
    Files files;
    Device device;
    Texts texts;
    Messages messages;
    Diagnostics diagnostics;
    std::atomic<UnixSeconds> time{kStartTime};

    // Threads whose handle is not closed yet, and mutexes that exist. These are for leak checks, so
    // reset() leaves them alone.
    std::atomic<int> openThreads{0};
    std::atomic<int> openMutexes{0};

    // Empties the world. A thread that still waits in a read of a pipe gets kInvalidHandleError.
    void reset();
};

// The only world. It is made at the first call and never destroyed, because threads may still use
// it after main() has ended.
[[nodiscard]] World& world() noexcept;

}  // namespace platform::simulated
