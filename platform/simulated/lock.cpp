#include "platform/lock.h"

#include "platform/simulated/world.h"

#include <pthread.h>
#include <ctime>
#include <new>

namespace platform {
namespace {

using simulated::Call;
using simulated::world;

void makeRecursive(pthread_mutex_t& mutex) noexcept {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

timespec deadlineAfter(std::uint32_t timeoutMs) noexcept {
    constexpr std::uint32_t kMsPerSecond = 1000;
    constexpr long kNanosecondsPerMs = 1'000'000;
    constexpr long kNanosecondsPerSecond = 1'000'000'000;
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += static_cast<std::time_t>(timeoutMs / kMsPerSecond);
    deadline.tv_nsec += static_cast<long>(timeoutMs % kMsPerSecond) * kNanosecondsPerMs;
    if (deadline.tv_nsec >= kNanosecondsPerSecond) {
        deadline.tv_nsec -= kNanosecondsPerSecond;
        ++deadline.tv_sec;
    }
    return deadline;
}

pthread_mutex_t* mutexOf(NativeHandle handle) noexcept {
    return static_cast<pthread_mutex_t*>(handle);
}

pthread_mutex_t* section(unsigned char* storage) noexcept {
    return std::launder(reinterpret_cast<pthread_mutex_t*>(storage));
}

}  // namespace

KernelMutex::KernelMutex() noexcept : _handle(nullptr) {
    if (world().faults.strikes(Call::MutexCreation)) return;
    auto* const mutex = new (std::nothrow) pthread_mutex_t;
    if (mutex == nullptr) return;
    makeRecursive(*mutex);
    _handle = mutex;
    ++world().openMutexes;
}

KernelMutex::~KernelMutex() {
    if (_handle == nullptr) return;
    pthread_mutex_destroy(mutexOf(_handle));
    delete mutexOf(_handle);
    --world().openMutexes;
}

void KernelMutex::lock(std::uint32_t timeoutMs) noexcept {
    if (_handle == nullptr) return;
    if (timeoutMs == kNoTimeout) {
        pthread_mutex_lock(mutexOf(_handle));
        return;
    }
    const timespec deadline = deadlineAfter(timeoutMs);
    pthread_mutex_timedlock(mutexOf(_handle), &deadline);
}

void KernelMutex::unlock() noexcept {
    if (_handle != nullptr) pthread_mutex_unlock(mutexOf(_handle));
}

CriticalSection::CriticalSection() noexcept {
    static_assert(sizeof(pthread_mutex_t) <= kStorageBytes);
    static_assert(alignof(pthread_mutex_t) <= alignof(CriticalSection));
    makeRecursive(*::new (_storage) pthread_mutex_t);
}

CriticalSection::~CriticalSection() {
    pthread_mutex_destroy(section(_storage));
}

void CriticalSection::lock() noexcept {
    pthread_mutex_lock(section(_storage));
}

void CriticalSection::unlock() noexcept {
    pthread_mutex_unlock(section(_storage));
}

}  // namespace platform
