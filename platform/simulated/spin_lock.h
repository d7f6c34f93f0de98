#pragma once

#include <atomic>

namespace platform::simulated {

// Guards the world's short operations. It uses no lock and no sleep of `platform`: those may be the
// ones of the system, or the schedule explorer's, which would then switch threads inside the world.
class SpinLock {
public:
    void lock() noexcept {
        while (_taken.test_and_set(std::memory_order_acquire)) {
        }
    }
    void unlock() noexcept { _taken.clear(std::memory_order_release); }

private:
    std::atomic_flag _taken;
};

// Holds a SpinLock for a scope.
class SpinScope {
public:
    explicit SpinScope(SpinLock& lock) noexcept : _lock(lock) { _lock.lock(); }
    ~SpinScope() { _lock.unlock(); }
    SpinScope(const SpinScope&) = delete;
    SpinScope& operator=(const SpinScope&) = delete;

private:
    SpinLock& _lock;  // not owned
};

}  // namespace platform::simulated
