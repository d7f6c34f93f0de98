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

// Everything that the simulated services know: what a test puts in, and what it finds afterwards.
// Each member guards itself; any thread may use it. When memory runs out, a call of the seam
// fails; it throws only where its header says so.
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

    // Threads that were started and not closed, and mutexes that live: for leak checks, untouched
    // by reset().
    std::atomic<int> openThreads{0};
    std::atomic<int> openMutexes{0};

    // Back to the empty world. A thread that still waits in a read gets kInvalidHandleError.
    void reset();
};

// The one world; made at the first call and never destroyed, since threads may outlive main().
[[nodiscard]] World& world() noexcept;

}  // namespace platform::simulated
