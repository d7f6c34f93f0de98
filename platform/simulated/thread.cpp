#include "platform/thread.h"

#include "platform/lock.h"
#include "platform/simulated/world.h"

#include <pthread.h>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <new>

namespace platform {
namespace {

using simulated::Call;
using simulated::world;

constexpr std::uint32_t kWaitDone = 0;
constexpr std::uint32_t kWaitTimeout = 258;
constexpr std::uint32_t kWaitFailed = 0xFFFFFFFF;
constexpr std::uint32_t kMsPerSecond = 1000;
constexpr long kNanosecondsPerMs = 1'000'000;

std::atomic<std::uint32_t> lastThreadId{0};
thread_local std::uint32_t ownThreadId = 0;

std::uint32_t newThreadId() noexcept {
    constexpr std::uint32_t kStep = 4;  // ids of the system's threads are multiples of four
    return lastThreadId += kStep;
}

// Owned by the running thread and by the holder of the handle; the last of the two deletes it.
struct Thread {
    ThreadProcedure procedure;
    void* parameter;
    std::uint32_t id;
    std::atomic<int> owners{2};
    std::atomic<std::uint32_t> exitCode{kStillActive};
    std::atomic<bool> hasEnded{false};

    void release() noexcept {
        if (--owners == 0) delete this;
    }
};

void* runThread(void* parameter) {
    auto* const thread = static_cast<Thread*>(parameter);
    ownThreadId = thread->id;
    thread->exitCode = thread->procedure(thread->parameter);
    thread->hasEnded = true;
    thread->release();
    return nullptr;
}

bool startDetached(Thread* thread) noexcept {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_t started{};
    const bool isStarted = pthread_create(&started, &attributes, &runThread, thread) == 0;
    pthread_attr_destroy(&attributes);
    return isStarted;
}

}  // namespace

NativeHandle startThread(ThreadProcedure procedure, void* parameter,
                         std::atomic<std::uint32_t>& threadId) noexcept {
    if (world().faults.strikes(Call::ThreadStart)) return nullptr;
    const std::uint32_t id = newThreadId();
    auto* const thread = new (std::nothrow) Thread{procedure, parameter, id};
    if (thread == nullptr) return nullptr;
    // Write the id before the thread starts, because its procedure may read this variable at once.
    const std::uint32_t before = threadId;
    threadId = id;
    if (!startDetached(thread)) {
        threadId = before;
        delete thread;
        return nullptr;
    }
    ++world().openThreads;
    return thread;
}

bool threadExitCode(NativeHandle thread, std::uint32_t& code) noexcept {
    if (thread == nullptr || world().faults.strikes(Call::ThreadExitCode)) return false;
    const auto* const known = static_cast<const Thread*>(thread);
    code = known->hasEnded ? known->exitCode.load() : kStillActive;
    return true;
}

std::uint32_t waitForThread(NativeHandle thread, std::uint32_t timeoutMs) noexcept {
    constexpr std::uint32_t kPollMs = 1;
    if (thread == nullptr || world().faults.strikes(Call::ThreadWait)) return kWaitFailed;
    const auto* const known = static_cast<const Thread*>(thread);
    for (std::uint32_t waited = 0; !known->hasEnded; waited += kPollMs) {
        if (timeoutMs != kNoTimeout && waited >= timeoutMs) return kWaitTimeout;
        sleepFor(kPollMs);
    }
    return kWaitDone;
}

void closeThread(NativeHandle thread) noexcept {
    if (thread == nullptr) return;
    --world().openThreads;
    static_cast<Thread*>(thread)->release();
}

std::uint32_t currentThreadId() noexcept {
    if (ownThreadId == 0) ownThreadId = newThreadId();
    return ownThreadId;
}

void sleepFor(std::uint32_t milliseconds) noexcept {
    timespec left{static_cast<std::time_t>(milliseconds / kMsPerSecond),
                  static_cast<long>(milliseconds % kMsPerSecond) * kNanosecondsPerMs};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

}  // namespace platform
