#pragma once

#include "arbor/thread_annotations.h"
#include "platform/lock.h"

#include <cstdint>

namespace arbor {

// A base that gives its object an unnamed kernel mutex, waited for without a time-out (kept: see
// decision 0012). It is re-entrant: a component may call the broker from its destructor, and an
// observer from the start of its thread, while the broker holds the lock.
class ARBOR_LOCK Mutex {
public:
    void lock() noexcept ARBOR_ACQUIRES() { _mutex.lock(_timeoutMs); }
    void unlock() noexcept ARBOR_RELEASES() { _mutex.unlock(); }

protected:
    explicit Mutex(std::uint32_t timeoutMs = platform::kNoTimeout) noexcept
        : _timeoutMs(timeoutMs) {}
    ~Mutex() = default;

private:
    platform::KernelMutex _mutex;
    std::uint32_t _timeoutMs;
};

}  // namespace arbor
