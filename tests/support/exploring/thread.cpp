#include "platform/thread.h"

#include "platform/lock.h"
#include "platform/simulated/world.h"
#include "tests/support/exploring/scheduler.h"

#include <atomic>
#include <cstdint>

namespace platform {
namespace {

using exploring::Scheduler;
using exploring::Worker;

constexpr std::uint32_t kWaitDone = 0;
constexpr std::uint32_t kWaitTimeout = 258;
constexpr std::uint32_t kWaitFailed = 0xFFFFFFFF;

Scheduler& scheduler() {
    return Scheduler::instance();
}

}  // namespace

NativeHandle startThread(ThreadProcedure procedure, void* parameter,
                         std::atomic<std::uint32_t>& threadId) noexcept {
    Worker* const worker =
        scheduler().start([procedure, parameter] { return procedure(parameter); });
    threadId = worker->number;
    ++simulated::world().openThreads;
    scheduler().point();
    return worker;
}

bool threadExitCode(NativeHandle thread, std::uint32_t& code) noexcept {
    if (thread == nullptr) return false;
    const auto* const worker = static_cast<const Worker*>(thread);
    code = worker->hasEnded ? worker->exitCode : kStillActive;
    return true;
}

std::uint32_t waitForThread(NativeHandle thread, std::uint32_t timeoutMs) noexcept {
    if (thread == nullptr) return kWaitFailed;
    const auto* const worker = static_cast<const Worker*>(thread);
    const bool hasEnded = scheduler().waitUntil(
        "the end of a thread", worker, [worker] { return worker->hasEnded; },
        timeoutMs == kNoTimeout ? Scheduler::kForEver : timeoutMs);
    return hasEnded ? kWaitDone : kWaitTimeout;
}

void closeThread(NativeHandle thread) noexcept {
    if (thread != nullptr) --simulated::world().openThreads;
}

// Other threads may continue here, because the product asks for the id where a thread begins to use
// its object, and another thread may be destroying that object at the same time.
std::uint32_t currentThreadId() noexcept {
    scheduler().point();
    const Worker* const self = scheduler().current();
    return self != nullptr ? self->number : 1;
}

void sleepFor(std::uint32_t milliseconds) noexcept {
    static_cast<void>(scheduler().waitUntil(
        "time to pass", nullptr, [] { return false; }, milliseconds));
}

}  // namespace platform
