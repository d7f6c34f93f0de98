#pragma once

#include <pthread.h>

namespace platform::simulated {

// A lock that its owner may take again, for builds with the thread sanitizer: that one knows the
// library's mutexes by name, and so reports threads that take two of them in opposite orders, and
// unlocks by a thread that does not own the lock.
class WatchedLock {
public:
    WatchedLock() noexcept {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        pthread_mutex_init(&_mutex, &attributes);
        pthread_mutexattr_destroy(&attributes);
    }
    ~WatchedLock() { pthread_mutex_destroy(&_mutex); }
    WatchedLock(const WatchedLock&) = delete;
    WatchedLock& operator=(const WatchedLock&) = delete;

    void lock() noexcept { pthread_mutex_lock(&_mutex); }
    // False when the lock is not to be had at once.
    [[nodiscard]] bool tryLock() noexcept { return pthread_mutex_trylock(&_mutex) == 0; }
    void unlock() noexcept { pthread_mutex_unlock(&_mutex); }

private:
    pthread_mutex_t _mutex{};
};

}  // namespace platform::simulated
