#pragma once

#include "arbor/thread_annotations.h"

namespace arbor {

// Holds the lock of a Mutex or Synchronized for its own lifetime.
template <typename Lockable>
class ARBOR_SCOPED_LOCK ScopedLock {
public:
    explicit ScopedLock(Lockable& lockable) noexcept ARBOR_ACQUIRES(lockable)
        : _lockable(lockable) {
        _lockable.lock();
    }
    ~ScopedLock() ARBOR_RELEASES() { _lockable.unlock(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    Lockable& _lockable;
};

}  // namespace arbor
