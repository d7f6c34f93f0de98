#pragma once

#include <atomic>
#include <cstdint>

namespace arbor {

// Run-down protection: lets threads use an object that another thread may destroy. A user enters,
// works and leaves; close() refuses everybody who comes later and waits for those who are inside.
// Unlike a lock it lets several users in at the same time, and it may be closed while a lock is
// held, as long as nobody inside needs that lock to leave.
class Rundown {
public:
    Rundown() noexcept = default;
    Rundown(const Rundown&) = delete;
    Rundown& operator=(const Rundown&) = delete;

    // False, and nothing to leave, once close() was called.
    [[nodiscard]] bool enter() noexcept {
        // Count first, then check: close() could pass between a check and the count that follows.
        const std::uint32_t before = _state.fetch_add(1, std::memory_order_acquire);
        if ((before & kClosed) == 0) return true;
        leave();
        return false;
    }
    void leave() noexcept { _state.fetch_sub(1, std::memory_order_release); }

    // Waits until no more than `own` users are inside. 1 when the caller itself is inside, else 0.
    void close(std::uint32_t own = 0) noexcept;

    // One visit, for its own lifetime.
    class Visit {
    public:
        explicit Visit(Rundown& rundown) noexcept
            : _rundown(rundown.enter() ? &rundown : nullptr) {}
        ~Visit() {
            if (_rundown != nullptr) _rundown->leave();
        }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;

        [[nodiscard]] explicit operator bool() const noexcept { return _rundown != nullptr; }

    private:
        Rundown* _rundown;  // not owned; null: refused
    };

private:
    static constexpr std::uint32_t kClosed = 0x80000000;

    std::atomic<std::uint32_t> _state{0};  // users inside, and kClosed
};

}  // namespace arbor
