#pragma once

#include "platform/native_handle.h"

#include <cstddef>
#include <cstdint>

namespace platform {

inline constexpr std::uint32_t kNoTimeout = 0xFFFFFFFF;  // milliseconds: wait for ever

// An unnamed kernel mutex, which the thread that owns it may take again (kept: see decision 0012).
// If the system cannot create one, the handle stays null, and lock and unlock do nothing.
class KernelMutex {
public:
    KernelMutex() noexcept;
    ~KernelMutex();
    KernelMutex(const KernelMutex&) = delete;
    KernelMutex& operator=(const KernelMutex&) = delete;

    // Waits at most `timeoutMs` milliseconds. The result is ignored: without a time-out the wait
    // returns only when we own the mutex. With one the caller cannot tell whether it has the mutex.
    void lock(std::uint32_t timeoutMs) noexcept;
    // Once for each lock(), by the thread that called it.
    void unlock() noexcept;

private:
    NativeHandle _handle;  // owned
};

// A lock inside the process, which the thread that owns it may take again. It costs no system call
// while no other thread wants it, and it allocates nothing.
class CriticalSection {
public:
    CriticalSection() noexcept;
    ~CriticalSection();
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    void lock() noexcept;
    // Once for each lock(), by the thread that called it.
    void unlock() noexcept;

private:
    static constexpr std::size_t kStorageBytes = 40;  // checked where the system's type is known
    alignas(8) unsigned char _storage[kStorageBytes];
};

}  // namespace platform
