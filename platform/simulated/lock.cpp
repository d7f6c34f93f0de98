#include "platform/lock.h"

#include "platform/simulated/recursive_lock.h"
#include "platform/simulated/world.h"
#include "platform/thread.h"

#include <new>

namespace platform {
namespace {

using simulated::Call;
using simulated::RecursiveLock;
using simulated::world;

RecursiveLock* mutexOf(NativeHandle handle) noexcept {
    return static_cast<RecursiveLock*>(handle);
}

RecursiveLock* section(unsigned char* storage) noexcept {
    return std::launder(reinterpret_cast<RecursiveLock*>(storage));
}

}  // namespace

KernelMutex::KernelMutex() noexcept : _handle(nullptr) {
    if (world().faults.strikes(Call::MutexCreation)) return;
    _handle = new (std::nothrow) RecursiveLock;
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
    if (timeoutMs == kNoTimeout) {
        mutexOf(_handle)->lock();
        return;
    }
    for (std::uint32_t waited = 0; !mutexOf(_handle)->tryLock() && waited < timeoutMs; ++waited)
        sleepFor(1);
}

void KernelMutex::unlock() noexcept {
    if (_handle != nullptr) mutexOf(_handle)->unlock();
}

CriticalSection::CriticalSection() noexcept {
    static_assert(sizeof(RecursiveLock) <= kStorageBytes);
    static_assert(alignof(RecursiveLock) <= alignof(CriticalSection));
    ::new (_storage) RecursiveLock;
}

CriticalSection::~CriticalSection() {
    section(_storage)->~RecursiveLock();
}

void CriticalSection::lock() noexcept {
    section(_storage)->lock();
}

void CriticalSection::unlock() noexcept {
    section(_storage)->unlock();
}

}  // namespace platform
