#include "platform/lock.h"

#include "platform/simulated/held_locks.h"
#include "platform/simulated/recursive_lock.h"
#include "platform/simulated/world.h"
#include "platform/thread.h"

#include <mutex>
#include <new>

// g++ announces the thread sanitizer with a macro, clang with a feature test.
#if defined(__SANITIZE_THREAD__)
#define PLATFORM_HAS_WATCHED_LOCKS
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define PLATFORM_HAS_WATCHED_LOCKS
#endif
#endif

namespace platform {
namespace {

using simulated::Call;
using simulated::world;

#if defined(PLATFORM_HAS_WATCHED_LOCKS)
// The thread sanitizer watches the mutex of the standard library. It reports threads that take two
// mutexes in opposite orders, and a thread that unlocks a mutex which it does not own.
using Lock = std::recursive_mutex;
#else
using Lock = simulated::RecursiveLock;
#endif

Lock* mutexOf(NativeHandle handle) noexcept {
    return static_cast<Lock*>(handle);
}

Lock* section(unsigned char* storage) noexcept {
    return std::launder(reinterpret_cast<Lock*>(storage));
}

thread_local int heldSections = 0;
thread_local long takenMutexes = 0;

}  // namespace

int simulated::heldCriticalSections() noexcept {
    return heldSections;
}

long simulated::takenKernelMutexes() noexcept {
    return takenMutexes;
}

KernelMutex::KernelMutex() noexcept : _handle(nullptr) {
    if (world().faults.strikes(Call::MutexCreation)) return;
    _handle = new (std::nothrow) Lock;
    if (_handle == nullptr) return;
    ++world().openMutexes;
}

KernelMutex::~KernelMutex() {
    if (_handle == nullptr) return;
    delete mutexOf(_handle);
    --world().openMutexes;
}

void KernelMutex::lock(std::uint32_t timeoutMs) noexcept {
    if (_handle == nullptr) return;
    ++takenMutexes;
    if (timeoutMs == kNoTimeout) {
        mutexOf(_handle)->lock();
        return;
    }
    for (std::uint32_t waited = 0; !mutexOf(_handle)->try_lock() && waited < timeoutMs; ++waited)
        sleepFor(1);
}

void KernelMutex::unlock() noexcept {
    if (_handle != nullptr) mutexOf(_handle)->unlock();
}

CriticalSection::CriticalSection() noexcept {
    static_assert(sizeof(Lock) <= kStorageBytes);
    static_assert(alignof(Lock) <= alignof(CriticalSection));
    ::new (_storage) Lock;
}

CriticalSection::~CriticalSection() {
    section(_storage)->~Lock();
}

void CriticalSection::lock() noexcept {
    section(_storage)->lock();
    ++heldSections;
}

void CriticalSection::unlock() noexcept {
    --heldSections;
    section(_storage)->unlock();
}

}  // namespace platform
