#include "tests/support/allocation_faults.h"

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> live{0};
long pointsInAll = 0;

[[maybe_unused]] const bool tellsAtTheEnd = [] {
    return std::atexit([] { std::printf("allocation failures planted: %ld\n", pointsInAll); }) == 0;
}();

// Only the thread that plays the scene is armed.
thread_local long untilFailure = 0;  // 0: disarmed; below 0: fails from now on
thread_local bool keepsFailing = false;
thread_local long struck = 0;

bool fails() noexcept {
    if (untilFailure == 0) return false;
    if (untilFailure > 1) {
        --untilFailure;
        return false;
    }
    untilFailure = keepsFailing ? -1 : 0;
    ++struck;
    return true;
}

void* take(std::size_t bytes) noexcept {
    if (fails()) return nullptr;
    void* const block = std::malloc(bytes != 0 ? bytes : 1);
    if (block != nullptr) ++live;
    return block;
}

void give(void* block) noexcept {
    if (block == nullptr) return;
    --live;
    std::free(block);
}

void* takeOrThrow(std::size_t bytes) {
    if (void* const block = take(bytes)) return block;
    throw std::bad_alloc();
}

void arm(fault_injection::Mode mode, long nth) noexcept {
    struck = 0;
    keepsFailing = mode == fault_injection::Mode::FromThenOn;
    untilFailure = nth;
}

// One round; tells whether the allocation `nth` came at all.
bool playRound(fault_injection::Mode mode, long nth, const fault_injection::Scene& scene,
               const fault_injection::Check& check) {
    const std::function<void()> part = scene();
    arm(mode, nth);
    try {
        part();
    } catch (const std::bad_alloc&) {  // an allowed end
    } catch (...) {
        untilFailure = 0;
        throw;
    }
    untilFailure = 0;
    const bool failed = struck > 0;
    check(failed ? nth : 0);
    return failed;
}

}  // namespace

namespace fault_injection {

long liveBlocks() noexcept {
    return live;
}

Outcome everyAllocation(Mode mode, const Scene& scene, const Check& check) {
    constexpr long kNever = 0;
    playRound(mode, kNever, scene, check);  // what is made at first use is made now

    Outcome outcome;
    for (long nth = 1;; ++nth) {
        const long before = live;
        const bool failed = playRound(mode, nth, scene, check);
        if (live != before && outcome.leakedAt == 0) outcome.leakedAt = nth;
        if (!failed) return outcome;
        outcome.points = nth;
        ++pointsInAll;
    }
}

}  // namespace fault_injection

void* operator new(std::size_t bytes) {
    return takeOrThrow(bytes);
}
void* operator new[](std::size_t bytes) {
    return takeOrThrow(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return take(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return take(bytes);
}
void operator delete(void* block) noexcept {
    give(block);
}
void operator delete[](void* block) noexcept {
    give(block);
}
void operator delete(void* block, std::size_t) noexcept {
    give(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    give(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    give(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    give(block);
}
