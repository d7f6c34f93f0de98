#include "tests/support/allocation_faults.h"

#include "tests/support/replaced_new.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> live{0};

// Faults are injected only in the thread that runs the scene.
thread_local long untilFailure = 0;  // 0: no failure; below 0: every allocation fails
thread_local bool keepsFailing = false;
thread_local long failures = 0;

bool fails() noexcept {
    if (untilFailure == 0) return false;
    if (untilFailure > 1) {
        --untilFailure;
        return false;
    }
    untilFailure = keepsFailing ? -1 : 0;
    ++failures;
    return true;
}

void inject(fault_injection::Mode mode, long nth) noexcept {
    failures = 0;
    keepsFailing = mode == fault_injection::Mode::FromThenOn;
    untilFailure = nth;
}

// Runs the scene once; returns whether it made an allocation number `nth`, which then failed.
bool run(fault_injection::Mode mode, long nth, const fault_injection::Scene& scene,
         const fault_injection::Check& check) {
    const std::function<void()> part = scene();
    inject(mode, nth);
    try {
        part();
    } catch (const std::bad_alloc&) {  // the scene may end with it, see everyAllocation()
    } catch (...) {
        untilFailure = 0;
        throw;
    }
    untilFailure = 0;
    const bool failed = failures > 0;
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
    run(mode, kNever, scene, check);  // so that objects made at first use exist already

    Outcome outcome;
    for (long nth = 1;; ++nth) {
        const long before = live;
        const bool failed = run(mode, nth, scene, check);
        if (live != before && outcome.leakedAt == 0) outcome.leakedAt = nth;
        if (!failed) return outcome;
        outcome.points = nth;
    }
}

}  // namespace fault_injection

namespace replaced_new {

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

}  // namespace replaced_new
