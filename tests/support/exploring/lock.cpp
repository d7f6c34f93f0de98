#include "platform/lock.h"

#include "platform/simulated/world.h"
#include "tests/support/exploring/scheduler.h"

#include <new>

namespace platform {
namespace {

using exploring::Scheduler;
using exploring::Worker;

struct Lock {
    std::uint32_t owner = 0;  // number of the thread, 0: free
    int depth = 0;
    std::uint32_t firstUser = 0;
    bool isShared = false;  // several threads have used it
};

Scheduler& scheduler() {
    return Scheduler::instance();
}

void take(Lock& lock, const char* name, std::uint64_t timeoutMs) {
    Worker* const self = scheduler().current();
    if (self == nullptr) return;
    const auto isFree = [&lock, self] { return lock.owner == 0 || lock.owner == self->number; };
    if (!isFree() && !scheduler().waitUntil(name, &lock, isFree, timeoutMs)) return;
    lock.owner = self->number;
    ++lock.depth;
    ++self->locksHeld;
}

void give(Lock& lock) {
    Worker* const self = scheduler().current();
    if (self == nullptr) return;
    if (lock.owner != self->number)
        scheduler().fail("a thread unlocks a lock that another thread holds");
    --self->locksHeld;
    if (--lock.depth == 0) lock.owner = 0;
}

void checkUnused(const Lock& lock) {
    if (lock.owner != 0) scheduler().fail("a lock is destroyed while a thread holds it");
    if (scheduler().isWaitedFor(&lock))
        scheduler().fail("a lock is destroyed while a thread waits for it");
}

Lock* lockOf(NativeHandle handle) noexcept {
    return static_cast<Lock*>(handle);
}

Lock& section(unsigned char* storage) noexcept {
    return *std::launder(reinterpret_cast<Lock*>(storage));
}

}  // namespace

KernelMutex::KernelMutex() noexcept : _handle(new (std::nothrow) Lock) {
    ++simulated::world().openMutexes;
}

KernelMutex::~KernelMutex() {
    checkUnused(*lockOf(_handle));
    delete lockOf(_handle);
    --simulated::world().openMutexes;
}

void KernelMutex::lock(std::uint32_t timeoutMs) noexcept {
    scheduler().point();
    take(*lockOf(_handle), "a mutex", timeoutMs == kNoTimeout ? Scheduler::kForEver : timeoutMs);
}

void KernelMutex::unlock() noexcept {
    give(*lockOf(_handle));
    scheduler().point();
}

CriticalSection::CriticalSection() noexcept {
    static_assert(sizeof(Lock) <= kStorageBytes);
    ::new (_storage) Lock;
}

CriticalSection::~CriticalSection() {
    checkUnused(section(_storage));
}

// Does not switch threads here while only one thread has used the section. A switch would make no
// difference to the other threads, so this saves schedules that would test nothing new.
void CriticalSection::lock() noexcept {
    const Worker* const self = scheduler().current();
    if (self == nullptr) return;
    Lock& lock = section(_storage);
    if (lock.firstUser == 0) lock.firstUser = self->number;
    if (lock.firstUser != self->number) lock.isShared = true;
    if (lock.isShared) scheduler().point();
    take(lock, "a critical section", Scheduler::kForEver);
}

void CriticalSection::unlock() noexcept {
    give(section(_storage));
}

}  // namespace platform
