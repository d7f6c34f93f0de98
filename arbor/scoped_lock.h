#pragma once

namespace arbor {

// Holds the lock of a Mutex or Synchronized for its own lifetime.
template <typename Lockable>
class ScopedLock {
public:
    explicit ScopedLock(Lockable& lockable) noexcept : _lockable(lockable) { _lockable.lock(); }
    ~ScopedLock() { _lockable.unlock(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    Lockable& _lockable;
};

}  // namespace arbor
